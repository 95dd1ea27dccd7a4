#pragma once

#include "app/lists/IconPictures.h"
#include "model/processes/DisplayContainer.h"

#include <QAbstractScrollArea>

#include <vector>

namespace tidewell {

/// A list of figures, a `ShowItemView` each, in the frame that its owner gives it. What does not
/// fit scrolls, by pointer and by keyboard; new items leave the list where it was scrolled to. Only
/// the rows that are to be seen are formatted and painted. Assistive technology reads it as a list.
/// Main thread.
class ShowItemList final : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Kind {
        figures,   ///< of the machine
        processes, ///< below a `HeaderView`, with more room, for their icons
    };

    explicit ShowItemList(Kind kind = Kind::figures);

    /// Replaces the rows. Nothing is repainted when they look as they did: rows made anew have new
    /// identifiers, so those do not count.
    void setItems(std::vector<DisplayContainer> items);
    const std::vector<DisplayContainer>& items() const { return items_; }

    /// Whether the list stands on a coloured ground, as the mark of what the pointer opened.
    void setHighlighted(bool isHighlighted);

    /// Where a row is, scrolled as the list is; on the viewport.
    QRectF rowFrame(std::size_t index) const;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateScrollBar();
    QRectF headerFrame() const;

    Kind kind_;
    std::vector<DisplayContainer> items_;
    bool isHighlighted_ = false;
    IconPictures icons_{[this] { viewport()->update(); }};
};

} // namespace tidewell
