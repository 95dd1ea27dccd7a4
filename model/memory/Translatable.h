#pragma once

#include <string_view>

namespace tidewell {

/// The context in which QCoreApplication::translate() has the texts of the models, which know no
/// Qt.
inline constexpr const char* modelContext = "MemoryWatcher";

/// Marks a text of a model for translation, as tr() does where there is Qt. Both arguments are
/// literals, which lupdate finds. Does not compile with another context than `modelContext`.
consteval const char* translatable(std::string_view context, const char* text) {
    return context == modelContext ? text : throw "nobody would find it there";
}

} // namespace tidewell
