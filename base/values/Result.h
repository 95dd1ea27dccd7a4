#pragma once

#include <string>
#include <system_error>
#include <utility>

#include <tl/expected.hpp>

namespace tidewell {

/// Why something could not be done.
struct Error {
    std::string text;      ///< for the log, in English; says what was tried and what went wrong
    std::error_code cause; ///< what the system said, where it said something; else no error

    /// `text`, followed by the system's words for `cause` where there is one.
    std::string description() const { return cause ? text + ": " + cause.message() : text; }
};

/// What an operation gives that can fail: its value, or why there is none.
template <typename T = void>
using Result = tl::expected<T, Error>;

/// `return failure(...)`: the failing end of a function that gives a `Result`.
inline tl::unexpected<Error> failure(std::string text, std::error_code cause = {}) {
    return tl::unexpected<Error>({std::move(text), cause});
}

} // namespace tidewell
