#pragma once

#include "base/ports/UserDefaults.h"
#include "model/memory/DataContainer.h"

#include <optional>
#include <string>
#include <variant>

namespace tidewell {

/// Larger documents are not read at all. A full history of 100 samples each takes about 10 KB; a
/// hundred times that still reads in some 10 ms on the main thread.
inline constexpr std::size_t maximumDocumentSize = std::size_t{1} << 20U;

/// Deeper documents are refused. The history itself is three deep, the rest is for members that a
/// later version may add. The reader does not recurse: this is a bound on nonsense, not on a stack.
inline constexpr std::size_t maximumDocumentDepth = 512;

/// Why a document was refused, in words for the log: short, and free of the document's own text.
struct DecodingError {
    std::string description;
};

/// The history as a compact JSON document (UTF-8): "id", "memoryPressureArray" and
/// "swapUsedArray", whose objects have "value" and "timestamp". Numbers read back bit for bit.
/// Empty when a timestamp is not finite, which JSON cannot say. Any thread.
std::optional<Data> encodeDataContainer(const DataContainer& container);

/// Reads such a document whole or not at all: every member has to be there, once and of its type,
/// a value being an integer of 64 bits. Members of other names are ignored. Any thread, in a
/// program that keeps the plain decimal sign (LC_NUMERIC "C"), with which the parser reads
/// fractions.
std::variant<DataContainer, DecodingError> decodeDataContainer(const Data& document);

} // namespace tidewell
