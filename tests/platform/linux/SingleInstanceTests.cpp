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
const QString objectPath = u"/net/tidewell/Tidewell"_s;

/// Another process that runs the same class, on the given bus, or on none.
class OtherProgram {
public:
    OtherProgram(const QString& busAddress, const QString& lockFile) {
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        startChild(process_, QCoreApplication::applicationFilePath(),
                   {u"--run-instance"_s, busAddress, lockFile});
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
    EXPECT_EQ(first.nextLine(), "first");
    EXPECT_EQ(another(bus.connect())->start(), 0);
    EXPECT_EQ(first.nextLine(), "activated");
    EXPECT_EQ(another(bus.connect())->start(), 0);
    EXPECT_EQ(first.nextLine(), "activated");

    QDBusConnection caller = bus.connect();
    const auto call = [&caller](const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(identifier, objectPath,
                                                      u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        return caller.call(message).type();
    };
    EXPECT_EQ(call(u"Open"_s, {QStringList(), QVariantMap()}), QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.nextLine(), "activated");
    EXPECT_EQ(call(u"ActivateAction"_s, {u"x"_s, QVariantList(), QVariantMap()}),
              QDBusMessage::ReplyMessage);
    EXPECT_EQ(first.nextLine(), "activated");
    EXPECT_EQ(call(u"Activate"_s, {1}), QDBusMessage::ErrorMessage);
    EXPECT_EQ(call(u"Quit"_s, {}), QDBusMessage::ErrorMessage);
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(Instances, AStartAfterTheFirstOneDiedIsAFirstOne) {
    OtherProgram first(bus.address(), lockFile);
    EXPECT_EQ(first.nextLine(), "first");
    first.end();
    EXPECT_TRUE(QFile::exists(lockFile)) << "it could not tidy up";
    EXPECT_EQ(another(bus.connect())->start(), std::nullopt);
    EXPECT_EQ(another(bus.connect())->start(), std::nullopt) << "nor did the last one end in order";
    EXPECT_TRUE(log.takeLines().empty());
}

TEST_F(Instances, ASecondStartGivesUpOnAFirstThatHangs) {
    OtherProgram first(bus.address(), lockFile);
    EXPECT_EQ(first.nextLine(), "first");
    first.stop();
    EXPECT_EQ(another(bus.connect(), std::chrono::milliseconds(200))->start(), 1);
    EXPECT_THAT(log.takeLines(),
                testing::ElementsAre(testing::HasSubstr("error general start(): The program is "
                                                        "running already, but does not answer")));
}

TEST_F(Instances, TheLockKeepsApartWhatTheBusDoesNot) {
    OtherProgram first(u"unix:path=/nonexistent"_s, lockFile);
    EXPECT_EQ(first.nextLine(), "first");
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
    lockFile = u"/nonexistent/lock"_s;
    EXPECT_EQ(another(noBus)->start(), std::nullopt);
    EXPECT_THAT(log.takeLines(), testing::ElementsAre("error general start(): Could not lock "
                                                      "/nonexistent/lock."));
}

TEST_F(Instances, RemembersAnActivationThatCameBeforeThePanel) {
    const auto first = another(bus.connect());
    EXPECT_EQ(first->start(), std::nullopt);
    QDBusConnection caller = bus.connect();
    auto activate = QDBusMessage::createMethodCall(identifier, objectPath,
                                                   u"org.freedesktop.Application"_s, u"Activate"_s);
    const auto pending = caller.asyncCall(activate << QVariantMap());
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
