#pragma once

#include <QScrollArea>
#include <QScrollBar>

namespace tidewell {

/// A vertical scroll bar without a groove, for a small box: a style's own would fill a tenth of it.
class ScrollThumb final : public QScrollBar {
public:
    static constexpr int thickness = 10; ///< points

    ScrollThumb()
        : QScrollBar(Qt::Vertical) {}

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Shows `content`, which it owns, and scrolls it where it is too high; the thumb lies over it.
class ThumbScrollArea final : public QScrollArea {
public:
    explicit ThumbScrollArea(QWidget* content);
};

} // namespace tidewell
