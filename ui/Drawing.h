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

/// Draws a box with soft corners and a line of `lineWidth` points along the inside of its edge.
/// Only the corners are drawn as curves: the rest is several times faster filled, and the toolkit
/// takes more threads for large curved areas, and keeps them.
void drawSoftBox(QPainter& painter, const QRectF& box, double radius, const QBrush& ground,
                 const QColor& edge, double lineWidth);

/// Draws one line of text, `textWidth` wide by the painter's font, in the middle of the height of
/// `area`, at the left, at the right (`Qt::AlignRight`) or in the middle (`Qt::AlignHCenter`) of
/// its width. It runs as it is written and is not clipped. The painter's own text in a rectangle
/// lays out paragraphs, which takes three times as long.
void drawTextLine(QPainter& painter, const QRectF& area, Qt::Alignment side, const QString& text,
                  double textWidth);

/// Whether `widget` has the focus and its user gets about by keyboard: the focus of a window that
/// has only been clicked in is not marked.
bool showsFocus(const QWidget& widget);

/// Draws the mark of the focus: a line, two points wide, along the inside of `outline`.
void drawFocusRing(QPainter& painter, const QRectF& outline, double radius, Appearance appearance);

} // namespace tidewell
