#include "desktop/session/SingleInstance.h"
#include "tests/desktop/PrivateBus.h"

#include <functional>
#include <sys/stat.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using namespace std::chrono_literals;

using Instances = BusTest;
const QString identifier = u"net.tidewell.Tidewell"_s;

TEST_F(Instances, AFirstStartAnswersOtherProgramsAlsoBeforeItHasAPanel) {
    const TemporaryFolder folder;
    SingleInstance first(bus.connect(), identifier, folder.path() / "lock", 20s, log);
    EXPECT_EQ(first.start(), std::nullopt);
    const auto activate = [caller = bus.connect()] {
        auto call = QDBusMessage::createMethodCall(identifier, u"/net/tidewell/Tidewell"_s,
                                                   u"org.freedesktop.Application"_s, u"Activate"_s);
        EXPECT_EQ(answerTo(call << QVariantMap(), caller).type(), QDBusMessage::ReplyMessage);
    };
    activate();
    int activated = 0;
    first.onActivate([&activated] { ++activated; });
    EXPECT_EQ(activated, 1) << "remembered until there is a panel";
    activate();
    EXPECT_EQ(activated, 2);
}

TEST_F(Instances, AProgramStartsWhereNothingCanTellWhetherItIsTheFirst) {
    SingleInstance instance(noBus, identifier, "/nowhere/lock", 20s, log);
    EXPECT_EQ(instance.start(), std::nullopt);
    EXPECT_THAT(log.takeLines(), ElementsAre(HasSubstr("Could not find out")));
}

TEST_F(Instances, OneHoldsTheLockForItsLifeWhateverFileItIs) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "lock";
    const std::function<void()> kinds[] = {
        [] {}, // not there
        [&] { writeText(file, ""); },
        [&] { writeText(file, "not a process"); },
        [&] { std::filesystem::create_directory(file); },
        [&] { std::filesystem::create_symlink("/nowhere", file); },
        [&] { ASSERT_EQ(mkfifo(file.c_str(), 0600), 0); },
    };
    for (const auto& make : kinds) {
        std::filesystem::remove(file);
        make();
        for (int run = 0; run < 2; ++run) {
            SingleInstance first(noBus, identifier, file, 20s, log);
            EXPECT_EQ(first.start(), std::nullopt);
            EXPECT_THAT(log.takeLines(), ElementsAre());
            EXPECT_EQ(SingleInstance(noBus, identifier, file, 20s, log).start(), EXIT_FAILURE);
            EXPECT_THAT(log.takeLines(), ElementsAre(HasSubstr("running already, out of reach")));
        }
    }
}

} // namespace
} // namespace tidewell
