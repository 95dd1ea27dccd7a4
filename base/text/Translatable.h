#pragma once

namespace tidewell {

/// Marks a text of a part that knows no toolkit, for tools/translations: it is translated under
/// `context` where it is shown.
constexpr const char* translatable(const char* /*context*/, const char* text) {
    return text;
}

} // namespace tidewell
