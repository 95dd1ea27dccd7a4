#include "desktop/session/SingleInstance.h"
#include "tests/desktop/PrivateBus.h"

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
using namespace std::chrono_literals;

using Instances = BusTest;
const QString identifier = u"net.tidewell.Tidewell"_s;

TEST_F(Instances, AFirstStartAnswersOtherProgramsAlsoBeforeItHasAPanel) {
    const TemporaryFolder folder;
    const QString lock = QString::fromStdString(folder.path() / "lock");
    SingleInstance first(bus.connect(), identifier, lock, 20s, log);
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
    SingleInstance instance(noBus, identifier, u"/nowhere/lock"_s, 20s, log);
    EXPECT_EQ(instance.start(), std::nullopt);
    EXPECT_THAT(log.takeLines(), ElementsAre(StartsWith("error general start(): Could not lock ")));
}

} // namespace
} // namespace tidewell
