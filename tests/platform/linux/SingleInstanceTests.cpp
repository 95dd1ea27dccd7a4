#include "platform/linux/SingleInstance.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/platform/linux/PrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusMessage>
#include <QDBusPendingCall>

#include <memory>

namespace tidewell {
namespace {

const QString identifier = u"net.tidewell.Tidewell"_s;

QDBusMessage applicationCall(const QString& method, const QVariantList& arguments) {
    auto call = QDBusMessage::createMethodCall(identifier, u"/net/tidewell/Tidewell"_s,
                                               u"org.freedesktop.Application"_s, method);
    call.setArguments(arguments);
    return call;
}

/// Another process that runs the same class, on the given bus, or on none.
class OtherProgram {
public:
    OtherProgram(const QString& busAddress, const QString& lockFile) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        startChild(process_, QCoreApplication::applicationFilePath(),
                   {u"--run-instance"_s, busAddress, lockFile});
        EXPECT_EQ(nextLine(), "first");
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() { end(); }

    /// Waits for the next thing that it says.
    std::string nextLine() {
        EXPECT_TRUE(comesTrue(
            [this] { return process_.canReadLine() || process_.state() == QProcess::NotRunning; }));
        return process_.readLine().trimmed().toStdString();
    }
    void stop() { stopChild(process_); }
    void end() {
        process_.kill();
        process_.waitForFinished();
    }

private:
    QProcess process_;
};

class Instances : public testing::Test {
protected:
    std::unique_ptr<SingleInstance>
    another(const QDBusConnection& connection,
            std::chrono::milliseconds patience = std::chrono::seconds(20)) {
        return std::make_unique<SingleInstance>(connection, identifier, lockFile, patience, log);
    }

    PrivateBus bus;
    QDBusConnection noBus{u"none"_s};
    QTemporaryDir folder;
    QString lockFile = folder.path() + u"/lock"_s;
    RecordingLog log;
};

TEST_F(Instances, ASecondStartBringsUpTheFirstAndEndsWell) {
    OtherProgram first(bus.address(), lockFile);
    for (int start = 0; start < 2; ++start) {
        EXPECT_EQ(another(bus.connect())->start(), 0);
        EXPECT_EQ(first.nextLine(), "activated");
    }
    QDBusConnection caller = bus.connect();
    const auto accepts = [&caller](const QString& method, const QVariantList& arguments) {
        return caller.call(applicationCall(method, arguments)).type() == QDBusMessage::ReplyMessage;
    };
    EXPECT_TRUE(accepts(u"Open"_s, {QStringList(), QVariantMap()}));
    EXPECT_EQ(first.nextLine(), "activated");
    EXPECT_TRUE(accepts(u"ActivateAction"_s, {u"x"_s, QVariantList(), QVariantMap()}));
    EXPECT_EQ(first.nextLine(), "activated");
    EXPECT_FALSE(accepts(u"Activate"_s, {1}));
    EXPECT_FALSE(accepts(u"Quit"_s, {}));
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(Instances, AStartAfterTheFirstOneDiedIsAFirstOne) {
    OtherProgram first(bus.address(), lockFile);
    first.end();
    EXPECT_TRUE(QFile::exists(lockFile)) << "it could not tidy up";
    EXPECT_EQ(another(bus.connect())->start(), std::nullopt);
    EXPECT_EQ(another(bus.connect())->start(), std::nullopt) << "the last one has ended, too";
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(Instances, ASecondStartGivesUpOnAFirstThatHangs) {
    OtherProgram first(bus.address(), lockFile);
    first.stop();
    EXPECT_EQ(another(bus.connect(), std::chrono::milliseconds(200))->start(), 1);
    EXPECT_THAT(log.takeLines(),
                testing::ElementsAre(testing::HasSubstr("error general start(): The program is "
                                                        "running already, but does not answer")));
}

TEST_F(Instances, TheLockKeepsApartWhatTheBusDoesNot) {
    OtherProgram first(u"unix:path=/missing/bus"_s, lockFile);
    for (const QDBusConnection& connection : {noBus, bus.connect()}) {
        EXPECT_EQ(another(connection)->start(), 0);
        EXPECT_THAT(log.takeLines(),
                    testing::ElementsAre(testing::StartsWith("info general start")));
    }
    const auto hangingBus = bus.connect();
    bus.hang();
    EXPECT_EQ(another(hangingBus, std::chrono::milliseconds(100))->start(), 0);
    first.end();
    EXPECT_EQ(another(noBus)->start(), std::nullopt);
    log.takeLines();
    lockFile = folder.path() + u"/missing/lock"_s;
    EXPECT_EQ(another(noBus)->start(), std::nullopt);
    EXPECT_THAT(log.takeLines(),
                testing::ElementsAre(testing::HasSubstr("error general start(): Could not lock")));
}

TEST_F(Instances, RemembersAnActivationThatCameBeforeThePanel) {
    const auto first = another(bus.connect());
    EXPECT_EQ(first->start(), std::nullopt);
    QDBusConnection caller = bus.connect();
    const auto pending = caller.asyncCall(applicationCall(u"Activate"_s, {QVariantMap()}));
    ASSERT_TRUE(comesTrue([&pending] { return pending.isFinished(); }));
    EXPECT_FALSE(pending.isError());
    int activated = 0;
    first->onActivate([&activated] { ++activated; });
    EXPECT_EQ(activated, 1);
    first->onActivate([&activated] { ++activated; });
    EXPECT_EQ(activated, 1);
}

} // namespace
} // namespace tidewell
