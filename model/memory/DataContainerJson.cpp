#include "model/memory/DataContainerJson.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

namespace tidewell {

namespace {

using nlohmann::json;

constexpr std::string_view idKey = "id";
constexpr std::string_view memoryPressureKey = "memoryPressureArray";
constexpr std::string_view swapUsedKey = "swapUsedArray";
constexpr std::string_view valueKey = "value";
constexpr std::string_view timestampKey = "timestamp";

template <typename Item>
std::optional<json> jsonOf(const std::vector<Item>& items) {
    auto result = json::array();
    for (const Item& item : items) {
        if (!std::isfinite(item.timestamp)) {
            return std::nullopt;
        }
        result.push_back({{valueKey, item.value}, {timestampKey, item.timestamp}});
    }
    return result;
}

std::string missing(std::string_view key) {
    return "'" + std::string(key) + "' not found";
}

std::string wrongType(std::string_view key) {
    return "wrong type in '" + std::string(key) + "'";
}

template <typename Item>
void dropOldest(std::vector<Item>& items, std::size_t limit) {
    const auto excess = items.size() - std::min(items.size(), limit);
    items.erase(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(excess));
}

/// Takes a sample over into `items`; what is wrong with it, if anything is.
template <typename Item>
std::string takeItem(const json& sample, std::vector<Item>& items, std::size_t limit) {
    const auto value = sample.find(valueKey);
    const auto timestamp = sample.find(timestampKey);
    if (value == sample.end() || timestamp == sample.end()) {
        return missing(value == sample.end() ? valueKey : timestampKey);
    }
    if (!value->is_number_integer() ||
        (value->is_number_unsigned() &&
         !std::in_range<std::int64_t>(value->get<std::uint64_t>()))) {
        return wrongType(valueKey);
    }
    if (!timestamp->is_number()) {
        return wrongType(timestampKey);
    }
    if (items.size() >= 2 * limit) { // seldom, since it moves all that stay
        dropOldest(items, limit);
    }
    items.push_back({value->get<std::int64_t>(), timestamp->get<double>()});
    return {};
}

/// What is wrong with a document of which the samples were taken out, if anything is.
std::string faultOf(const json& document) {
    if (!document.is_object()) {
        return document.is_discarded() ? "it is not valid JSON" : wrongType("the document");
    }
    for (const auto key : {idKey, memoryPressureKey, swapUsedKey}) {
        const auto member = document.find(key);
        if (member == document.end()) {
            return missing(key);
        }
        if (key == idKey ? !member->is_string() : !member->is_array() || !member->empty()) {
            return wrongType(key);
        }
    }
    return UUID::parse(document[idKey].get_ref<const std::string&>()) ? "" : "\"id\" is not a UUID";
}

} // namespace

std::optional<Data> encodeDataContainer(const DataContainer& container) {
    auto pressures = jsonOf(container.memoryPressureArray);
    auto swaps = jsonOf(container.swapUsedArray);
    if (!pressures || !swaps) {
        return std::nullopt;
    }
    const json document{{idKey, container.id.text()},
                        {memoryPressureKey, std::move(*pressures)},
                        {swapUsedKey, std::move(*swaps)}};
    const std::string text = document.dump();
    return Data(text.begin(), text.end());
}

Result<DataContainer> decodeDataContainer(const Data& data, std::size_t limit) {
    DataContainer history;
    std::string member; // of the document, the last one
    std::string fault;
    // Takes each sample out of the document's tree, in which a long history would take twenty times
    // its memory.
    const auto take = [&](int depth, json::parse_event_t event, const json& parsed) {
        using enum json::parse_event_t;
        if (depth == maximumDocumentDepth && (event == object_start || event == array_start)) {
            fault = "it is nested too deeply";
        }
        if (event == key && depth == 1) { // of two members of one name, the last one counts
            member = parsed.get_ref<const std::string&>();
            if (member == memoryPressureKey) {
                history.memoryPressureArray.clear();
            } else if (member == swapUsedKey) {
                history.swapUsedArray.clear();
            }
        }
        const bool isPressure = member == memoryPressureKey;
        const bool isList = isPressure || member == swapUsedKey;
        if (isList && depth == 2 && (event == value || event == array_start)) {
            fault = wrongType(member);
        } else if (isList && depth == 2 && event == object_end && fault.empty()) {
            fault = isPressure ? takeItem(parsed, history.memoryPressureArray, limit)
                               : takeItem(parsed, history.swapUsedArray, limit);
        }
        // Nothing else is kept: after each object the parser looks through all that its parent has.
        switch (depth) {
        case 0:
            return fault.empty();
        case 1:
            return event == key     ? isList || member == idKey
                   : event == value ? member == idKey
                                    : isList && event != object_start;
        case 2:
            return isList && event == object_start;
        default:
            return depth == 3 && (event == value ||
                                  (event == key && (parsed == valueKey || parsed == timestampKey)));
        }
    };
    // A NUL byte is JSON nowhere, but to the parser it is the end, whatever follows.
    const bool hasNul = std::ranges::find(data, 0) != data.end();
    const json document = hasNul ? json(json::value_t::discarded) : json::parse(data, take, false);
    if (fault.empty()) {
        fault = faultOf(document);
    }
    if (!fault.empty()) {
        return failure("The saved history cannot be read: " + fault);
    }
    history.id = *UUID::parse(document[idKey].get_ref<const std::string&>());
    dropOldest(history.memoryPressureArray, limit);
    dropOldest(history.swapUsedArray, limit);
    return history;
}

} // namespace tidewell
