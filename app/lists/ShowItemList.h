#pragma once

#include "app/lists/IconPictures.h"
#include "app/lists/ShowItemView.h"

#include <QAbstractScrollArea>

#include <optional>
#include <vector>

namespace tidewell {

class RowTip;

/// A list of figures, a `ShowItemView` each, in the frame that its owner gives it. What does not
/// fit scrolls, by pointer and by keyboard; new items leave the list where it was scrolled to. The
/// arrow keys move a focus mark from row to row, which stays with its application when the items
/// change. Pointing at an application tells what it uses. Only the rows that are to be seen are
/// formatted and painted. Assistive technology reads it as a list. Main thread.
class ShowItemList final : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Kind {
        figures,   ///< of the machine
        processes, ///< below a `HeaderView`, with more room, for their icons
    };

    explicit ShowItemList(Kind kind = Kind::figures);
    ~ShowItemList() override;

    /// Replaces the rows. Nothing is repainted when they look as they did: rows made anew have new
    /// identifiers, so those do not count.
    void setItems(std::vector<DisplayContainer> items);
    const std::vector<DisplayContainer>& items() const { return items_; }

    /// Which of the rows that are set from now on have a remark on swap.
    void setSwapMark(const SwapMark& mark) { swapMark_ = mark; }

    /// Whether the list stands on a coloured ground, as the mark of what the pointer opened.
    void setHighlighted(bool isHighlighted);

    ShowItemView row(std::size_t index) const { return {items_[index], swapMark_}; }
    /// Where a row is, scrolled as the list is; on the viewport.
    QRectF rowFrame(std::size_t index) const;
    /// The row with the focus mark.
    std::optional<std::size_t> currentRow() const { return current_; }

    /// What a row has in common with the one in its place after the items have changed: the
    /// application, or the row's number where there is none.
    using RowKey = std::int64_t;
    static RowKey keyOf(const std::vector<DisplayContainer>& items, std::size_t index);
    std::optional<std::size_t> rowOf(RowKey key) const;

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateScrollBar();
    QRectF headerFrame() const;
    std::optional<std::size_t> rowAt(QPointF position) const;
    void setCurrentRow(std::size_t row);
    void scrollToRow(std::size_t row);
    void keepCurrent(const std::vector<DisplayContainer>& before);
    void updateTip();

    Kind kind_;
    std::vector<DisplayContainer> items_;
    SwapMark swapMark_;
    std::optional<std::size_t> current_;
    RowTip* tip_ = nullptr; // owned by the list, made when it is first asked for
    RowKey tipRow_ = 0;
    QPoint tipPlace_;
    bool isHighlighted_ = false;
    IconPictures icons_{[this] { viewport()->update(); }};
};

} // namespace tidewell
