#pragma once

#include "base/ports/UserDefaults.h"
#include "base/values/Result.h"
#include "model/memory/DataContainer.h"

#include <cstddef>
#include <optional>

namespace tidewell {

/// The newest samples of each kind that are read. A thousand hours of one every second are a fifth
/// of it; it only keeps a document without end from taking all memory.
inline constexpr std::size_t maximumSamples = std::size_t{1} << 24U;

/// Deeper documents are refused. The history itself is three deep, the rest is for members that a
/// later version may add.
inline constexpr int maximumDocumentDepth = 512;

/// The history as a compact JSON document (UTF-8): "id", "memoryPressureArray" and
/// "swapUsedArray", whose objects have "value" and "timestamp". Numbers read back bit for bit.
/// Empty when a timestamp is not finite, which JSON cannot say. Any thread.
std::optional<Data> encodeDataContainer(const DataContainer& container);

/// Reads such a document whole or not at all, but for samples beyond the newest `limit` of each
/// kind: every member has to be there and of its type, a value being an integer of 64 bits. Members
/// of other names are ignored. The error is short, and free of the document's own text. Any thread,
/// while LC_NUMERIC is "C", with which the parser reads fractions.
Result<DataContainer> decodeDataContainer(const Data& data, std::size_t limit = maximumSamples);

} // namespace tidewell
