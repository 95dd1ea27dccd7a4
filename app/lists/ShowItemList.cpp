#include "app/lists/ShowItemList.h"

#include "app/lists/HeaderView.h"
#include "app/lists/RowTip.h"
#include "app/lists/ShowItemView.h"
#include "app/lists/UsageText.h"
#include "base/text/ByteText.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"
#include "ui/ScrollThumb.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tidewell {

namespace {

/// Points.
struct Measures {
    int above; // the first row
    int below; // the last row
    int beside;
    int pitch; // from one row to the next
};

constexpr Measures measuresOf(ShowItemList::Kind kind) {
    // Nine figures fill the panel's list.
    return kind == ShowItemList::Kind::figures
               ? Measures{.above = 3, .below = 2, .beside = 6, .pitch = 23}
               : Measures{.above = 32, .below = 8, .beside = 14, .pitch = 26};
}

constexpr double cornerRadius = 5;
constexpr double focusRoom = 5; // of the ring, beside the row

bool looksLike(const DisplayContainer& one, const DisplayContainer& other) {
    return one.showItem.label == other.showItem.label &&
           one.showItem.color == other.showItem.color && one.image == other.image &&
           (one.showItem.value == other.showItem.value ||
            sizeText(one.showItem.value) == sizeText(other.showItem.value)) &&
           (one.usage ? one.usage->swapped : 0) == (other.usage ? other.usage->swapped : 0);
}

} // namespace

ShowItemList::ShowItemList(Kind kind)
    : kind_(kind) {
    makeAccessible<ShowItemList, AccessibleItems>();
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::TabFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setMouseTracking(true);
    viewport()->setAutoFillBackground(false); // the box around it has round corners
    setVerticalScrollBar(new ScrollThumb);    // the list's own from now on
    verticalScrollBar()->setSingleStep(measuresOf(kind).pitch);
}

ShowItemList::~ShowItemList() = default;

void ShowItemList::setItems(std::vector<DisplayContainer> items) {
    const QRegion changed = changedBy(items);
    const auto current = current_;
    const ItemKey key = current ? itemKey(*current) : 0;
    items_ = std::move(items);
    updateTip();
    if (!changed.isEmpty()) {
        updateScrollBar();
        viewport()->update(changed);
        tellOfChanges(*this);
    }
    if (current) {
        keepCurrent(*current, key);
    }
}

/// Where the list looks otherwise with these items.
QRegion ShowItemList::changedBy(const std::vector<DisplayContainer>& items) const {
    if (items.size() != items_.size()) {
        return viewport()->rect();
    }
    QRegion changed;
    for (std::size_t row = 0; row < items.size(); ++row) {
        if (!looksLike(items_[row], items[row])) {
            changed += rowArea(row);
        }
    }
    return changed;
}

void ShowItemList::setSwapMark(const SwapMark& mark) {
    if (swapMark_ != mark) {
        swapMark_ = mark;
        viewport()->update();
        tellOfChanges(*this);
    }
}

QString ShowItemList::itemText(std::size_t index) const {
    const ShowItemView view = row(index);
    const QString remark = view.remark();
    return QString::fromStdString(items_[index].showItem.label) + u' ' + view.valueText() +
           (remark.isEmpty() ? remark : QStringLiteral(", ") + remark);
}

QString ShowItemList::itemDescription(std::size_t index) const {
    const auto& usage = items_[index].usage;
    return usage ? UsageText::of(*usage) : QString();
}

QRectF ShowItemList::itemFrame(std::size_t index) const {
    return rowFrame(index).translated(viewport()->pos());
}

PaintedItems::ItemKey ShowItemList::itemKey(std::size_t index) const {
    const auto& usage = items_[index].usage;
    return usage ? usage->leader : -1 - static_cast<ItemKey>(index);
}

void ShowItemList::keepCurrent(std::size_t old, ItemKey key) {
    const auto found = itemWithKey(key);
    if (items_.empty()) {
        current_.reset();
    } else if (!found) {
        setCurrentRow(std::min(old, items_.size() - 1));
    } else if (found != old) {
        current_ = found;
        viewport()->update();
        if (rowFrame(old).intersects(QRectF(viewport()->rect()))) {
            scrollToRow(*found);
        }
    }
}

void ShowItemList::setCurrentRow(std::size_t row) {
    current_ = row;
    scrollToRow(row);
    update(); // the ring around the whole list goes
    viewport()->update();
    tellOfItem(*this, row, QAccessible::Focus);
}

void ShowItemList::scrollToRow(std::size_t row) {
    // By whole rows, of which so many are seen below what is above them.
    const Measures measures = measuresOf(kind_);
    const int seen = (viewport()->height() - measures.above) / measures.pitch + 1;
    const int index = static_cast<int>(row);
    QScrollBar& bar = *verticalScrollBar();
    if (index * measures.pitch < bar.value()) {
        bar.setValue(index * measures.pitch);
    } else if ((index - seen + 1) * measures.pitch > bar.value()) {
        bar.setValue((index - seen + 1) * measures.pitch);
    }
}

std::optional<std::size_t> ShowItemList::rowAt(QPointF position) const {
    const int pitch = measuresOf(kind_).pitch;
    const double gap = pitch - ShowItemView::height; // half of it belongs to the row above
    const double row = std::floor((position.y() - rowFrame(0).top() + gap / 2) / pitch);
    return row >= 0 && row < static_cast<double>(items_.size())
               ? std::optional(static_cast<std::size_t>(row))
               : std::nullopt;
}

void ShowItemList::updateTip() {
    if (tip_ == nullptr || !tip_->isVisible()) {
        return;
    }
    const auto row = rowAt(viewport()->mapFromGlobal(tipPlace_));
    if (row && items_[*row].usage && itemKey(*row) == tipRow_) {
        tip_->showText(UsageText::of(*items_[*row].usage), tipPlace_);
    } else {
        tip_->hide();
    }
}

bool ShowItemList::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        const auto* const help = static_cast<QHelpEvent*>(event);
        const auto row = rowAt(help->pos());
        if (row && items_[*row].usage) {
            tip_ = tip_ == nullptr ? new RowTip(this) : tip_;
            tipRow_ = itemKey(*row);
            tipPlace_ = help->globalPos();
            tip_->showText(UsageText::of(*items_[*row].usage), tipPlace_);
        }
        return true;
    }
    if (tip_ != nullptr && tip_->isVisible()) {
        if (event->type() == QEvent::MouseMove) {
            tipPlace_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
            const auto row = rowAt(viewport()->mapFromGlobal(tipPlace_));
            tip_->setVisible(row && itemKey(*row) == tipRow_);
        } else if (event->type() == QEvent::Leave || event->type() == QEvent::Wheel) {
            tip_->hide();
        }
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void ShowItemList::setHighlighted(bool isHighlighted) {
    if (std::exchange(isHighlighted_, isHighlighted) != isHighlighted) {
        update();
    }
}

QRectF ShowItemList::rowFrame(std::size_t index) const {
    const Measures measures = measuresOf(kind_);
    const auto top = measures.above + measures.pitch * static_cast<double>(index);
    return {static_cast<double>(measures.beside), top - verticalScrollBar()->value(),
            static_cast<double>(viewport()->width() - 2 * measures.beside), ShowItemView::height};
}

QRect ShowItemList::rowArea(std::size_t index) const {
    const double gap = measuresOf(kind_).pitch - ShowItemView::height;
    return rowFrame(index).adjusted(-focusRoom, -gap / 2, focusRoom, gap / 2).toAlignedRect();
}

QRectF ShowItemList::headerFrame() const {
    // Its middle is as far from the first row's as rows are from each other.
    return rowFrame(0).translated(0, -measuresOf(kind_).pitch + 2);
}

void ShowItemList::updateScrollBar() {
    const Measures measures = measuresOf(kind_);
    const int rows = static_cast<int>(items_.size()) * measures.pitch;
    const int gap = items_.empty() ? 0 : measures.pitch - ShowItemView::height;
    const int height = measures.above + rows - gap + measures.below;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
}

bool ShowItemList::event(QEvent* event) {
    if (event->type() == QEvent::Resize) {
        // Whole rows are seen, wherever it is scrolled to by its steps.
        const Measures measures = measuresOf(kind_);
        const int gap = measures.pitch - ShowItemView::height;
        const int forRows = height() - measures.above - measures.below + gap;
        setViewportMargins(0, 0, 0, std::max(0, forRows) % measures.pitch);
    } else if (event->type() == QEvent::Paint) {
        // Below the viewport and the scroll bar.
        const Appearance appearance = appearanceOf(palette());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isHighlighted_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(withOpacity(toQColor(colours::systemCyan, appearance), 0.2));
            painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
        }
        if (showsFocus(*this) && !current_) { // then a row has the mark
            drawFocusRing(painter, rect(), cornerRadius, appearance);
        }
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
        viewport()->update();
    }
    return QAbstractScrollArea::event(event);
}

void ShowItemList::keyPressEvent(QKeyEvent* event) {
    const int last = static_cast<int>(items_.size()) - 1;
    const int page = std::max(1, viewport()->height() / measuresOf(kind_).pitch - 1);
    const int from = static_cast<int>(current_.value_or(0));
    int to = from;
    switch (event->key()) {
    case Qt::Key_Home:
        to = 0;
        break;
    case Qt::Key_End:
        to = last;
        break;
    case Qt::Key_Up:
        to = from - 1;
        break;
    case Qt::Key_Down:
        to = current_ ? from + 1 : 0;
        break;
    case Qt::Key_PageUp:
        to = from - page;
        break;
    case Qt::Key_PageDown:
        to = from + page;
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (last >= 0) {
        setCurrentRow(static_cast<std::size_t>(std::clamp(to, 0, last)));
    }
}

void ShowItemList::resizeEvent(QResizeEvent* event) {
    updateScrollBar();
    QAbstractScrollArea::resizeEvent(event);
}

void ShowItemList::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRectF area = event->rect();
    if (kind_ == Kind::processes && headerFrame().intersects(area)) {
        HeaderView::paint(painter, headerFrame(), *this);
    }
    const RowFonts fonts(font());
    const int pitch = measuresOf(kind_).pitch;
    const auto rowsAbove = std::max(0.0, std::floor((area.top() - rowFrame(0).top()) / pitch));
    for (auto row = static_cast<std::size_t>(rowsAbove); row < items_.size(); ++row) {
        const QRectF frame = rowFrame(row);
        if (frame.top() >= area.bottom()) {
            break;
        }
        if (!event->region().intersects(rowArea(row))) {
            continue;
        }
        this->row(row).paint(painter, frame, *this, fonts, icons_);
        if (row == current_ && hasFocus()) {
            drawFocusRing(painter, frame.adjusted(-focusRoom, -2, focusRoom, 2), cornerRadius,
                          appearanceOf(palette()));
        }
    }
}

} // namespace tidewell
