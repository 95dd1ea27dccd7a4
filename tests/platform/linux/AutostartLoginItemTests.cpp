#include "platform/linux/AutostartLoginItem.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::HasSubstr;
namespace fs = std::filesystem;

const std::string identifier = "net.tidewell.Tidewell";

class AutostartLoginItemTest : public testing::Test {
protected:
    TemporaryFolder home;
    fs::path folder = home.path() / "autostart";
    fs::path file = folder / (identifier + ".desktop");
};

TEST_F(AutostartLoginItemTest, QuotesWhateverTheProgramsNameHolds) {
    for (const auto& [program, quoted] :
         {std::pair{"/o/Tide well-ä潮", R"("/o/Tide well-ä潮")"},
          std::pair{R"(/o/a"b'c)", R"("/o/a\\"b'c")"},
          std::pair{"/o/$x `y` \\z 100%", R"("/o/\\$x \\`y\\` \\\\z 100%%")"}}) {
        AutostartLoginItem item(folder, identifier, "A\\B", program);
        ASSERT_FALSE(item.registerApplication());
        EXPECT_EQ(std::system(("desktop-file-validate " + file.string()).c_str()), 0) << program;
        EXPECT_THAT(readText(file), HasSubstr("\nExec=" + std::string(quoted) + "\n"));
    }
    EXPECT_THAT(readText(file), HasSubstr("\nName=A\\\\B\n"));
    EXPECT_THAT(readText(file), HasSubstr("\nTryExec=/o/$x `y` \\\\z 100%\n"));
}

TEST_F(AutostartLoginItemTest, RegistersOverWhatIsThereAndSaysWhyItCannot) {
    fs::create_directories(folder);
    writeText(file, "[Desktop Entry]\nHidden=true\n"); // as desktops turn an entry off
    AutostartLoginItem item(folder, identifier, "Tidewell", "/o/tidewell");
    EXPECT_FALSE(item.registerApplication());
    EXPECT_THAT(readText(file), testing::Not(HasSubstr("Hidden")));
    EXPECT_FALSE(item.unregisterApplication());
    EXPECT_FALSE(item.unregisterApplication()) << "it is gone already";
    EXPECT_TRUE(AutostartLoginItem(folder, identifier, "T", "/a\nb").registerApplication());
    EXPECT_TRUE(AutostartLoginItem("/dev/null", identifier, "T", "/a").registerApplication());
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
