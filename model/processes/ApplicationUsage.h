#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace tidewell {

using ProcessIdentifier = std::int32_t;

/// What the processes of one application use, beyond the one figure of its row. Sizes in bytes.
struct ApplicationUsage {
    ProcessIdentifier leader = 0; ///< tells the application from others, survey after survey
    std::size_t processes = 0;
    ProcessIdentifier largest = 0; ///< the process with the most memory
    std::string largestCommand;    ///< its command line as one readable line, cut when long
    std::uint64_t resident = 0;    ///< RSS: what processes share is counted for each of them
    /// PSS, with the RSS of those processes of which it is not to be read; empty if it is of none.
    std::optional<std::uint64_t> proportional;
    std::uint64_t swapped = 0;
};

} // namespace tidewell
