#include "model/memory/DataContainerJson.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace tidewell {

namespace {

constexpr auto idKey = "id";
constexpr auto memoryPressureKey = "memoryPressureArray";
constexpr auto swapUsedKey = "swapUsedArray";
constexpr auto valueKey = "value";
constexpr auto timestampKey = "timestamp";

/// `position` counts bytes from 1.
std::string syntaxErrorAt(std::size_t position) {
    return "it is not valid JSON at byte " + std::to_string(position) + ".";
}

/// Takes the history up while the parser walks over the document: nothing is built for what is
/// ignored, and the first fault ends the walk. Every function gives false for a fault, which it
/// leaves in `error()`.
class Reader final : public nlohmann::json_sax<nlohmann::json> {
public:
    DataContainer takeResult() { return {*id_, std::move(*pressures_), std::move(*swaps_)}; }
    const std::string& error() const { return error_; }

    bool null() override { return otherValue(); }
    bool boolean(bool) override { return otherValue(); }
    bool binary(binary_t&) override { return otherValue(); }

    bool number_integer(number_integer_t number) override {
        if (expected_ == Expected::value) {
            value_ = number;
            return true;
        }
        return number_float(static_cast<double>(number), {});
    }

    bool number_unsigned(number_unsigned_t number) override {
        if (number <= number_unsigned_t{std::numeric_limits<number_integer_t>::max()}) {
            return number_integer(static_cast<number_integer_t>(number));
        }
        return number_float(static_cast<double>(number), {});
    }

    // Called for integers that fit no integer type, too.
    bool number_float(number_float_t number, const string_t&) override {
        if (expected_ == Expected::timestamp) {
            timestamp_ = number;
            return true;
        }
        return otherValue();
    }

    bool string(string_t& text) override {
        if (expected_ != Expected::id) {
            return otherValue();
        }
        id_ = UUID::parse(text);
        return id_ || fail("\"id\" is not a UUID.");
    }

    bool start_object(std::size_t) override {
        if (!enter()) {
            return false;
        }
        if (expected_ == Expected::item) {
            inItem_ = true;
            value_.reset();
            timestamp_.reset();
            return true;
        }
        return expected_ == Expected::container || ignoreContents();
    }

    bool key(string_t& name) override {
        if (ignored_ > 0) {
            return true;
        }
        expected_ = memberNamed(name);
        return !isPresent(expected_) || fail('"' + name + "\" is there twice.");
    }

    bool end_object() override {
        if (leaveIgnored()) {
            return true;
        }
        if (!inItem_) {
            return require(Expected::id, idKey) &&
                   require(Expected::pressures, memoryPressureKey) &&
                   require(Expected::swaps, swapUsedKey);
        }
        if (!require(Expected::value, valueKey) || !require(Expected::timestamp, timestampKey)) {
            return false;
        }
        if (list_ == Expected::pressures) {
            pressures_->push_back({*value_, *timestamp_});
        } else {
            swaps_->push_back({*value_, *timestamp_});
        }
        inItem_ = false;
        expected_ = Expected::item;
        return true;
    }

    bool start_array(std::size_t) override {
        if (!enter()) {
            return false;
        }
        if (expected_ == Expected::pressures) {
            pressures_.emplace();
        } else if (expected_ == Expected::swaps) {
            swaps_.emplace();
        } else {
            return ignoreContents();
        }
        list_ = std::exchange(expected_, Expected::item);
        return true;
    }

    bool end_array() override {
        leaveIgnored();
        return true;
    }

    bool parse_error(std::size_t position, const std::string&,
                     const nlohmann::detail::exception&) override {
        return fail(syntaxErrorAt(position));
    }

private:
    /// What the next value is: a member's from its key on, an element's throughout its list.
    enum class Expected { container, id, pressures, swaps, item, value, timestamp, anything };

    Expected memberNamed(const string_t& name) const {
        if (inItem_) {
            return name == valueKey       ? Expected::value
                   : name == timestampKey ? Expected::timestamp
                                          : Expected::anything;
        }
        return name == idKey               ? Expected::id
               : name == memoryPressureKey ? Expected::pressures
               : name == swapUsedKey       ? Expected::swaps
                                           : Expected::anything;
    }

    bool isPresent(Expected member) const {
        switch (member) {
        case Expected::id:
            return id_.has_value();
        case Expected::pressures:
            return pressures_.has_value();
        case Expected::swaps:
            return swaps_.has_value();
        case Expected::value:
            return value_.has_value();
        case Expected::timestamp:
            return timestamp_.has_value();
        default:
            return false; // of others there may be any number
        }
    }

    bool require(Expected member, const char* name) {
        return isPresent(member) || fail('"' + std::string(name) + "\" is missing.");
    }

    bool otherValue() {
        return expected_ == Expected::anything || fail("a value is of the wrong type.");
    }

    bool enter() { return ++depth_ <= maximumDocumentDepth || fail("it is nested too deeply."); }

    bool ignoreContents() {
        if (!otherValue()) {
            return false;
        }
        ++ignored_;
        return true;
    }

    /// Ends an object or array; true when it was one of those that are ignored.
    bool leaveIgnored() {
        --depth_;
        if (ignored_ == 0) {
            return false;
        }
        --ignored_;
        return true;
    }

    bool fail(std::string reason) {
        error_ = std::move(reason);
        return false;
    }

    std::optional<UUID> id_;
    std::optional<std::vector<MemoryPressureItem>> pressures_;
    std::optional<std::vector<SwapItem>> swaps_;
    std::string error_;

    Expected expected_ = Expected::container;
    Expected list_ = Expected::pressures; // the one that the items belong to
    bool inItem_ = false;
    std::optional<std::int64_t> value_;
    std::optional<double> timestamp_;
    std::size_t depth_ = 0;
    std::size_t ignored_ = 0; // how many open objects and arrays belong to an ignored member
};

template <typename Item>
std::optional<nlohmann::ordered_json> jsonOf(const std::vector<Item>& items) {
    auto result = nlohmann::ordered_json::array();
    for (const Item& item : items) {
        if (!std::isfinite(item.timestamp)) {
            return std::nullopt;
        }
        result.push_back({{valueKey, item.value}, {timestampKey, item.timestamp}});
    }
    return result;
}

} // namespace

std::optional<Data> encodeDataContainer(const DataContainer& container) {
    auto pressures = jsonOf(container.memoryPressureArray);
    auto swaps = jsonOf(container.swapUsedArray);
    if (!pressures || !swaps) {
        return std::nullopt;
    }
    const nlohmann::ordered_json document{{idKey, container.id.text()},
                                          {memoryPressureKey, std::move(*pressures)},
                                          {swapUsedKey, std::move(*swaps)}};
    const std::string text = document.dump();
    return Data(text.begin(), text.end());
}

std::variant<DataContainer, DecodingError> decodeDataContainer(const Data& document) {
    const auto refuse = [](const std::string& reason) {
        return DecodingError{"The saved history cannot be read: " + reason};
    };
    if (document.size() > maximumDocumentSize) {
        return refuse("it is too large.");
    }
    // A zero byte is JSON nowhere, but to the parser it is the end, whatever follows.
    if (const auto zero = std::ranges::find(document, 0); zero != document.end()) {
        return refuse(syntaxErrorAt(static_cast<std::size_t>(zero - document.begin()) + 1));
    }
    Reader reader;
    if (!nlohmann::json::sax_parse(document.begin(), document.end(), &reader)) {
        return refuse(reader.error());
    }
    return reader.takeResult();
}

} // namespace tidewell
