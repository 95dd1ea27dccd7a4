#include "app/lists/ShowItemList.h"

#include "app/lists/AccessibleList.h"
#include "app/lists/HeaderView.h"
#include "app/lists/ShowItemView.h"
#include "ui/Drawing.h"
#include "ui/Palette.h"

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>

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

/// A thumb without a groove, for a small box. A style's own scroll bar would fill a tenth of it.
class ScrollThumb final : public QScrollBar {
public:
    ScrollThumb()
        : QScrollBar(Qt::Vertical) {}

    QSize sizeHint() const override { return {10, QScrollBar::sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent*) override {
        QStyleOptionSlider option;
        initStyleOption(&option);
        const QRectF thumb = style()->subControlRect(QStyle::CC_ScrollBar, &option,
                                                     QStyle::SC_ScrollBarSlider, this);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(
            withOpacity(palette().color(QPalette::PlaceholderText), isSliderDown() ? 1 : 0.7));
        painter.drawRoundedRect(QRectF(2, thumb.top(), 6, thumb.height()), 3, 3);
    }
};

bool looksLike(const DisplayContainer& one, const DisplayContainer& other) {
    return one.showItem.label == other.showItem.label &&
           one.showItem.value == other.showItem.value &&
           one.showItem.color == other.showItem.color && one.image == other.image;
}

} // namespace

ShowItemList::ShowItemList(Kind kind)
    : kind_(kind) {
    makeListsAccessible();
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::TabFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false); // the box around it has round corners
    setVerticalScrollBar(new ScrollThumb);    // the list's own from now on
    verticalScrollBar()->setSingleStep(measuresOf(kind).pitch);
}

void ShowItemList::setItems(std::vector<DisplayContainer> items) {
    const bool looksTheSame = std::ranges::equal(items_, items, looksLike);
    const auto before = std::exchange(items_, std::move(items));
    if (looksTheSame) {
        return;
    }
    updateScrollBar();
    viewport()->update();
    tellChangedRows(*this, before);
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
    if (event->type() == QEvent::Paint) {
        // Below the viewport and the scroll bar.
        const Appearance appearance = appearanceOf(palette());
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        if (isHighlighted_) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(withOpacity(toQColor(colours::systemCyan, appearance), 0.2));
            painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
        }
        if (showsFocus(*this)) {
            drawFocusRing(painter, rect(), cornerRadius, appearance);
        }
    } else if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        update();
    }
    return QAbstractScrollArea::event(event);
}

void ShowItemList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Home) {
        verticalScrollBar()->setValue(0);
    } else if (event->key() == Qt::Key_End) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    } else {
        QAbstractScrollArea::keyPressEvent(event);
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
        ShowItemView{items_[row]}.paint(painter, frame, *this, fonts, icons_);
    }
}

} // namespace tidewell
