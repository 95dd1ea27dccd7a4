#include "model/processes/darwin/ResidentMemory.h"
#include "model/processes/linux/ApplicationUnit.h"
#include "model/processes/linux/ProcessFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace tidewell {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

TEST(ProcessFiles, GiveNothingWhenTheyAreCutShort) {
    const std::string whole = "1 () (a) S 42 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 987654";
    EXPECT_EQ(parseProcessStat(whole), (ProcessStat{") (a", 'S', 42, 987654, false}));
    for (const char* cut :
         {"", "1 (", "1 )(", "1 (a) S", "1 (a) S x 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1",
          "1 (a) S 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"}) {
        EXPECT_EQ(parseProcessStat(cut), std::nullopt) << cut;
    }
    for (const char* none : {"0 0 0 0 0 0 0\n", "12", "x 3", "12 -3"}) {
        EXPECT_EQ(residentPages(none), std::nullopt) << none;
    }
    EXPECT_EQ(effectiveUser("Name:\ta\n"), std::nullopt);
    EXPECT_THAT(commandWords("a\0b c\0\0d\0"s, 3), ElementsAre("a", "b c", ""));
    EXPECT_THAT(commandWords("not closed", 3), ElementsAre("not closed"));
}

TEST(ProcessFiles, FindTheApplicationOfAUnit) {
    using Case = std::pair<std::string, std::vector<std::string>>;
    const std::string app = "0::/user.slice/user@1000.service/app.slice/";
    for (const auto& [unit, identifiers] : {
             Case{"app-gnome-org.gnome.Nautilus-4711.scope",
                  {"org.gnome.Nautilus", "gnome-org.gnome.Nautilus"}},
             Case{"app-flatpak-my\\x2dapp\\x40-7.scope", {"my-app@", "flatpak-my-app@"}},
             Case{"app-kde-org.kde.kate@9f.service", {"org.kde.kate", "kde-org.kde.kate"}},
             Case{"app-nm\\x2dapplet@autostart.service", {"nm-applet"}},
             Case{"app-a-b-c-9.scope", {"b-c", "a-b-c"}},
             Case{"app-x\\xzz\\x4-9.scope", {"x\\xzz\\x4"}},
         }) {
        const auto found = applicationUnitOf("1:name=systemd:/\n" + app + unit + "/sub\n");
        ASSERT_TRUE(found) << unit;
        EXPECT_EQ(*found, (ApplicationUnit{unit, identifiers}));
    }
    for (const char* none : {"session-2.scope", "app-.scope", "app-alone.scope", "app-@1.service",
                             "dbus.service", "app-org.gnome.Terminal.slice/vte-spawn-1.scope"}) {
        EXPECT_EQ(applicationUnitOf(app + none), std::nullopt) << none;
    }
}

TEST(DarwinResidentMemory, CountsOnlyWhereTheWholeRecordWasFilledIn) {
    struct Host final : DarwinProcessHost {
        int readTaskInformation(std::int32_t process, std::span<std::byte> record) override {
            EXPECT_EQ(record.size(), 96U);
            std::ranges::fill(record.subspan(8, 8), std::byte{0xfe});
            return process;
        }
    } host;
    EXPECT_EQ(readResidentMemory(host, 96), 0xfefefefefefefefeU);
    for (const int filled : {95, 97, 0, -1}) {
        EXPECT_EQ(readResidentMemory(host, filled), std::nullopt);
    }
}

} // namespace
} // namespace tidewell
