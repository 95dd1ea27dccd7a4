#pragma once

#include "base/ports/UserDefaults.h"
#include "base/values/Result.h"
#include "model/memory/DataContainer.h"

#include <optional>

namespace tidewell {

/// Larger documents are not read at all. A full history of 100 samples each takes about 10 KB.
inline constexpr std::size_t maximumDocumentSize = std::size_t{1} << 20U;

/// Deeper documents are refused. The history itself is three deep, the rest is for members that a
/// later version may add.
inline constexpr int maximumDocumentDepth = 512;

/// The history as a compact JSON document (UTF-8): "id", "memoryPressureArray" and
/// "swapUsedArray", whose objects have "value" and "timestamp". Numbers read back bit for bit.
/// Empty when a timestamp is not finite, which JSON cannot say. Any thread.
std::optional<Data> encodeDataContainer(const DataContainer& container);

/// Reads such a document whole or not at all: every member has to be there and of its type, a value
/// being an integer of 64 bits. Members of other names are ignored. The error is short, and free of
/// the document's own text. Any thread, while LC_NUMERIC is "C", with which the parser reads
/// fractions.
Result<DataContainer> decodeDataContainer(const Data& data);

} // namespace tidewell
