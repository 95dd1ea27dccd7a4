#pragma once

#include <QIcon>
#include <QWidget>

class QPainter;

namespace tidewell {

/// Draws into a square, sharp at every size. Main thread.
using DrawPicture = void (*)(QPainter& painter, const QRectF& square);

/// The program's icon, as in `resources/icons`: a gauge that rises out of the tide.
void drawApplicationIcon(QPainter& painter, const QRectF& square);

/// The same for the windows that have a frame.
QIcon applicationIcon();

/// The picture for "nothing to warn of": still water and a tick.
void drawNoWarning(QPainter& painter, const QRectF& square);

/// Shows a picture as large as it fits, in the middle. Assistive technology reads it as a graphic
/// with the widget's accessible name. Main thread.
class PictureView final : public QWidget {
public:
    explicit PictureView(DrawPicture draw);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    DrawPicture draw_;
};

} // namespace tidewell
