#pragma once

#include <QCoreApplication>
#include <QRectF>

class QPainter;
class QWidget;

namespace tidewell {

/// The line above a list of processes that says what its columns are. Main thread.
struct HeaderView {
    Q_DECLARE_TR_FUNCTIONS(HeaderView)

public:
    /// Paints it in the middle of `frame`, in the font, layout direction and colours of `widget`.
    static void paint(QPainter& painter, const QRectF& frame, const QWidget& widget);
};

} // namespace tidewell
