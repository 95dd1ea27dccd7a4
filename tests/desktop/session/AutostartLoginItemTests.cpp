#include "desktop/files/RunningProgram.h"
#include "desktop/session/AutostartLoginItem.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

TEST(AutostartLoginItem, RegistersWhateverTheProgramIsCalledOverWhatIsThereAndSaysWhyItCannot) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "net.tidewell.Tidewell.desktop";
    writeText(file, "[Desktop Entry]\nHidden=true\n"); // as desktops turn an entry off
    const auto item = [](const fs::path& place, const char* program) {
        return AutostartLoginItem(place, "net.tidewell.Tidewell", "A\\B", program);
    };
    auto odd = item(folder.path(), "/o/Tide well-ä潮/a\"b'c $x `y` \\z 100%");
    EXPECT_TRUE(odd.registerApplication());
    EXPECT_EQ(std::system(("desktop-file-validate " + file.string()).c_str()), 0);
    EXPECT_THAT(readText(file), HasSubstr(R"(
Name=A\\B
Exec="/o/Tide well-ä潮/a\\"b'c \\$x \\`y\\` \\\\z 100%%"
TryExec=/o/Tide well-ä潮/a"b'c $x `y` \\z 100%
)"));
    EXPECT_THAT(readText(file), Not(HasSubstr("Hidden")));
    EXPECT_TRUE(odd.unregisterApplication());
    EXPECT_TRUE(odd.unregisterApplication()) << "it is gone already";
    EXPECT_FALSE(item(folder.path(), "/a\nb").registerApplication());
    EXPECT_FALSE(item("/dev/null", "/a").registerApplication());
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST(InstalledProgram, IsTheAppImageThatItLiesInAndNoneThatMerelyStartedIt) {
    const fs::path own = fs::read_symlink("/proc/self/exe");
    const TemporaryFolder other;
    const fs::path link = other.path() / "link";
    fs::create_directory_symlink(own.parent_path(), link);
    const std::string image = "/opt/Tidewell.AppImage";
    const std::string place = own.parent_path();
    using Text = std::optional<std::string>;
    using Case = std::tuple<Text, Text, fs::path>;
    const auto part = own.string().substr(0, own.string().size() - 1);
    for (const auto& [appImage, folder, program] :
         {Case{image, place, image}, Case{image, link.string() + '/', image},
          Case{image, other.path().string(), own}, Case{image, part, own}, Case{image, "/", own},
          Case{image, {}, own}, Case{"Tidewell.AppImage", place, own}, Case{Text(), place, own}}) {
        const ScopedEnvironment environment({{"APPIMAGE", appImage}, {"APPDIR", folder}});
        EXPECT_EQ(installedProgram(), program) << folder.value_or("no folder");
    }
}

} // namespace
} // namespace tidewell
