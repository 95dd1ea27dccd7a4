#include "model/memory/DataContainerJson.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

namespace tidewell {

namespace {

using nlohmann::json;

constexpr auto idKey = "id";
constexpr auto memoryPressureKey = "memoryPressureArray";
constexpr auto swapUsedKey = "swapUsedArray";
constexpr auto valueKey = "value";
constexpr auto timestampKey = "timestamp";

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

/// Throws std::exception where `list` is no list of such items.
template <typename Item>
std::vector<Item> itemsOf(const json& list) {
    std::vector<Item> items;
    for (const json& item : list.get_ref<const json::array_t&>()) {
        // By reference: a copy would be converted, which drops fractions.
        const json& value = item.at(valueKey);
        const auto number = value.get_ref<const json::number_integer_t&>();
        if (value.is_number_unsigned() && number < 0) {
            throw std::out_of_range("a value of the wrong type: too large");
        }
        items.push_back({number, item.at(timestampKey).get<double>()});
    }
    return items;
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

Result<DataContainer> decodeDataContainer(const Data& data) {
    const auto refuse = [](const std::string& reason) {
        return failure("The saved history cannot be read: " + reason);
    };
    if (data.size() > maximumDocumentSize) {
        return refuse("it is too large");
    }
    bool isTooDeep = false;
    const auto checkDepth = [&isTooDeep](int depth, json::parse_event_t event, const json&) {
        const bool opens =
            event == json::parse_event_t::object_start || event == json::parse_event_t::array_start;
        isTooDeep = isTooDeep || (opens && depth >= maximumDocumentDepth);
        return !isTooDeep;
    };
    const json document = json::parse(data.begin(), data.end(), checkDepth, false);
    if (isTooDeep) {
        return refuse("it is nested too deeply");
    }
    // A NUL byte is JSON nowhere, but to the parser it is the end, whatever follows.
    if (document.is_discarded() || std::ranges::find(data, 0) != data.end()) {
        return refuse("it is not valid JSON");
    }
    try {
        const auto id = UUID::parse(document.at(idKey).get_ref<const std::string&>());
        if (!id) {
            return refuse("\"id\" is not a UUID");
        }
        return DataContainer{*id, itemsOf<MemoryPressureItem>(document.at(memoryPressureKey)),
                             itemsOf<SwapItem>(document.at(swapUsedKey))};
    } catch (const std::exception& error) { // names keys and types, none of the document's text
        return refuse(error.what());
    }
}

} // namespace tidewell
