#pragma once

#include "base/values/Colour.h"

#include <QtCore/qnamespace.h>

class QBrush;
class QColor;
class QPainter;
class QRectF;
class QString;
class QWidget;

namespace tidewell {

/// Draws a rounded rectangle with a border of `lineWidth` points inside its edge. Only the corners
/// are antialiased paths: plain fills are several times faster, and Qt's raster engine starts pool
/// threads, and keeps them, for large paths.
void drawSoftBox(QPainter& painter, const QRectF& box, double radius, const QBrush& ground,
                 const QColor& edge, double lineWidth);

/// Draws one line of text, vertically centred in `area` and aligned left, right or centred within
/// its width. `textWidth` is its advance in the painter's font. Not clipped; the direction is the
/// text's own. QPainter::drawText() with a rectangle runs a QTextLayout for paragraphs, which takes
/// three times as long.
void drawTextLine(QPainter& painter, const QRectF& area, Qt::Alignment side, const QString& text,
                  double textWidth);

/// Whether `widget` has the focus and a key has moved the focus in its window: a window that has
/// only been clicked in shows no focus ring.
bool showsFocus(const QWidget& widget);

/// Draws the focus ring, two points wide, along the inside of `outline`.
void drawFocusRing(QPainter& painter, const QRectF& outline, double radius, Appearance appearance);

} // namespace tidewell
