#pragma once

#include "base/text/IntegerText.h"

#include <QGuiApplication>
#include <QString>

#include <cstdint>

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

/// A whole number of percent in the user's digits, the sign behind them in every language.
inline QString percentText(std::int64_t value) {
    const QString text = QString::fromStdString(integerText(value)) + u'%';
    // Within text that runs from right to left the sign would go to the other side.
    return QGuiApplication::isRightToLeft() ? QChar(0x2066) + text + QChar(0x2069) : text;
}

} // namespace tidewell
