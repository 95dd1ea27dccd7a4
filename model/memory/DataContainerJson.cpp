#include "model/memory/DataContainerJson.h"

#include <algorithm>
#include <array>
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

/// Takes the history out of the document's events: as a tree, a long one would take twenty times
/// its memory. Every handler gives false once the document is refused.
class HistoryReader final : public nlohmann::json_sax<json> {
public:
    explicit HistoryReader(std::size_t limit)
        : limit_(limit) {}

    bool null() override { return isIgnored() || refuseType(); }
    bool boolean(bool /*value*/) override { return isIgnored() || refuseType(); }
    bool binary(json::binary_t& /*value*/) override { return isIgnored() || refuseType(); }
    bool number_integer(std::int64_t value) override {
        return takeNumber(value, static_cast<double>(value));
    }
    bool number_unsigned(std::uint64_t value) override {
        return takeNumber(std::in_range<std::int64_t>(value)
                              ? std::optional(static_cast<std::int64_t>(value))
                              : std::nullopt,
                          static_cast<double>(value));
    }
    bool number_float(double value, const std::string& /*text*/) override {
        return takeNumber(std::nullopt, value);
    }

    bool string(std::string& text) override {
        if (depth_ != 1 || member_ != idKey) {
            return isIgnored() || refuseType();
        }
        id_ = UUID::parse(text);
        return id_ || refuse("\"id\" is not a UUID");
    }

    bool key(std::string& name) override {
        if (depth_ == 1) {
            const auto* const known = std::ranges::find(members, name);
            member_ = known == members.end() ? "" : *known;
        } else if (depth_ == 3 && isInList()) {
            field_ = name == valueKey ? valueKey : name == timestampKey ? timestampKey : "";
        }
        return true;
    }

    bool start_object(std::size_t /*size*/) override {
        if (depth_ == 2 && isInList()) {
            value_.reset();
            timestamp_.reset();
        }
        return open(depth_ == 0 || depth_ == 2);
    }
    bool start_array(std::size_t /*size*/) override {
        if (depth_ == 1 && member_ == memoryPressureKey) {
            pressures_.emplace();
        } else if (depth_ == 1 && member_ == swapUsedKey) {
            swaps_.emplace();
        }
        return open(depth_ == 1 && isInList());
    }
    bool end_object() override {
        --depth_;
        return depth_ != 2 || !isInList() ||
               (member_ == memoryPressureKey ? takeItem(*pressures_) : takeItem(*swaps_));
    }
    bool end_array() override {
        --depth_;
        return true;
    }
    bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                     const json::exception& /*error*/) override {
        return refuse("it is not valid JSON");
    }

    /// Always false.
    bool refuse(std::string_view reason) {
        refusal_ = "The saved history cannot be read: " + std::string(reason);
        return false;
    }

    /// The history, after the last event.
    Result<DataContainer> take() {
        if (refusal_.empty() && !(id_ && pressures_ && swaps_)) {
            refuseMissing(!id_ ? idKey : !pressures_ ? memoryPressureKey : swapUsedKey);
        }
        if (!refusal_.empty()) {
            return failure(refusal_);
        }
        dropOldest(*pressures_);
        dropOldest(*swaps_);
        return DataContainer{*id_, std::move(*pressures_), std::move(*swaps_)};
    }

private:
    static constexpr std::array<std::string_view, 3> members{idKey, memoryPressureKey, swapUsedKey};

    bool isInList() const { return member_ == memoryPressureKey || member_ == swapUsedKey; }

    /// Whether what comes next belongs to a member of another name.
    bool isIgnored() const {
        return depth_ > 0 && (member_.empty() || depth_ > 3 || (depth_ == 3 && field_.empty()));
    }

    bool open(bool isExpected) {
        if (depth_ == maximumDocumentDepth) {
            return refuse("it is nested too deeply");
        }
        if (!isIgnored() && !isExpected) {
            return refuseType();
        }
        ++depth_;
        return true;
    }

    bool takeNumber(std::optional<std::int64_t> integer, double number) {
        if (isIgnored()) {
            return true;
        }
        if (depth_ != 3 || (field_ == valueKey && !integer)) {
            return refuseType();
        }
        if (field_ == valueKey) {
            value_ = integer;
        } else {
            timestamp_ = number;
        }
        return true;
    }

    template <typename Item>
    bool takeItem(std::vector<Item>& items) {
        if (!value_ || !timestamp_) {
            return refuseMissing(value_ ? timestampKey : valueKey);
        }
        if (items.size() >= 2 * limit_) { // seldom, since it moves all that stay
            dropOldest(items);
        }
        items.push_back({*value_, *timestamp_});
        return true;
    }

    template <typename Item>
    void dropOldest(std::vector<Item>& items) const {
        const auto excess = items.size() - std::min(items.size(), limit_);
        items.erase(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(excess));
    }

    bool refuseType() {
        const std::string_view name = depth_ == 0 ? "the document" : depth_ == 3 ? field_ : member_;
        return refuse("wrong type in '" + std::string(name) + "'");
    }
    bool refuseMissing(std::string_view name) {
        return refuse("'" + std::string(name) + "' not found");
    }

    std::size_t limit_;       // of samples of each kind
    int depth_ = 0;           // of the objects and arrays that are open
    std::string_view member_; // of the document, the last one; empty for one of another name
    std::string_view field_;  // of the item, likewise
    std::optional<UUID> id_;
    std::optional<std::vector<MemoryPressureItem>> pressures_;
    std::optional<std::vector<SwapItem>> swaps_;
    std::optional<std::int64_t> value_; // of the item, as the next
    std::optional<double> timestamp_;
    std::string refusal_;
};

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
    HistoryReader reader(limit);
    // A NUL byte is JSON nowhere, but to the parser it is the end, whatever follows.
    if (std::ranges::find(data, 0) != data.end()) {
        reader.refuse("it is not valid JSON");
    } else {
        json::sax_parse(data.begin(), data.end(), &reader);
    }
    return reader.take();
}

} // namespace tidewell
