#pragma once

#include "model/processes/DisplayContainer.h"

#include <QFont>
#include <QRectF>
#include <QString>

class QPainter;
class QWidget;

namespace tidewell {

class IconPictures;

/// What the rows of a list are written in: the label's font, and that of the byte count.
struct RowFonts {
    QFont label;
    QFont value;

    explicit RowFonts(const QFont& system);
};

/// One row of a list of figures: the icon, where there is one, the label, which is cut short where
/// it must, and the byte count, which never is. Points; main thread.
struct ShowItemView {
    static constexpr int height = 16;

    const DisplayContainer& displayContainer; ///< outlives the view

    /// Paints the row as high as `height` in the middle of `frame`, in the layout direction and the
    /// colours of `widget`.
    void paint(QPainter& painter, const QRectF& frame, const QWidget& widget, const RowFonts& fonts,
               IconPictures& icons) const;

    /// The byte count.
    QString valueText() const;
};

} // namespace tidewell
