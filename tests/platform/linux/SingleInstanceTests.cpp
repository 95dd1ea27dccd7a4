#include "platform/linux/SingleInstance.h"
#include "tests/platform/linux/PrivateBus.h"

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
using namespace std::chrono_literals;

class Instances : public BusTest {
protected:
    SingleInstance instance(const QDBusConnection& connection, const char* lockFile) {
        return {connection, u"net.tidewell.Tidewell"_s,
                QString::fromStdString(folder.path() / lockFile), 20s, log};
    }

    TemporaryFolder folder;
};

TEST_F(Instances, AFirstStartAnswersOtherProgramsAlsoBeforeItHasAPanel) {
    SingleInstance first = instance(bus.connect(), "lock");
    EXPECT_EQ(first.start(), std::nullopt);
    const auto activate = [caller = bus.connect()] {
        auto call =
            QDBusMessage::createMethodCall(u"net.tidewell.Tidewell"_s, u"/net/tidewell/Tidewell"_s,
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
    EXPECT_EQ(instance(noBus, "missing/lock").start(), std::nullopt);
    EXPECT_THAT(log.takeLines(), ElementsAre(StartsWith("error general start(): Could not lock ")));
}

} // namespace
} // namespace tidewell
