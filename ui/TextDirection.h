#pragma once

#include <QGuiApplication>
#include <QString>

namespace tidewell {

/// The text so marked that it runs from right to left where the layout does, also where it begins
/// with a name in other letters.
inline QString alongLayout(const QString& text) {
    return QGuiApplication::isRightToLeft() ? QChar(0x200F) + text : text;
}

/// A part of a text so marked that it runs as it is written, whatever is around it.
inline QString isolated(const QString& part) {
    return QChar(0x2068) + part + QChar(0x2069);
}

} // namespace tidewell
