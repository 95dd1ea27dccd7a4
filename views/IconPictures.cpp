#include "views/IconPictures.h"

#include "views/DevicePixels.h"

#include <QDir>
#include <QIcon>
#include <QPainter>

namespace tidewell {

namespace {

QIcon iconFor(const QString& icon) {
    return QDir::isAbsolutePath(icon) ? QIcon(icon) : QIcon::fromTheme(icon);
}

} // namespace

void IconPictures::draw(QPainter& painter, const QRectF& square, const Image& image) {
    const double scale = painter.device()->devicePixelRatio();
    const QSize pixels = (square.size() * scale).toSize();
    if (pixels != pixels_ || theme_ != QIcon::themeName()) {
        pixmaps_.clear();
        pixels_ = pixels;
        theme_ = QIcon::themeName();
    }
    const QString icon = QString::fromStdString(image.icon());
    auto found = pixmaps_.find(icon);
    if (found == pixmaps_.end()) {
        const QSize size = square.size().toSize();
        QPixmap pixmap = iconFor(icon).pixmap(size, scale);
        if (pixmap.isNull()) {
            pixmap = iconFor(QString::fromLatin1(Image::executable)).pixmap(size, scale);
        }
        found = pixmaps_.insert(icon, pixmap);
    }
    if (!found->isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform); // smaller ones are stretched
        painter.drawPixmap(onDevicePixels(painter, square), *found, found->rect());
    }
}

} // namespace tidewell
