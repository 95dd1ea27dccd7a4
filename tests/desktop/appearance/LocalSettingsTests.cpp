#include "desktop/appearance/LocalSettings.h"
#include "desktop/appearance/XSettings.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <QTest>

#include <gtest/gtest.h>

namespace tidewell {
namespace {

using namespace std::string_literals;

/// As it is in memory.
std::optional<XSettings> parsed(const std::string& bytes) {
    return parseXSettings({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
}

TEST(XSettings, AreReadInBothByteOrdersAndOnlyWhole) {
    const std::string little = "\0\0\0\0\x07\0\0\0\x03\0\0\0"
                               "\1\0\x0d\0Net/ThemeName\0\0\0\1\0\0\0\5\0\0\0Menta\0\0\0"
                               "\2\0\1\0C\0\0\0\1\0\0\0rrggbbaa"
                               "\0\0\1\0N\0\0\0\1\0\0\0\xff\xff\xff\xff"s;
    const XSettings expected{{"Net/ThemeName", QStringLiteral("Menta")}, {"N", -1}};
    EXPECT_EQ(parsed(little), expected);
    EXPECT_EQ(parsed("\1\0\0\0\0\0\0\7\0\0\0\2"
                     "\1\0\0\x0dNet/ThemeName\0\0\0\0\0\0\1\0\0\0\5Menta\0\0\0"
                     "\0\0\0\1N\0\0\0\0\0\0\1\xff\xff\xff\xff"s),
              expected);
    for (std::size_t size = 0; size < little.size(); ++size) {
        EXPECT_EQ(parsed(little.substr(0, size)), std::nullopt) << size;
    }
    EXPECT_EQ(parsed("\0\0\0\0\7\0\0\0\1\0\0\0\3\0\0\0\0\0\0\0"s), std::nullopt) << "a new kind";
}

TEST(LocalSettings, AreLxqtsOwnBeforeGtksAndFollowedLive) {
    const TemporaryFolder folder;
    const auto write = [&folder](const char* file, const std::string& text) {
        create_directories((folder.path() / file).parent_path());
        writeText(folder.path() / "new", text);
        rename(folder.path() / "new", folder.path() / file);
    };
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Arc-Darker\ngtk-font-name=Sans, 9\n"
                                  "gtk-icon-theme-name=Chosen\ngtk-enable-animations=0\n");
    write("lxqt/lxqt.conf", "icon_theme=Own\n[Palette]\nwindow_color=#232323\n");
    const ScopedEnvironment environment({{"XDG_CONFIG_HOME", folder.path().string()}});

    const LookSettings gtk = LocalSettings(QStringLiteral("i3")).look();
    EXPECT_EQ(gtk.appearance, Appearance::light);
    EXPECT_EQ(gtk.font, QStringLiteral("Sans,9"));
    EXPECT_EQ(gtk.iconTheme, QStringLiteral("Chosen"));
    EXPECT_EQ(gtk.animations, false);

    LocalSettings lxqt(QStringLiteral("LXQt"));
    EXPECT_EQ(lxqt.look().appearance, Appearance::dark);
    EXPECT_EQ(lxqt.look().iconTheme, QStringLiteral("Own"));
    EXPECT_EQ(lxqt.look().animations, false);
    bool isTold = false;
    const auto subscription = lxqt.didChange([&isTold] { isTold = true; });
    write("lxqt/lxqt.conf", "[Palette]\nwindow_color=#efefef\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return lxqt.look().appearance == Appearance::light; }));
    EXPECT_TRUE(isTold);
}

} // namespace
} // namespace tidewell
