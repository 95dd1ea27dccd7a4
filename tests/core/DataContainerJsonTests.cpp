#include "core/DataContainerJson.h"
#include "core/ShowItem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <unordered_set>

namespace tidewell {
namespace {

using testing::HasSubstr;

const std::string id = "0188AD5E-0000-4000-8000-00000000ABCD";

std::string documentOf(const std::string& pressures, const std::string& swaps) {
    return R"({"id":")" + id + R"(","memoryPressureArray":[)" + pressures +
           R"(],"swapUsedArray":[)" + swaps + "]}";
}

std::variant<DataContainer, DecodingError> decode(const std::string& text) {
    return decodeDataContainer(Data(text.begin(), text.end()));
}

/// What is wrong with `text`; empty when it was read.
std::string errorOf(const std::string& text) {
    const auto decoded = decode(text);
    const auto* error = std::get_if<DecodingError>(&decoded);
    return error != nullptr ? error->description : "";
}

TEST(DataContainerJson, IsCompactAndNamesItsMembers) {
    const auto data = encodeDataContainer({.id = UUID::parse(id).value(),
                                           .memoryPressureArray = {{-1, -1.0}, {40, 1700000000.25}},
                                           .swapUsedArray = {{9223372036854775807, 0.5}}});
    EXPECT_EQ(std::string(data->begin(), data->end()),
              documentOf(R"({"value":-1,"timestamp":-1.0},{"value":40,"timestamp":1700000000.25})",
                         R"({"value":9223372036854775807,"timestamp":0.5})"));
}

TEST(DataContainerJson, ReadsItsNumbersBackBitForBit) {
    DataContainer container;
    for (const double timestamp :
         {0.0, -0.0, 0.1, 1.0 / 3, 1753000000.1234567, 1e22, 5e-324, 9007199254740993.0,
          std::numeric_limits<double>::max(), std::numeric_limits<double>::lowest()}) {
        container.memoryPressureArray.push_back(
            {std::numeric_limits<std::int64_t>::min(), timestamp});
        container.swapUsedArray.push_back({std::numeric_limits<std::int64_t>::max(), timestamp});
    }
    const auto decoded = decodeDataContainer(encodeDataContainer(container).value());
    const auto& read = std::get<DataContainer>(decoded);
    EXPECT_EQ(read.id, container.id);
    EXPECT_EQ(read.memoryPressureArray, container.memoryPressureArray);
    ASSERT_EQ(read.swapUsedArray, container.swapUsedArray);
    for (std::size_t i = 0; i < read.swapUsedArray.size(); ++i) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read.swapUsedArray[i].timestamp),
                  std::bit_cast<std::uint64_t>(container.swapUsedArray[i].timestamp));
    }
}

TEST(DataContainerJson, RefusesToWriteWhatIsNotFinite) {
    for (const double timestamp :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        DataContainer container;
        container.memoryPressureArray = {{1, timestamp}};
        EXPECT_EQ(encodeDataContainer(container), std::nullopt);
        container.memoryPressureArray.clear();
        container.swapUsedArray = {{1, timestamp}};
        EXPECT_EQ(encodeDataContainer(container), std::nullopt);
    }
}

TEST(DataContainerJson, IgnoresWhatItDoesNotKnowAndTheOrderOfMembers) {
    const auto decoded = decode(R"( {"new":[{"id":1,"value":[{}]},[[],"]"],1e3],"swapUsedArray":[],
        "memoryPressureArray":[{"timestamp":12,"unit":{"value":"x"},"value":7,"more":null}],
        "id":"0188ad5e-0000-4000-8000-00000000abcd","value":-1,"new":true} )");
    const auto& read = std::get<DataContainer>(decoded);
    EXPECT_EQ(read.id.text(), id);
    EXPECT_THAT(read.memoryPressureArray, testing::ElementsAre(MemoryPressureItem{7, 12.0}));

    const std::string open(maximumDocumentDepth - 1, '[');
    const std::string close(maximumDocumentDepth - 1, ']');
    const auto members = documentOf("", "").substr(1);
    EXPECT_EQ(errorOf(R"({"x":)" + open + close + "," + members), "");
    EXPECT_THAT(errorOf(R"({"x":[)" + open + close + "]," + members), HasSubstr("deep"));
}

TEST(DataContainerJson, IsRejectedAsAWholeForAnyFault) {
    const std::string good = R"({"value":1,"timestamp":1.5})";
    ASSERT_EQ(errorOf(documentOf(good, good)), "");
    const auto empty = documentOf("", "");
    const auto withId = [](const std::string& value) {
        return R"({"id":)" + value + R"(,"memoryPressureArray":[],"swapUsedArray":[]})";
    };
    const auto withItem = [](const std::string& members) {
        return documentOf("{" + members + "}", "");
    };
    const std::vector<std::pair<std::string, const char*>> faults{
        {"", "JSON"},
        {"nonsense", "JSON"},
        {"null", "type"},
        {"[]", "type"},
        {"{}", "\"id\" is missing"},
        {empty + "x", "JSON"},
        {empty + "{}", "JSON"},
        {empty + std::string(1, '\0'), "JSON"},
        {"/**/" + empty, "JSON"},
        {documentOf(good + ",", ""), "JSON"},
        {R"({"memoryPressureArray":[],"swapUsedArray":[]})", "\"id\" is missing"},
        {R"({"id":")" + id + R"(","memoryPressureArray":[]})", "\"swapUsedArray\" is missing"},
        {R"({"id":")" + id + R"(","swapUsedArray":[]})", "\"memoryPressureArray\" is missing"},
        {withId("7"), "type"},
        {withId("null"), "type"},
        {withId(R"("0188AD5E")"), "UUID"},
        {withId(R"({"id":")" + id + R"("})"), "type"},
        {withId("\"" + id + R"(","id":")" + id + "\""), "twice"},
        {R"({"swapUsedArray":[],)" + empty.substr(1), "twice"},
        {withItem(R"("value":1,"timestamp":1,"value":1)"), "twice"},
        {withItem(R"("timestamp":1)"), "\"value\" is missing"},
        {documentOf("", good + R"(,{"value":1})"), "\"timestamp\" is missing"},
        {documentOf(good + ",{}", good), "missing"},
        {documentOf("1", ""), "type"},
        {documentOf("[" + good + "]", ""), "type"},
        {documentOf("", "null"), "type"},
        {withItem(R"("value":1.0,"timestamp":1)"), "type"},
        {withItem(R"("value":1e2,"timestamp":1)"), "type"},
        {withItem(R"("value":"1","timestamp":1)"), "type"},
        {withItem(R"("value":true,"timestamp":1)"), "type"},
        {withItem(R"("value":[1],"timestamp":1)"), "type"},
        {withItem(R"("value":9223372036854775808,"timestamp":1)"), "type"},
        {withItem(R"("value":-9223372036854775809,"timestamp":1)"), "type"},
        {withItem(R"("value":18446744073709551616,"timestamp":1)"), "type"},
        {withItem(R"("value":1,"timestamp":null)"), "type"},
        {withItem(R"("value":1,"timestamp":"1.5")"), "type"},
        {withItem(R"("value":1,"timestamp":1e999)"), "JSON"},
        {withItem(R"("value":1,"timestamp":NaN)"), "JSON"},
        {withItem(R"("value":01,"timestamp":1)"), "JSON"},
        {withItem("\"x\":\"\xff\",\"value\":1,\"timestamp\":1"), "JSON"},
        {withItem(R"("x":"\ud800","value":1,"timestamp":1)"), "JSON"},
        {std::string(100000, '['), "type"},
        {R"({"x":)" + std::string(100000, '['), "deep"},
        {documentOf("", std::string(maximumDocumentSize, ' ')), "large"},
    };
    for (const auto& [document, reason] : faults) {
        const auto error = errorOf(document);
        EXPECT_THAT(error, HasSubstr(reason)) << document.substr(0, 120);
        EXPECT_LT(error.size(), 100U) << "one short line";
    }
}

TEST(DataContainerJson, SurvivesEveryCutAndEveryDamagedByte) {
    const auto whole =
        documentOf(R"({"value":1,"timestamp":1.5})", R"({"value":2,"timestamp":2.5})");
    for (std::size_t i = 0; i < whole.size(); ++i) {
        EXPECT_NE(errorOf(whole.substr(0, i)), "") << i;
        for (const char damage : {'\0', '"', '{', ']', '9', '\xc3'}) {
            auto damaged = whole;
            damaged[i] = damage;
            errorOf(damaged);
        }
    }
}

TEST(Records, AreEqualAndHashByTheirFields) {
    std::unordered_set<MemoryPressureItem> pressures{{1, 2.0}, {1, 2.0}, {2, 1.0}, {0, 0.0}};
    pressures.insert({0, -0.0}); // equal as numbers
    EXPECT_EQ(pressures.size(), 3U);
    const std::hash<ShowItem> hash;
    const ShowItem item{.label = "Free Memory", .value = 5};
    ShowItem other = item;
    EXPECT_EQ(hash(item), hash(other));
    other.color = colours::systemRed;
    EXPECT_NE(item, other);
    EXPECT_NE(hash(item), hash(other));
    EXPECT_NE(item, (ShowItem{.label = "Free Memory", .value = 5})) << "another identity";
}

} // namespace
} // namespace tidewell
