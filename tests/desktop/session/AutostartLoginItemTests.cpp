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
