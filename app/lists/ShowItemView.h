#pragma once

#include "base/values/Colour.h"
#include "model/processes/DisplayContainer.h"

#include <QFont>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <limits>

class QPainter;
class QWidget;

namespace tidewell {

class IconPictures;

/// What the rows of a list are written in: the label's font, that of the byte count, and that of
/// the remark.
struct RowFonts {
    QFont label;
    QFont value;
    QFont remark;

    explicit RowFonts(const QFont& system);
};

/// Which rows remark that much of their application lies in swap.
struct SwapMark {
    std::uint64_t above = std::numeric_limits<std::uint64_t>::max(); ///< bytes
    Colour colour = colours::primary;

    bool operator==(const SwapMark&) const = default;
};

/// One row of a list of figures: the icon, where there is one, the label, which is elided where it
/// must be, and the byte count, which never is. Points; main thread.
struct ShowItemView {
    static constexpr int height = 16;

    const DisplayContainer& displayContainer; ///< outlives the view
    SwapMark swapMark = {};

    /// Paints the row as high as `height` in the middle of `frame`, in the layout direction and the
    /// colours of `widget`.
    void paint(QPainter& painter, const QRectF& frame, const QWidget& widget, const RowFonts& fonts,
               IconPictures& icons) const;

    /// The byte count.
    QString valueText() const;
    /// The remark on swap; empty for most rows.
    QString remark() const;
};

} // namespace tidewell
