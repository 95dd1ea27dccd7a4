#include "platform/linux/AutostartLoginItem.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tidewell {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
namespace fs = std::filesystem;

const std::string identifier = "net.tidewell.Tidewell";

int statusOf(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str());
}

void makeProgram(const fs::path& file) {
    fs::create_directories(file.parent_path());
    writeText(file, "#!/bin/sh\n");
    ::chmod(file.c_str(), 0700);
}

class AutostartLoginItemTest : public testing::Test {
protected:
    /// The command that the session manager makes of the entry; empty when it starts nothing.
    std::string startCommand() const {
        const ScopedEnvironment environment(
            {{"XDG_CONFIG_HOME", home.path() / "config"}, {"XDG_CONFIG_DIRS", "/nowhere"}});
        const fs::path units = home.path() / "units";
        fs::remove_all(units);
        fs::create_directories(units);
        const std::string generator = "/usr/lib/systemd/user-generators/"
                                      "systemd-xdg-autostart-generator ";
        EXPECT_EQ(
            statusOf(generator + units.string() + " " + units.string() + " " + units.string()), 0);
        for (const auto& unit : fs::recursive_directory_iterator(units)) {
            if (unit.path().filename().string().starts_with("app-")) {
                const std::string text = readText(unit);
                const auto start = text.find("ExecStart=");
                return start == std::string::npos
                           ? ""
                           : text.substr(start, text.find('\n', start) - start);
            }
        }
        return "";
    }

    TemporaryFolder home;
    fs::path folder = home.path() / "config" / "autostart";
    fs::path file = folder / (identifier + ".desktop");
};

TEST_F(AutostartLoginItemTest, IsValidAndStartsTheProgram) {
    for (const auto& [name, command] : {
             std::pair{"tidewell", "tidewell"},
             std::pair{"Tide well", R"(Tide well")"},
             std::pair{R"(a"b'c)", R"(a\"b'c")"},
             std::pair{"Gezeiten-ä潮", "Gezeiten-ä潮"},
         }) {
        const fs::path program = home.path() / "bin" / name;
        makeProgram(program);
        AutostartLoginItem item(folder, identifier, "Tidewell", program);
        ASSERT_FALSE(item.registerApplication());
        EXPECT_EQ(statusOf("desktop-file-validate " + file.string()), 0) << name;
        EXPECT_THAT(startCommand(), EndsWith(command));
    }
    // Right by the standard; systemd's reader takes no such names.
    const std::string odd = autostartEntry(identifier, "A\\B", "/o/$x `y` \\z 100%");
    EXPECT_THAT(odd, HasSubstr("\nName=A\\\\B\n"));
    EXPECT_THAT(odd, HasSubstr(R"(Exec="/o/\\$x \\`y\\` \\\\z 100%%")"));
    EXPECT_THAT(odd, HasSubstr("\nTryExec=/o/$x `y` \\\\z 100%\n"));
}

TEST_F(AutostartLoginItemTest, RegistersOverWhatIsThereAndSaysWhyItCannot) {
    const fs::path program = home.path() / "tidewell";
    makeProgram(program);
    AutostartLoginItem item(folder, identifier, "Tidewell", program);
    EXPECT_FALSE(item.unregisterApplication()) << "never registered";
    fs::create_directories(folder);
    writeText(file, "[Desktop Entry]\nHidden=true\n"); // as desktops turn an entry off
    EXPECT_FALSE(item.registerApplication());
    EXPECT_NE(startCommand(), "");
    EXPECT_FALSE(item.unregisterApplication());
    EXPECT_TRUE(fs::is_empty(folder));

    EXPECT_TRUE(AutostartLoginItem(folder, identifier, "T", "/a\nExec=b").registerApplication());
    EXPECT_TRUE(AutostartLoginItem(folder, identifier, "T", "tidewell").registerApplication());
    AutostartLoginItem blocked(program / "autostart", identifier, "T", program);
    EXPECT_TRUE(blocked.registerApplication());
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST(InstalledProgram, IsTheAppImageThatItLiesInAndNoneThatMerelyStartedIt) {
    const fs::path own = fs::read_symlink("/proc/self/exe");
    const TemporaryFolder other;
    const fs::path link = other.path() / "link";
    fs::create_directory_symlink(own.parent_path(), link);
    const fs::path image = "/opt/Tidewell.AppImage";
    using Text = std::optional<std::string>;
    for (const auto& [appImage, folder, program] : {
             std::tuple{Text(image), Text(own.parent_path()), image},
             std::tuple{Text(image), Text(link.string() + '/'), image},
             std::tuple{Text(image), Text(other.path()), own},
             std::tuple{Text(image), Text(own.string().substr(0, own.string().size() - 1)), own},
             std::tuple{Text(image), Text("/"), own},
             std::tuple{Text(image), Text(), own},
             std::tuple{Text("Tidewell.AppImage"), Text(own.parent_path()), own},
             std::tuple{Text(), Text(own.parent_path()), own},
         }) {
        const ScopedEnvironment environment({{"APPIMAGE", appImage}, {"APPDIR", folder}});
        EXPECT_EQ(installedProgram(), program) << folder.value_or("no folder");
    }
}

} // namespace
} // namespace tidewell
