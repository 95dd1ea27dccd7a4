#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <functional>
#include <stdexcept>

#include <sys/prctl.h>

namespace tidewell {

using namespace Qt::Literals::StringLiterals;

/// Runs the event loop until `condition` holds; false when it does not within some seconds.
inline bool comesTrue(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, 20000);
}

inline void writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

/// Starts a program that does not outlive the test, whatever becomes of that.
inline void startChild(QProcess& process, const QString& program, const QStringList& arguments) {
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
    if (!process.waitForStarted(20000)) {
        throw std::runtime_error("cannot start " + program.toStdString());
    }
}

/// Stops a running child as a program that hangs.
inline void stopChild(const QProcess& process) {
    if (process.processId() <= 0) {
        throw std::runtime_error("ended already");
    }
    ::kill(static_cast<pid_t>(process.processId()), SIGSTOP);
}

/// A message bus of the test's own, on which nobody else is and which can start nothing but
/// `activatable`, a name whose program fails.
class PrivateBus {
public:
    explicit PrivateBus(const QByteArray& activatable = {}) {
        const QString path = folder_.path() + u"/bus.conf"_s;
        writeFile(path, "<busconfig><listen>unix:tmpdir=/tmp</listen><servicedir>" +
                            folder_.path().toUtf8() +
                            "</servicedir><policy context='default'><allow eavesdrop='true'/>"
                            "<allow send_destination='*' eavesdrop='true'/><allow own='*'/>"
                            "</policy></busconfig>");
        if (!activatable.isEmpty()) {
            writeFile(folder_.path() + u"/activatable.service"_s,
                      "[D-BUS Service]\nName=" + activatable + "\nExec=/bin/false\n");
        }
        startChild(daemon_, u"dbus-daemon"_s,
                   {u"--config-file="_s + path, u"--nofork"_s, u"--print-address=1"_s});
        if (!daemon_.waitForReadyRead(20000)) {
            throw std::runtime_error("no dbus-daemon");
        }
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
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

    /// The bus accepts everything from now on and answers nothing.
    void hang() { stopChild(daemon_); }

private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QStringList names_;
};

/// An object on a bus that hands every call to a function, on the main thread.
class FakeService final : public QDBusVirtualObject {
public:
    using Handler = std::function<void(const QDBusMessage& call, const QDBusConnection& bus)>;

    FakeService(const QDBusConnection& connection, const QString& name, const QString& path,
                Handler handler)
        : connection_(connection.name())
        , name_(name)
        , path_(path)
        , handler_(std::move(handler)) {
        if (!bus().registerVirtualObject(path_, this) || !bus().registerService(name_)) {
            throw std::runtime_error("cannot serve " + name_.toStdString());
        }
    }
    ~FakeService() override {
        if (bus().isConnected()) { // it may have died
            bus().unregisterService(name_);
            bus().unregisterObject(path_);
        }
    }

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
    QString name_;
    QString path_;
    Handler handler_;
};

} // namespace tidewell
