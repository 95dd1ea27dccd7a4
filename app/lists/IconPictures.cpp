#include "app/lists/IconPictures.h"

#include "ui/DevicePixels.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QIcon>
#include <QPainter>

namespace tidewell {

namespace {

QIcon iconFor(const QString& icon) {
    if (!QDir::isAbsolutePath(icon)) {
        return QIcon::fromTheme(icon);
    }
    // An entry can name anything: a pipe would be waited for, a large file decoded for long.
    constexpr qint64 largest = qint64{4} << 20U; // bytes
    const QFileInfo file(icon);
    return file.isFile() && file.size() <= largest ? QIcon(icon) : QIcon();
}

} // namespace

IconPictures::IconPictures(std::function<void()> filesChanged)
    : filesChanged_(std::move(filesChanged)) {}

IconPictures::~IconPictures() = default;

void IconPictures::forget() {
    pixmaps_.clear();
    watcher_ = std::make_unique<QFileSystemWatcher>(); // what was removed is watched no more
    watchTheme();
    const auto changed = [this] {
        QFileSystemWatcher* const teller = watcher_.release();
        teller->disconnect(); // it may have more to tell of the same change
        teller->deleteLater();
        QIcon::setThemeSearchPaths(QIcon::themeSearchPaths()); // clears QIcon's cache, too
        filesChanged_();
    };
    QObject::connect(watcher_.get(), &QFileSystemWatcher::directoryChanged, changed);
    QObject::connect(watcher_.get(), &QFileSystemWatcher::fileChanged, changed);
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
        QPixmap pixmap = iconFor(name).pixmap(size, scale);
        if (pixmap.isNull()) {
            pixmap = iconFor(QString::fromLatin1(ThemeIcon::executable)).pixmap(size, scale);
        }
        found = pixmaps_.insert(name, pixmap);
        if (QDir::isAbsolutePath(name) && QFile::exists(name)) {
            watcher_->addPath(name);
        }
    }
    if (!found->isNull()) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform); // smaller ones are stretched
        painter.drawPixmap(onDevicePixels(painter, square), *found, found->rect());
    }
}

} // namespace tidewell
