#include "platform/linux/FileUserDefaults.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/ScopedEnvironment.h"
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

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class FileUserDefaultsTest : public testing::Test {
protected:
    /// What a new run of the program would read.
    std::optional<DefaultsValue> stored(std::string_view key) const {
        RecordingLog other;
        return FileUserDefaults(file_, other).value(key);
    }

    std::vector<std::filesystem::path> filesSetAside() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(file_.parent_path())) {
            if (entry.path().filename().string().starts_with("defaults.json.unreadable-")) {
                found.push_back(entry.path());
            }
        }
        return found;
    }

    ino_t inode() const {
        struct stat status{};
        return ::stat(file_.c_str(), &status) == 0 ? status.st_ino : 0;
    }

    RecordingLog log_;
    TemporaryFolder folder_;
    std::filesystem::path file_ = folder_.path() / "a" / "tidewell" / "defaults.json";
};

/// With a store that a run of the program has left.
class ExistingFileUserDefaultsTest : public FileUserDefaultsTest {
protected:
    ExistingFileUserDefaultsTest() { FileUserDefaults(file_, log_).set("kept", true); }

    /// Starts with `content` in place of the store, and expects it to be set aside.
    void expectSetAside(const std::string& content) {
        writeText(file_, content);
        FileUserDefaults defaults(file_, log_);
        EXPECT_EQ(defaults.value("kept"), std::nullopt);
        EXPECT_THAT(
            log_.takeLines(),
            ElementsAre(AllOf(StartsWith("error general setAside(problem:): Could not read " +
                                         file_.string() + ": "),
                              HasSubstr("; it was set aside as defaults.json.unread"))));
        EXPECT_FALSE(std::filesystem::exists(file_));
        EXPECT_EQ(readText(filesSetAside().at(0)), content);
        defaults.set("kept", true);
        EXPECT_EQ(stored("kept"), DefaultsValue(true));
        std::filesystem::remove(filesSetAside().at(0));
    }
};

TEST_F(FileUserDefaultsTest, KeepsEveryTypeOfValueToTheBitFromOneRunToTheNext) {
    Data everyByte(1280);
    for (std::size_t i = 0; i < everyByte.size(); ++i) {
        everyByte[i] = static_cast<std::uint8_t>(i);
    }
    const double infinity = std::numeric_limits<double>::infinity();
    const std::vector<std::pair<std::string, DefaultsValue>> values{
        {"yes", true},
        {"no", false},
        {"one", 1.0},
        {"third", 1.0 / 3},
        {"moment", 1719835407.123456},
        {"smallest", std::numeric_limits<double>::denorm_min()},
        {"largest", -std::numeric_limits<double>::max()},
        {"infinite", infinity},
        {"negative", -infinity},
        {"text", std::string("Grüße,\n\"{\\\0}", 14)},
        {"", std::string()},
        {"bytes", everyByte},
        {"no bytes", Data{}}};
    {
        FileUserDefaults defaults(file_, log_);
        for (const auto& [key, value] : values) {
            defaults.set(key, value);
            EXPECT_EQ(defaults.value(key), value) << key;
        }
        defaults.set("no number", std::nan(""));
        defaults.set("no UTF-8", std::string("a\xff"));
    }
    const FileUserDefaults defaults(file_, log_);
    for (const auto& [key, value] : values) {
        EXPECT_EQ(defaults.value(key), value) << key;
    }
    EXPECT_TRUE(std::isnan(defaults.doubleForKey("no number")));
    EXPECT_EQ(defaults.value("no UTF-8"), DefaultsValue(std::string("a\ufffd")));
    EXPECT_EQ(defaults.value("never written"), std::nullopt);
    EXPECT_THAT(log_.takeLines(), ElementsAre());

    namespace fs = std::filesystem;
    EXPECT_EQ(fs::status(file_).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(fs::status(file_.parent_path()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(fs::status(file_.parent_path().parent_path()).permissions(), fs::perms::owner_all);
}

TEST_F(ExistingFileUserDefaultsTest, WritesOnlyChanges) {
    const auto before = inode();
    FileUserDefaults defaults(file_, log_);
    defaults.set("kept", true);
    EXPECT_EQ(inode(), before);
    defaults.set("kept", 1.0);
    EXPECT_NE(inode(), before);
    EXPECT_EQ(stored("kept"), DefaultsValue(1.0));
}

TEST_F(ExistingFileUserDefaultsTest, LeavesEntriesOfOtherVersionsAsTheyAre) {
    writeText(file_, R"({"list": [1, {"x": null}], "none": null, "new": {"date": "2030-01-01"},
        "typed": {"data": "QUI=", "type": "image"}, "bad": {"data": "not base 64!"},
        "identifier": 9007199254740993, "_pollingInterval": 3})");
    FileUserDefaults defaults(file_, log_);
    for (const auto* key : {"list", "none", "new", "typed", "bad"}) {
        EXPECT_EQ(defaults.value(key), std::nullopt) << key;
    }
    EXPECT_EQ(defaults.doubleForKey("_pollingInterval"), 3);
    auto expected = nlohmann::json::parse(readText(file_));
    defaults.set("_pollingInterval", 4.0);
    expected["_pollingInterval"] = 4.0;
    EXPECT_EQ(nlohmann::json::parse(readText(file_)), expected);
    EXPECT_THAT(log_.takeLines(), ElementsAre());
}

TEST_F(ExistingFileUserDefaultsTest, SetsAsideWhatItCannotRead) {
    for (const auto& content :
         {std::string(), std::string(R"({"kept": tr)"), std::string(R"(["kept"])"),
          std::string("{\"kept\": \"\xff\"}"), std::string("{}}"), std::string("{}\0{}", 5)}) {
        SCOPED_TRACE(content);
        expectSetAside(content);
    }
    expectSetAside(R"({"kept": )" + std::string(100'000, '[') + std::string(100'000, ']') + "}");
    expectSetAside("{}" + std::string(17U << 20U, ' '));
}

TEST_F(ExistingFileUserDefaultsTest, KeepsWhatWasSetAsideEarlier) {
    for (int i = 0; i < 3; ++i) {
        writeText(file_, "broken " + std::to_string(i));
        const FileUserDefaults defaults(file_, log_);
    }
    std::vector<std::string> contents;
    for (const auto& file : filesSetAside()) {
        contents.push_back(readText(file));
    }
    EXPECT_THAT(contents, testing::UnorderedElementsAre("broken 0", "broken 1", "broken 2"));
}

TEST_F(ExistingFileUserDefaultsTest, SetsAsideWhatIsNoFileWithoutWaitingForIt) {
    std::filesystem::remove(file_);
    ASSERT_EQ(::mkfifo(file_.c_str(), 0600), 0);
    FileUserDefaults(file_, log_).set("kept", 2.0);
    EXPECT_EQ(stored("kept"), DefaultsValue(2.0));

    std::filesystem::remove(file_);
    std::filesystem::create_directory(file_);
    FileUserDefaults(file_, log_).set("kept", 3.0);
    EXPECT_EQ(stored("kept"), DefaultsValue(3.0));

    std::filesystem::remove(file_);
    std::filesystem::create_symlink("defaults.json", file_);
    FileUserDefaults(file_, log_).set("kept", 4.0);
    EXPECT_EQ(stored("kept"), DefaultsValue(4.0));
    EXPECT_EQ(log_.takeLines().size(), 3U);
    EXPECT_EQ(filesSetAside().size(), 3U);
}

TEST_F(FileUserDefaultsTest, RunsFromMemoryWhenTheFileCanNeitherBeReadNorSetAside) {
    // So long a name leaves no room for the appendix of a file set aside, yet room for ".new".
    const auto file = folder_.path() / std::string(250, 'n');
    writeText(file, "broken");
    FileUserDefaults defaults(file, log_);
    EXPECT_THAT(log_.takeLines(), ElementsAre(HasSubstr("changes last for this run only")));
    defaults.set("key", 2.0);
    EXPECT_EQ(defaults.doubleForKey("key"), 2.0);
    EXPECT_EQ(readText(file), "broken");
    EXPECT_THAT(log_.takeLines(), ElementsAre());
}

TEST_F(ExistingFileUserDefaultsTest, LosesNothingOnAFullDiskAndTriesAgainWithTheNextWrite) {
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit unlimited{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &unlimited), 0);
    const rlimit tiny{100, unlimited.rlim_max};
    const auto before = readText(file_);
    FileUserDefaults defaults(file_, log_);

    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tiny), 0);
    defaults.set("blob", Data(10'000, 7));
    ::setrlimit(RLIMIT_FSIZE, &unlimited);
    EXPECT_EQ(defaults.dataForKey("blob"), Data(10'000, 7));
    EXPECT_EQ(readText(file_), before);
    EXPECT_FALSE(std::filesystem::exists(file_.string() + ".new"));
    EXPECT_THAT(log_.takeLines(), ElementsAre(StartsWith("error general save(): Could not write " +
                                                         file_.string() + ": ")));

    defaults.set("kept", true); // no change of its own
    EXPECT_EQ(stored("blob"), DefaultsValue(Data(10'000, 7)));
    EXPECT_THAT(log_.takeLines(), ElementsAre());
}

TEST_F(ExistingFileUserDefaultsTest, SurvivesLeftoversOfACrashAndAFolderThatTakesNoFile) {
    const std::filesystem::path temporary = file_.string() + ".new";
    const auto outside = folder_.path() / "outside";
    writeText(outside, "untouched");
    std::filesystem::create_symlink(outside, temporary);
    FileUserDefaults defaults(file_, log_);
    defaults.set("kept", 2.0);
    EXPECT_EQ(readText(outside), "untouched");
    EXPECT_EQ(stored("kept"), DefaultsValue(2.0));

    std::filesystem::create_directory(temporary);
    defaults.set("kept", 3.0);
    EXPECT_EQ(stored("kept"), DefaultsValue(2.0));
    EXPECT_EQ(log_.takeLines().size(), 1U);

    std::filesystem::remove_all(file_.parent_path());
    defaults.set("kept", 4.0);
    EXPECT_EQ(stored("kept"), DefaultsValue(4.0));
}

TEST_F(FileUserDefaultsTest, FollowsALinkAndLeavesItOne) {
    const auto link = folder_.path() / "defaults.json";
    std::filesystem::create_symlink("a/link", link);
    std::filesystem::create_directory(folder_.path() / "a");
    std::filesystem::create_symlink("tidewell/defaults.json", folder_.path() / "a" / "link");
    FileUserDefaults(link, log_).set("key", 2.0); // leads to nothing yet
    FileUserDefaults(link, log_).set("other", 3.0);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(stored("key"), DefaultsValue(2.0));
    EXPECT_EQ(stored("other"), DefaultsValue(3.0));
}

TEST(DefaultPreferencesFile, LiesInTheUsersConfiguration) {
    using Variables = ScopedEnvironment::Variables;
    const ScopedEnvironment home(Variables{{"HOME", "/home/a"}, {"XDG_CONFIG_HOME", "/b/c"}});
    EXPECT_EQ(defaultPreferencesFile(), "/b/c/tidewell/defaults.json");
    for (const auto& unusable : {std::optional<std::string>(), {"relative"}, {""}}) {
        const ScopedEnvironment configuration(Variables{{"XDG_CONFIG_HOME", unusable}});
        EXPECT_EQ(defaultPreferencesFile(), "/home/a/.config/tidewell/defaults.json");
    }
    const ScopedEnvironment nowhere(
        Variables{{"HOME", std::nullopt}, {"XDG_CONFIG_HOME", std::nullopt}});
    EXPECT_TRUE(defaultPreferencesFile().is_absolute());
}

} // namespace
} // namespace tidewell
