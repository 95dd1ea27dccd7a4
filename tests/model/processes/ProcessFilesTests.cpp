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
    const std::string whole = "1 () (a) S 42 0 0 34816 0 0 77 0 0 0 0 0 0 0 0 0 0 0 987654";
    EXPECT_EQ(parseProcessStat(whole), (ProcessStat{") (a", 'S', 42, 34816, 77, 987654, false}));
    for (const char* cut : {"", "1 a) S 42 0 0 0 0 0 77 0 0 0 0 0 0 0 0 0 0 0 1",
                            ") S 42 0 0 0 0 0 77 0 0 0 0 0 0 0 0 0 0 0 1 (", "1 (a) S",
                            "1 (a) S x 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1",
                            "1 (a) S 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0"}) {
        EXPECT_EQ(parseProcessStat(cut), std::nullopt) << cut;
    }
    EXPECT_EQ(parseProcessPages("12 5 3 2 0 1 0\n"), (ProcessPages{5, 3, 2}));
    for (const char* none : {"0 0 0 0 0 0 0\n", "12", "x 3 0 1", "12 -3 0 1", "12 3 0"}) {
        EXPECT_EQ(parseProcessPages(none), std::nullopt) << none;
    }
    const auto rollup = "5-f ---p 0 00:00 0 [rollup]\nRss: 9 kB\nPss:\t  3 kB\nPss_Anon: 1 kB\n";
    EXPECT_EQ(bytesBehind("Pss:", rollup), 3072U);
    EXPECT_EQ(bytesBehind("SwapPss:", rollup), std::nullopt);
    EXPECT_EQ(bytesBehind("Pss:", "Pss: 18014398509481983 kB\n"), ~std::uint64_t{0} - 1023);
    EXPECT_EQ(bytesBehind("Pss:", "Pss: 18014398509481984 kB\n"), std::nullopt) << "2^64";
    const auto environment = "AB=1\0A\0A=x=y\0A=2\0"s;
    EXPECT_EQ(environmentVariable("A", environment), "x=y");
    EXPECT_EQ(environmentVariable("B", environment), "");
    EXPECT_THAT(commandWords("a\0b c\0\0d\0"s, 3), ElementsAre("a", "b c", ""));
    EXPECT_THAT(commandWords("not closed", 3), ElementsAre("not closed"));
}

TEST(ProcessFiles, FindTheApplicationOfAUnit) {
    using Case = std::pair<std::string, std::vector<std::string>>;
    const std::string app = "0::/user.slice/user@1000.service/app.slice/";
    for (const auto& [unit, identifiers] :
         {Case{"app-gnome-org.gnome.Nautilus-4711.scope",
               {"org.gnome.Nautilus", "gnome-org.gnome.Nautilus"}},
          Case{"app-flatpak-my\\x2dapp\\x40-7.scope", {"my-app@", "flatpak-my-app@"}},
          Case{"app-kde-org.kde.kate@9f.service", {"org.kde.kate", "kde-org.kde.kate"}},
          Case{"app-nm\\x2dapplet@autostart.service", {"nm-applet"}},
          Case{"app-a-b-c-9.scope", {"b-c", "a-b-c"}},
          Case{"app-x\\xzz\\x4-9.scope", {"x\\xzz\\x4"}},
          Case{"snap.a-b.c-d-0b5a5a5e-1111-2222-3333-444455556666.scope", {"a-b_c-d"}},
          Case{"snap.a.b.0b5a5a5e-1111-2222-3333-444455556666.scope", {"a_b"}},
          Case{"snap.a.b.service", {"a_b"}}}) {
        const std::string groups = "1:name=systemd:/\n" + app + unit + "/sub\n";
        const auto name = innermostUnit(groups);
        EXPECT_EQ(name, unit);
        const auto found = parseApplicationUnit(name);
        ASSERT_TRUE(found) << unit;
        EXPECT_EQ(found->identifiers, identifiers) << unit;
        EXPECT_EQ(found->isSandbox, unit.starts_with("snap") || unit.starts_with("app-flatpak"));
    }
    for (const char* none :
         {"session-2.scope", "app-.scope", "app-alone.scope", "app-@1.service", "dbus.service",
          "app-org.gnome.Terminal.slice/vte-spawn-1.scope", "app-a-1.scope/b.scope", "snap.scope",
          "snap..a.scope", "app-a-1.slice"}) {
        EXPECT_EQ(parseApplicationUnit(innermostUnit(app + none)), std::nullopt) << none;
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
