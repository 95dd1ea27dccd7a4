#pragma once

#include "base/values/ThemeIcon.h"

#include <QHash>
#include <QPixmap>

#include <functional>
#include <memory>

class QFileSystemWatcher;
class QPainter;

namespace tidewell {

/// Draws pictures of the desktop's icon theme, and keeps what it drew until the theme, its files or
/// the scale change. Main thread.
class IconPictures {
public:
    /// `filesChanged` is called when what was drawn may look different now.
    explicit IconPictures(std::function<void()> filesChanged);
    IconPictures(const IconPictures&) = delete;
    IconPictures& operator=(const IconPictures&) = delete;
    ~IconPictures();

    /// Fills `square` with the picture; with the theme's icon for programs in general where it is
    /// not to be found, and not at all where the theme lacks that one, too.
    void draw(QPainter& painter, const QRectF& square, const ThemeIcon& icon);

private:
    void forget();
    void watchTheme();

    std::function<void()> filesChanged_;
    QHash<QString, QPixmap> pixmaps_; // for the theme and in the pixels that follow
    QString theme_;
    QSize pixels_;
    std::unique_ptr<QFileSystemWatcher> watcher_; // from the first picture on
};

} // namespace tidewell
