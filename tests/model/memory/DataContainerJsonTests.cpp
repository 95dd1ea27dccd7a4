#include "model/memory/DataContainerJson.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <span>

namespace tidewell {
namespace {

const std::string id = "0188AD5E-0000-4000-8000-00000000ABCD";

std::string documentOf(const std::string& pressures, const std::string& swaps) {
    return R"({"id":")" + id + R"(","memoryPressureArray":[)" + pressures +
           R"(],"swapUsedArray":[)" + swaps + "]}";
}

/// What is wrong with `text`; empty when it was read.
std::string errorOf(const std::string& text) {
    const auto decoded = decodeDataContainer(Data(text.begin(), text.end()));
    return decoded ? "" : decoded.error().description();
}

TEST(DataContainerJson, IsCompactAndNamesItsMembers) {
    const DataContainer container{UUID::parse(id).value(), {{-1, -1.0}, {40, 1.25}}, {{7, 0.5}}};
    const auto data = encodeDataContainer(container).value();
    EXPECT_EQ(std::string(data.begin(), data.end()),
              documentOf(R"({"timestamp":-1.0,"value":-1},{"timestamp":1.25,"value":40})",
                         R"({"timestamp":0.5,"value":7})"));
}

TEST(DataContainerJson, ReadsItsNumbersBackBitForBit) {
    for (const double timestamp :
         {-0.0, 0.1, -1753000000.1234567, 1e22, 5e-324, 9007199254740993.0}) {
        DataContainer container;
        container.memoryPressureArray = {{INT64_MIN, timestamp}};
        container.swapUsedArray = {{INT64_MAX, timestamp}};
        const auto read = decodeDataContainer(encodeDataContainer(container).value()).value();
        EXPECT_EQ(read.memoryPressureArray, container.memoryPressureArray);
        ASSERT_EQ(read.swapUsedArray, container.swapUsedArray);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read.swapUsedArray[0].timestamp),
                  std::bit_cast<std::uint64_t>(timestamp));
    }
}

TEST(DataContainerJson, IgnoresWhatItDoesNotKnowAndTheOrderOfMembersAndAllButTheLastOfAName) {
    const std::string text = R"( {"new":[{"id":1,"value":[{}]},[[],"]"],1e3],"swapUsedArray":[],
        "memoryPressureArray":[{"timestamp":11,"value":6}],
        "memoryPressureArray":[{"timestamp":12,"unit":{"value":"x"},"value":7,"more":null}],
        "id":"0188ad5e-0000-4000-8000-00000000abcd","value":-1,"new":true} )";
    const auto read = decodeDataContainer(Data(text.begin(), text.end())).value();
    EXPECT_EQ(read.id.text(), id);
    EXPECT_THAT(read.memoryPressureArray, testing::ElementsAre(MemoryPressureItem{7, 12.0}));
}

TEST(DataContainerJson, IsReadAtAnyLengthUpToItsNewestSamples) {
    DataContainer container;
    for (std::int64_t i = 0; i < 30000; ++i) {
        container.memoryPressureArray.push_back({i % 101, 1753000000.1234567 + double(i)});
    }
    container.swapUsedArray = {{1, 0.5}, {2, 0.5}, {3, 0.5}};
    const auto data = encodeDataContainer(container).value();
    EXPECT_EQ(decodeDataContainer(data)->memoryPressureArray, container.memoryPressureArray);
    for (const std::size_t limit : {1U, 2U, 3U, 20000U}) {
        const auto read = decodeDataContainer(data, limit).value();
        EXPECT_TRUE(std::ranges::equal(read.memoryPressureArray,
                                       std::span(container.memoryPressureArray).last(limit)));
        EXPECT_EQ(read.swapUsedArray.front().value, limit < 3 ? 4 - std::int64_t(limit) : 1);
    }
}

TEST(DataContainerJson, IsRejectedAsAWholeForAnyFault) {
    const std::string good = R"({"value":1,"timestamp":1.5})";
    ASSERT_EQ(errorOf(documentOf(good, good)), "");
    const auto empty = documentOf("", "");
    const auto members = [](const std::string& some) { return documentOf("{" + some + "}", ""); };
    const auto withId = [](const std::string& value) {
        return R"({"id":)" + value + R"(,"memoryPressureArray":[],"swapUsedArray":[]})";
    };
    const auto withDepth = [&](std::size_t depth) {
        return withId("\"" + id + R"(","x":)" + std::string(depth - 1, '[') +
                      std::string(depth - 1, ']'));
    };
    ASSERT_EQ(errorOf(withDepth(512)), "");
    const std::vector<std::pair<const char*, std::vector<std::string>>> faults{
        {"JSON",
         {"", "[[", empty + "{}", empty + std::string(1, '\0'), "/**/" + empty,
          documentOf(good + ",", ""), members(R"("value":1,"timestamp":1e999)"),
          members(R"("value":1,"timestamp":NaN)"),
          members("\"x\":\"\xff\",\"value\":1,\"timestamp\":1"),
          members(R"("x":"\ud800","value":1,"timestamp":1)")}},
        {"'id' not found", {R"({"memoryPressureArray":[],"swapUsedArray":[]})"}},
        {"Array' not found", {R"({"id":")" + id + R"(","memoryPressureArray":[]})"}},
        {"'value' not found", {documentOf(good + ",{}", good)}},
        {"'timestamp' not found", {documentOf("", good + R"(,{"value":1})")}},
        {"UUID", {withId(R"("0188AD5E")"), withId("\"" + id + "0\"")}},
        {"type",
         {"null", "[]", withId("7"), withId("null"), documentOf("1", ""),
          documentOf("[" + good + "]", ""), documentOf("", "null"),
          members(R"("value":1.0,"timestamp":1)"), members(R"("value":"1","timestamp":1)"),
          members(R"("value":9223372036854775808,"timestamp":1)"),
          members(R"("value":1,"timestamp":true)"), members(R"("value":1,"timestamp":null)")}},
        {"deep", {withDepth(513), withDepth(100000)}}};
    for (const auto& [reason, documents] : faults) {
        for (const auto& document : documents) {
            const auto error = errorOf(document);
            EXPECT_THAT(error, testing::HasSubstr(reason)) << document.substr(0, 120);
            EXPECT_LT(error.size(), 150U) << "one short line";
        }
    }
}

} // namespace
} // namespace tidewell
