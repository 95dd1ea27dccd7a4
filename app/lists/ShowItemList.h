#pragma once

#include "app/lists/IconPictures.h"
#include "app/lists/ShowItemView.h"
#include "ui/AccessibleItems.h"

#include <QAbstractScrollArea>

#include <vector>

namespace tidewell {

class RowTip;

/// A list of figures, a `ShowItemView` each, in the frame that its owner gives it. What does not
/// fit scrolls, by pointer and by keyboard; new items leave the list where it was scrolled to. The
/// arrow keys move a focus mark from row to row, which stays with its application when the items
/// change. Pointing at an application tells what it uses. Only the rows that are to be seen are
/// formatted and painted. Assistive technology reads it as a list. Main thread.
class ShowItemList final : public QAbstractScrollArea, public PaintedItems {
    Q_OBJECT

public:
    enum class Kind {
        figures,   ///< of the machine
        processes, ///< below a `HeaderView`, with more room, for their icons
    };

    explicit ShowItemList(Kind kind = Kind::figures);
    ~ShowItemList() override;

    /// Replaces the rows. Only those are repainted that look otherwise than before: rows made anew
    /// have new identifiers, and figures grow by less than is shown, so those do not count.
    void setItems(std::vector<DisplayContainer> items);

    /// Which of the rows have a remark on swap.
    void setSwapMark(const SwapMark& mark);

    /// Whether the list stands on a coloured ground, as the mark of what the pointer opened.
    void setHighlighted(bool isHighlighted);

    /// Where a row is, scrolled as the list is; on the viewport.
    QRectF rowFrame(std::size_t index) const;

    std::size_t itemCount() const override { return items_.size(); }
    /// The label and the byte count.
    QString itemText(std::size_t index) const override;
    /// What the application uses.
    QString itemDescription(std::size_t index) const override;
    QRectF itemFrame(std::size_t index) const override;
    /// The application, or the row's number where there is none.
    ItemKey itemKey(std::size_t index) const override;
    /// The row with the focus mark.
    std::optional<std::size_t> currentItem() const override { return current_; }

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void updateScrollBar();
    QRectF headerFrame() const;
    QRect rowArea(std::size_t index) const; // with its share of the gaps and its focus ring
    QRegion changedBy(const std::vector<DisplayContainer>& items) const;
    std::optional<std::size_t> rowAt(QPointF position) const;
    void setCurrentRow(std::size_t row);
    void scrollToRow(std::size_t row);
    void keepCurrent(std::size_t old, ItemKey key);
    ShowItemView row(std::size_t index) const { return {items_[index], swapMark_}; }
    void updateTip();

    Kind kind_;
    std::vector<DisplayContainer> items_;
    SwapMark swapMark_;
    std::optional<std::size_t> current_;
    RowTip* tip_ = nullptr; // owned by the list, made when it is first asked for
    ItemKey tipRow_ = 0;
    QPoint tipPlace_;
    bool isHighlighted_ = false;
    IconPictures icons_{[this] { viewport()->update(); }};
};

} // namespace tidewell
