#include "app/lists/IconPictures.h"

#include "ui/DevicePixels.h"

#include <QBuffer>
#include <QFile>
#include <QFileSystemWatcher>
#include <QIcon>
#include <QImageReader>
#include <QPainter>

namespace tidewell {

namespace {

QPixmap pixmapOf(const ThemeIcon& icon, const QSize& size, double scale) {
    if (!icon.isFile()) {
        return QIcon::fromTheme(QString::fromStdString(icon.name())).pixmap(size, scale);
    }
    auto content = QByteArray::fromStdString(icon.content());
    QBuffer file(&content);
    QImageReader reader(&file);
    reader.setScaledSize(reader.size().scaled(size * scale, Qt::KeepAspectRatio));
    return QPixmap::fromImage(reader.read());
}

} // namespace

IconPictures::IconPictures(std::function<void()> filesChanged)
    : filesChanged_(std::move(filesChanged)) {}

IconPictures::~IconPictures() = default;

void IconPictures::forget() {
    pixmaps_.clear();
    watcher_ = std::make_unique<QFileSystemWatcher>(); // what was removed is watched no more
    watchTheme();
    QObject::connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, [this] {
        QFileSystemWatcher* const teller = watcher_.release();
        teller->disconnect(); // it may have more to tell of the same change
        teller->deleteLater();
        QIcon::setThemeSearchPaths(QIcon::themeSearchPaths()); // clears QIcon's cache, too
        filesChanged_();
    });
}

/// A theme has a hundred folders. Installers that put an icon into one of them must touch the
/// theme's own, so that readers need to look at no other.
void IconPictures::watchTheme() {
    QStringList folders;
    for (const QString& path : QIcon::themeSearchPaths()) {
        folders << path;
        for (const QString& theme :
             {theme_, QIcon::fallbackThemeName(), QStringLiteral("hicolor")}) {
            folders << path + u'/' + theme;
        }
    }
    folders.removeIf([](const QString& folder) { return !QFile::exists(folder); });
    folders.removeDuplicates();
    if (!folders.isEmpty()) {
        watcher_->addPaths(folders);
    }
}

void IconPictures::draw(QPainter& painter, const QRectF& square, const ThemeIcon& icon) {
    const double scale = painter.device()->devicePixelRatio();
    const QSize pixels = (square.size() * scale).toSize();
    if (!watcher_ || pixels != pixels_ || theme_ != QIcon::themeName()) {
        pixels_ = pixels;
        theme_ = QIcon::themeName();
        forget();
    }
    const QString name = QString::fromStdString(icon.name());
    auto found = pixmaps_.find(name);
    if (found == pixmaps_.end()) {
        const QSize size = square.size().toSize();
        QPixmap pixmap = pixmapOf(icon, size, scale);
        if (pixmap.isNull()) {
            pixmap = pixmapOf(ThemeIcon(ThemeIcon::executable), size, scale);
        }
        found = pixmaps_.insert(name, pixmap);
    }
    if (!found->isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform); // smaller ones are stretched
        painter.drawPixmap(onDevicePixels(painter, square), *found, found->rect());
    }
}

} // namespace tidewell
