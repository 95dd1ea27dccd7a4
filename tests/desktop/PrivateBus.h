#pragma once

#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <functional>

#include <sys/prctl.h>

namespace tidewell {

using namespace Qt::Literals::StringLiterals;

/// Runs the event loop until `condition` holds; false when it does not within some seconds.
inline bool comesTrue(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
}

/// Starts a program that does not outlive the test, whatever becomes of that.
inline void startChild(QProcess& process, const QString& program, const QStringList& arguments) {
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForStarted(20000)) << program.toStdString();
}

/// A message bus of the test's own, on which nobody else is and which can start nothing.
class PrivateBus {
public:
    PrivateBus() {
        const std::string configuration = folder_.path() / "bus.conf";
        writeText(configuration,
                  "<busconfig><listen>unix:tmpdir=/tmp</listen><policy context='default'>"
                  "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                  "<allow own='*'/></policy></busconfig>");
        startChild(daemon_, u"dbus-daemon"_s,
                   {u"--config-file="_s + QString::fromStdString(configuration), u"--nofork"_s,
                    u"--print-address=1"_s});
        if (!daemon_.waitForReadyRead(20000)) {
            throw std::runtime_error("no dbus-daemon");
        }
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    ~PrivateBus() {
        for (const QString& name : names_) {
            QDBusConnection::disconnectFromBus(name);
        }
        daemon_.kill();
        daemon_.waitForFinished();
    }

    const QString& address() const { return address_; }

    /// A connection of its own, as another program's would be.
    QDBusConnection connect() {
        static int count = 0;
        names_ << u"test %1"_s.arg(++count);
        return QDBusConnection::connectToBus(address_, names_.back());
    }

private:
    TemporaryFolder folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

class BusTest : public testing::Test {
protected:
    PrivateBus bus;
    QDBusConnection noBus{u"none"_s};
    RecordingLog log;
};

/// What comes back for a call; all that came to the caller before it has been taken in by then.
inline QDBusMessage answerTo(const QDBusMessage& call, const QDBusConnection& caller) {
    const QDBusPendingCall pending = caller.asyncCall(call);
    EXPECT_TRUE(comesTrue([&pending] { return pending.isFinished(); }));
    QCoreApplication::processEvents();
    return pending.reply();
}

/// An object on a bus that hands every call to a function, on the main thread.
class FakeService final : public QDBusVirtualObject {
public:
    using Handler = std::function<void(const QDBusMessage& call, const QDBusConnection& bus)>;

    FakeService(const QDBusConnection& connection, const QString& name, const QString& path,
                Handler handler)
        : connection_(connection.name())
        , handler_(std::move(handler)) {
        EXPECT_TRUE(bus().registerVirtualObject(path, this) && bus().registerService(name));
    }
    ~FakeService() override { die(); }

    QDBusConnection bus() const { return QDBusConnection(connection_); }

    /// Leaves the bus as a program does that crashes: calls stay unanswered. Works as long as
    /// nobody holds on to the connection.
    void die() { QDBusConnection::disconnectFromBus(connection_); }

private:
    QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& call, const QDBusConnection& caller) override {
        handler_(call, caller);
        return true;
    }

    QString connection_;
    Handler handler_;
};

} // namespace tidewell
