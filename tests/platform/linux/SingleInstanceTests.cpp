#include "platform/linux/SingleInstance.h"
#include "tests/platform/linux/PrivateBus.h"

#include <future>
#include <sys/wait.h>
#include <unistd.h>

namespace tidewell {
namespace {

using testing::ElementsAre;
using testing::StartsWith;
using namespace std::chrono_literals;

const QString identifier = u"net.tidewell.Tidewell"_s;
const QString objectPath = u"/net/tidewell/Tidewell"_s;

class Instances : public BusTest {
protected:
    /// What `start()` says; of another program, which this one goes on beside.
    std::optional<int> startAnother(const QDBusConnection& connection,
                                    std::chrono::milliseconds patience = 20s) {
        auto status = std::async(std::launch::async, [&] {
            return SingleInstance(connection, identifier, lockFile, patience, log).start();
        });
        EXPECT_TRUE(comesTrue([&] { return status.wait_for(0s) == std::future_status::ready; }));
        return status.get();
    }

    TemporaryFolder folder;
    QString lockFile = QString::fromStdString(folder.path() / "lock");
};

TEST_F(Instances, AFirstStartAnswersOtherProgramsAlsoBeforeItHasAPanel) {
    SingleInstance first(bus.connect(), identifier, lockFile, 20s, log);
    EXPECT_EQ(first.start(), std::nullopt);
    EXPECT_EQ(startAnother(bus.connect()), 0);
    int activated = 0;
    first.onActivate([&activated] { ++activated; });
    EXPECT_EQ(activated, 1) << "remembered until there is a panel";

    const QDBusConnection caller = bus.connect();
    const auto isAnswered = [&caller](const QString& method, const QVariantList& arguments) {
        auto call = QDBusMessage::createMethodCall(identifier, objectPath,
                                                   u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        return answerTo(call, caller).type() == QDBusMessage::ReplyMessage;
    };
    EXPECT_TRUE(isAnswered(u"Open"_s, {QStringList(), QVariantMap()}));
    EXPECT_TRUE(isAnswered(u"ActivateAction"_s, {u"x"_s, QVariantList(), QVariantMap()}));
    EXPECT_FALSE(isAnswered(u"Activate"_s, {1}));
    EXPECT_FALSE(isAnswered(u"Quit"_s, {}));
    EXPECT_EQ(activated, 3);
    EXPECT_THAT(log.takeLines(), ElementsAre());
}

TEST_F(Instances, ASecondStartGivesUpOnAFirstThatHangs) {
    const FakeService hung(bus.connect(), identifier, objectPath, [](const auto&, const auto&) {});
    EXPECT_EQ(startAnother(bus.connect(), 200ms), 1);
    EXPECT_THAT(log.takeLines(),
                ElementsAre(StartsWith("error general start(): The program is running already, "
                                       "but does not answer")));
}

TEST_F(Instances, TheLockOfALivingProgramKeepsApartWhatTheBusDoesNot) {
    const pid_t crashing = ::fork();
    if (crashing == 0) {
        QLockFile lock(lockFile);
        lock.lock();
        ::_exit(0);
    }
    ASSERT_EQ(::waitpid(crashing, nullptr, 0), crashing);
    ASSERT_TRUE(QFile::exists(lockFile)) << "it could not tidy up";
    EXPECT_EQ(startAnother(noBus), std::nullopt);
    EXPECT_THAT(log.takeLines(), ElementsAre());

    QLockFile living(lockFile);
    ASSERT_TRUE(living.lock());
    for (const QDBusConnection& connection : {noBus, bus.connect()}) {
        EXPECT_EQ(startAnother(connection), 0);
        EXPECT_THAT(log.takeLines(), ElementsAre(StartsWith("info general start")));
    }
    lockFile = QString::fromStdString(folder.path() / "missing" / "lock");
    EXPECT_EQ(startAnother(noBus), std::nullopt);
    EXPECT_THAT(log.takeLines(), ElementsAre(StartsWith("error general start(): Could not lock ")));
}

} // namespace
} // namespace tidewell
