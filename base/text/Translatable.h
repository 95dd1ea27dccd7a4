#pragma once

namespace tidewell {

/// Marks a text for translation in code that does not use Qt, as QT_TRANSLATE_NOOP does elsewhere.
/// Both arguments are literals, which lupdate finds; whoever shows the text calls
/// QCoreApplication::translate() with the same context.
constexpr const char* translatable(const char* /*context*/, const char* text) {
    return text;
}

} // namespace tidewell
