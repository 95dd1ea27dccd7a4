#pragma once

#include "platform/foundation/Image.h"

#include <QHash>
#include <QPixmap>

class QPainter;

namespace tidewell {

/// Draws pictures of the desktop's icon theme, and keeps what it drew until the theme or the scale
/// changes. Main thread.
class IconPictures {
public:
    /// Fills `square` with the picture; with the theme's icon for programs in general where it is
    /// not to be found, and not at all where the theme lacks that one, too.
    void draw(QPainter& painter, const QRectF& square, const Image& image);

private:
    QHash<QString, QPixmap> pixmaps_; // for the theme and in the pixels that follow
    QString theme_;
    QSize pixels_;
};

} // namespace tidewell
