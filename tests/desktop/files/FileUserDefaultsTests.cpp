#include "desktop/files/FileUserDefaults.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>

#include <cmath>
#include <csignal>
#include <limits>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

class FileUserDefaultsTest : public testing::Test {
protected:
    /// What a new run of the program would read.
    std::optional<DefaultsValue> stored(std::string_view key) {
        return FileUserDefaults(file_, log_).value(key);
    }

    RecordingLog log_;
    TemporaryFolder folder_;
    fs::path file_ = folder_.path() / "a" / "tidewell" / "defaults.json";
};

TEST_F(FileUserDefaultsTest, KeepsEveryTypeOfValueToTheBitFromOneRunToTheNext) {
    const std::map<std::string, DefaultsValue> values{
        {"yes", true},
        {"smallest", std::numeric_limits<double>::denorm_min()},
        {"infinite", -std::numeric_limits<double>::infinity()},
        {"text", std::string("Grüße,\n\"{\\\0}", 14)},
        {"bytes", Data{0x00, 0x7f, 0x80, 0xff}}};
    FileUserDefaults defaults(file_, log_);
    defaults.setLater("place", true);
    EXPECT_EQ(defaults.value("place"), DefaultsValue(true));
    EXPECT_FALSE(fs::exists(file_));
    for (const auto& [key, value] : values) {
        defaults.set(key, value);
    }
    EXPECT_EQ(stored("place"), DefaultsValue(true));
    defaults.set("no number", std::nan(""));
    defaults.set("no UTF-8", std::string("a\xff"));
    for (const auto& [key, value] : values) {
        EXPECT_EQ(stored(key), value) << key;
    }
    EXPECT_TRUE(std::isnan(std::get<double>(stored("no number").value())));
    EXPECT_EQ(stored("no UTF-8"), DefaultsValue(std::string("a\ufffd")));
}

TEST_F(FileUserDefaultsTest, LeavesEntriesOfOtherVersionsAsTheyAre) {
    fs::create_directories(file_.parent_path());
    writeText(file_, R"({"list": [1, {"x": null}], "none": null, "new": {"date": "2030-01-01"},
        "typed": {"data": "QUI=", "type": "image"}, "bad": {"data": "not base 64!"},
        "identifier": 9007199254740993, "_pollingInterval": 3})");
    FileUserDefaults defaults(file_, log_);
    for (const auto* key : {"list", "none", "new", "typed", "bad"}) {
        EXPECT_EQ(defaults.value(key), std::nullopt) << key;
    }
    EXPECT_EQ(defaults.value("_pollingInterval"), DefaultsValue(3.0));
    auto expected = nlohmann::json::parse(readText(file_));
    defaults.set("_pollingInterval", 4.0);
    expected["_pollingInterval"] = 4.0;
    EXPECT_EQ(nlohmann::json::parse(readText(file_)), expected);
}

TEST_F(FileUserDefaultsTest, SetsAsideWhatItCannotReadBesideWhatIsThereAlready) {
    const auto deep = R"({"kept": )" + std::string(100, '[') + std::string(100, ']') + "}";
    std::string many = R"({"kept": [0)";
    for (int count = 0; count < 100'000; ++count) {
        many += ",0";
    }
    const std::vector<std::string> contents = {R"({"kept": tr)",
                                               R"(["kept"])",
                                               "{\"kept\": \"\xff\"}",
                                               std::string("{}\0{}", 5),
                                               deep,
                                               many + "]}",
                                               "too large",
                                               "no file"};
    for (const auto& content : contents) {
        FileUserDefaults(file_, log_).set("kept", true);
        writeText(file_, content);
        if (content == "too large") {
            fs::resize_file(file_, (std::uintmax_t{1} << 30U) + 1);
        }
        if (content == "no file") { // nor one that anybody would ever write to
            fs::remove(file_);
            ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
        }
        FileUserDefaults defaults(file_, log_);
        EXPECT_EQ(defaults.value("kept"), std::nullopt);
        EXPECT_THAT(log_.takeLines(),
                    ElementsAre(HasSubstr("; it was set aside as defaults.json.unreadable-")));
        defaults.set("kept", 2.0);
        EXPECT_EQ(stored("kept"), DefaultsValue(2.0));
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(file_.parent_path()), {}), contents.size() + 1);
}

TEST_F(FileUserDefaultsTest, RunsFromMemoryWhenTheFileCanNeitherBeReadNorSetAside) {
    const auto file = folder_.path() / std::string(250, 'n'); // a name too long to be longer
    writeText(file, "broken");
    FileUserDefaults defaults(file, log_);
    EXPECT_THAT(log_.takeLines(), ElementsAre(HasSubstr("changes last for this run only")));
    defaults.set("key", 2.0);
    EXPECT_EQ(defaults.value("key"), DefaultsValue(2.0));
    EXPECT_EQ(readText(file), "broken");
}

TEST_F(FileUserDefaultsTest, ReadsAgainWhatCouldNotBeReadForAWhileBeforeItReplacesIt) {
    FileUserDefaults(file_, log_).set("kept", true);
    const fs::path folder = file_.parent_path();
    fs::rename(folder, folder_.path() / "elsewhere");
    writeText(folder, ""); // ENOTDIR
    FileUserDefaults defaults(file_, log_);
    defaults.set("number", 2.0);
    fs::remove(folder);
    fs::rename(folder_.path() / "elsewhere", folder);
    EXPECT_THAT(log_.takeLines(), ElementsAre(HasSubstr("it is read again")));
    EXPECT_EQ(stored("kept"), DefaultsValue(true));
    defaults.set("text", "a");
    EXPECT_EQ(stored("kept"), DefaultsValue(true));
    EXPECT_EQ(stored("number"), DefaultsValue(2.0));
}

TEST_F(FileUserDefaultsTest, KeepsWhatAnotherRunWroteInTheMeantime) {
    FileUserDefaults one(file_, log_);
    one.set("own", 1.0);
    one.set("shared", 1.0);
    FileUserDefaults(file_, log_).set("other", 2.0);
    FileUserDefaults(file_, log_).set("shared", 2.0);
    one.set("own", 3.0);
    for (const auto& [key, value] : {std::pair("own", 3.0), {"other", 2.0}, {"shared", 2.0}}) {
        EXPECT_EQ(stored(key), DefaultsValue(value)) << key;
    }
}

TEST_F(FileUserDefaultsTest, LosesNothingOnAFullDiskAndTriesAgainWithTheNextWrite) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const rlimit tiny{100, unlimited.rlim_max};
    FileUserDefaults defaults(file_, log_);
    defaults.set("kept", true);
    const auto before = readText(file_);

    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
    defaults.set("blob", Data(10'000, 7));
    ::setrlimit(RLIMIT_FSIZE, &unlimited);
    EXPECT_EQ(readText(file_), before);
    EXPECT_FALSE(fs::exists(file_.string() + ".new"));
    EXPECT_THAT(log_.takeLines(), ElementsAre(HasSubstr("error general save(): Could not write ")));
    defaults.set("kept", true); // no change of its own
    EXPECT_EQ(stored("blob"), DefaultsValue(Data(10'000, 7)));
}

TEST_F(FileUserDefaultsTest, FollowsALinkToTheStoreAndNoneLeftInItsPlaceByACrash) {
    const auto link = folder_.path() / "link";
    fs::create_symlink("a/tidewell/defaults.json", link); // leads to nothing yet
    FileUserDefaults(link, log_).set("key", 2.0);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(stored("key"), DefaultsValue(2.0));
    const auto outside = folder_.path() / "outside";
    writeText(outside, "untouched");
    fs::create_symlink(outside, file_.string() + ".new");
    FileUserDefaults(link, log_).set("key", 3.0);
    EXPECT_EQ(readText(outside), "untouched");
    EXPECT_EQ(stored("key"), DefaultsValue(3.0));
}

} // namespace
} // namespace tidewell
