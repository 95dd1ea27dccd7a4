#include "model/memory/DataContainerJson.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
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

/// Takes the samples out of a document while it is parsed: in the parser's tree, a long history
/// would take twenty times its memory.
class SampleTaker {
public:
    using Event = json::parse_event_t;

    SampleTaker(DataContainer& history, std::size_t limit)
        : history_(history)
        , limit_(limit) {}

    /// What is wrong with the samples, if anything is.
    const std::string& fault() const { return fault_; }

    /// The parser's callback: whether `parsed` goes into the tree. It looks through all that an
    /// object has after each of its parts, so only what is still needed does.
    bool operator()(int depth, Event event, const json& parsed) {
        if (depth == maximumDocumentDepth &&
            (event == Event::object_start || event == Event::array_start)) {
            fault_ = "it is nested too deeply";
        }
        switch (depth) {
        case 0:
            return fault_.empty();
        case 1:
            return takeMember(event, parsed);
        case 2:
            return isOfList() && takeSample(event, parsed);
        case 3:
            return event == Event::value ||
                   (event == Event::key && (parsed == valueKey || parsed == timestampKey));
        default:
            return false;
        }
    }

private:
    bool isOfList() const { return member_ == memoryPressureKey || member_ == swapUsedKey; }

    bool takeMember(Event event, const json& parsed) {
        if (event == Event::key) {
            member_ = parsed.get_ref<const std::string&>();
            // Of two members of one name, the last one counts.
            if (member_ == memoryPressureKey) {
                history_.memoryPressureArray.clear();
            } else if (member_ == swapUsedKey) {
                history_.swapUsedArray.clear();
            }
            return isOfList() || member_ == idKey;
        }
        return event == Event::value ? member_ == idKey
                                     : isOfList() && event != Event::object_start;
    }

    bool takeSample(Event event, const json& parsed) {
        if (event == Event::value || event == Event::array_start) {
            fault_ = wrongType(member_);
        } else if (event == Event::object_end && fault_.empty()) {
            fault_ = member_ == memoryPressureKey
                         ? takeItem(parsed, history_.memoryPressureArray, limit_)
                         : takeItem(parsed, history_.swapUsedArray, limit_);
        }
        return event == Event::object_start;
    }

    DataContainer& history_;
    std::size_t limit_;
    std::string member_; // of the document, the one that is parsed
    std::string fault_;
};

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
    SampleTaker taker(history, limit);
    // A NUL byte is JSON nowhere, but to the parser it is the end, whatever follows.
    const bool hasNul = std::ranges::find(data, 0) != data.end();
    const json document =
        hasNul ? json(json::value_t::discarded) : json::parse(data, std::ref(taker), false);
    const std::string fault = taker.fault().empty() ? faultOf(document) : taker.fault();
    if (!fault.empty()) {
        return failure("The saved history cannot be read: " + fault);
    }
    history.id = *UUID::parse(document[idKey].get_ref<const std::string&>());
    dropOldest(history.memoryPressureArray, limit);
    dropOldest(history.swapUsedArray, limit);
    return history;
}

} // namespace tidewell
