#include "updater/windows/ProgressView.h"

#include "base/text/ByteText.h"
#include "ui/Fonts.h"
#include "ui/Palette.h"
#include "ui/TextDirection.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tidewell {

namespace {

constexpr int steps = 1000;
constexpr int thickness = 8;
constexpr double movingPart = 0.3;
constexpr int cycleMilliseconds = 1600;
constexpr std::chrono::milliseconds updateInterval{100};

QString bytes(qint64 count) {
    return isolated(QString::fromStdString(byteText(count)));
}

} // namespace

ProgressBar::ProgressBar(Waiting waiting)
    : waiting_(waiting) {
    setTextVisible(false);
    setFixedHeight(thickness);
    setRange(0, 0);
    movement_.setStartValue(-movingPart);
    movement_.setEndValue(1.0);
    movement_.setDuration(cycleMilliseconds);
    movement_.setLoopCount(-1);
    connect(&movement_, &QVariantAnimation::valueChanged, this, [this] { update(); });
}

void ProgressBar::showEvent(QShowEvent* event) {
    // The duration is 0 in a style without animations.
    if (waiting_ == Waiting::moves && maximum() == minimum() &&
        style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) != 0) {
        movement_.start();
    }
    QProgressBar::showEvent(event);
}

void ProgressBar::paintEvent(QPaintEvent* /*event*/) {
    double start = 0;
    double end = 0;
    if (maximum() > minimum()) {
        movement_.stop();
        end = double(value() - minimum()) / (maximum() - minimum());
    } else if (movement_.state() == QAbstractAnimation::Running) {
        start = movement_.currentValue().toDouble();
        end = start + movingPart;
    } else {
        start = (1 - movingPart) / 2;
        end = start + movingPart;
    }
    QRectF filled(start * width(), 0, (end - start) * width(), height());
    if (isRightToLeft()) {
        filled.moveRight(width() - filled.left());
    }
    const double radius = height() / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor track = palette().color(QPalette::WindowText);
    track.setAlphaF(0.12F);
    painter.setBrush(track);
    painter.drawRoundedRect(rect(), radius, radius);
    painter.setBrush(toQColor(colours::accent, appearanceOf(palette())));
    // Never shorter than its round ends.
    filled = filled.intersected(rect());
    if (filled.width() >= height()) {
        painter.drawRoundedRect(filled, radius, radius);
    }
}

ProgressView::ProgressView(ProgressBar::Waiting waiting)
    : bar_(new ProgressBar(waiting))
    , figures_(new QLabel) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 4, 0, 0);
    layout->setSpacing(6);
    layout->addWidget(bar_);
    layout->addWidget(figures_);
    figures_->setFont(textFont(TextStyle::callout, figures_->font()));
    figures_->setForegroundRole(QPalette::PlaceholderText);
    figures_->hide();
}

void ProgressView::follow(std::shared_ptr<const std::atomic<qint64>> received, qint64 length) {
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this,
            [this, received = std::move(received), length] { setProgress(*received, length); });
    timer->start(updateInterval);
}

void ProgressView::setProgress(qint64 received, qint64 length) {
    bar_->setRange(0, steps);
    bar_->setValue(static_cast<int>(std::clamp(received, qint64{0}, length) * steps / length));
    figures_->setText(alongLayout(tr("%1 of %2").arg(bytes(received), bytes(length))));
    figures_->show();
}

} // namespace tidewell
