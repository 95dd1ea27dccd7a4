#include "desktop/session/SingleInstance.h"

#include "desktop/session/ServiceCall.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tidewell {

namespace {

const QString interfaceName = QStringLiteral("org.freedesktop.Application");

/// Whether the first program went away between two questions, so that asking anew makes sense.
bool isGone(const QDBusMessage& reply) {
    const QDBusError::ErrorType type = QDBusError(reply).type();
    return type == QDBusError::ServiceUnknown || type == QDBusError::NoReply ||
           reply.errorName() == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
}

/// Opens something that can be locked: any kind of file will do.
FileDescriptor openLockFile(const std::filesystem::path& file) {
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW;
    const auto open = [&] { return FileDescriptor(::open(file.c_str(), flags | O_CREAT, 0600)); };
    FileDescriptor opened = open();
    if (!opened.isOpen() && errno == EISDIR) {
        opened = FileDescriptor(::open(file.c_str(), flags));
    } else if (!opened.isOpen() && ::unlink(file.c_str()) == 0) {
        opened = open(); // it was a link, a socket, or not readable
    }
    return opened;
}

} // namespace

SingleInstance::SingleInstance(QDBusConnection sessionBus, QString identifier,
                               std::filesystem::path lockFile, std::chrono::milliseconds patience,
                               Log& log)
    : bus_(std::move(sessionBus))
    , identifier_(std::move(identifier))
    , objectPath_(u'/' + QString(identifier_).replace(u'.', u'/').replace(u'-', u'_'))
    , lockFile_(std::move(lockFile))
    , patience_(patience)
    , log_(log) {}

SingleInstance::~SingleInstance() {
    if (registered_) {
        bus_.send(busCall(QStringLiteral("ReleaseName")) << identifier_);
        bus_.unregisterObject(objectPath_);
    }
}

std::optional<int> SingleInstance::start() {
    // The object before the name: a caller may come as soon as there is the name.
    registered_ = bus_.registerVirtualObject(objectPath_, this);
    const QDeadlineTimer deadline(patience_);
    QDBusMessage reply;
    do {
        const auto left = [&deadline] {
            return std::chrono::milliseconds(std::max<qint64>(deadline.remainingTime(), 1));
        };
        if (claimName(left()) != Name::taken) {
            return startLocked();
        }
        reply = bus_.call(activateCall(), QDBus::Block, static_cast<int>(left().count()));
        if (reply.type() == QDBusMessage::ReplyMessage) {
            return EXIT_SUCCESS;
        }
    } while (isGone(reply) && !deadline.hasExpired());
    logMessage(log_, "The program is running already, but does not answer: " + errorText(reply),
               "general", __FILE__, "start()", __LINE__, LogLevel::error);
    return EXIT_FAILURE;
}

SingleInstance::Name SingleInstance::claimName(std::chrono::milliseconds limit) {
    const uint doNotQueue = 4;
    const uint nowOwner = 1;
    const uint ownerAlready = 4;
    const auto reply =
        bus_.call(busCall(QStringLiteral("RequestName")) << identifier_ << doNotQueue, QDBus::Block,
                  static_cast<int>(limit.count()));
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return Name::unavailable;
    }
    const uint result = reply.arguments().value(0).toUInt();
    return result == nowOwner || result == ownerAlready ? Name::ours : Name::taken;
}

std::optional<int> SingleInstance::startLocked() {
    lock_ = openLockFile(lockFile_);
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) {
        return std::nullopt;
    }
    if (errno == EWOULDBLOCK) {
        logMessage(log_, "The program is running already, out of reach of this session.", "general",
                   __FILE__, "startLocked()", __LINE__, LogLevel::error);
        return EXIT_FAILURE;
    }
    // A program that cannot be kept from starting twice is still better than none.
    logMessage(log_,
               "Could not find out whether the program is running already: locking " +
                   lockFile_.string() + ": " + std::generic_category().message(errno),
               "general", __FILE__, "startLocked()", __LINE__, LogLevel::error);
    return std::nullopt;
}

QDBusMessage SingleInstance::activateCall() const {
    auto activate = QDBusMessage::createMethodCall(identifier_, objectPath_, interfaceName,
                                                   QStringLiteral("Activate"));
    activate.setAutoStartService(false); // this is the start
    return activate << QVariantMap();
}

void SingleInstance::onActivate(std::function<void()> activated) {
    activated_ = std::move(activated);
    if (std::exchange(activationPending_, false)) {
        activated_();
    }
}

QString SingleInstance::introspect(const QString& /*path*/) const {
    return QStringLiteral(
        "<interface name=\"org.freedesktop.Application\">"
        "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
        "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" direction=\"in\"/></method>"
        "<method name=\"ActivateAction\"><arg type=\"s\" direction=\"in\"/>"
        "<arg type=\"av\" direction=\"in\"/>"
        "<arg type=\"a{sv}\" direction=\"in\"/></method></interface>");
}

bool SingleInstance::handleMessage(const QDBusMessage& call, const QDBusConnection& connection) {
    // There are no documents to open and no actions beside the panel itself: whatever is asked
    // for, bringing up the panel is what was meant.
    const QString signature = call.signature();
    const bool known =
        (call.member() == QStringLiteral("Activate") && signature == QStringLiteral("a{sv}")) ||
        (call.member() == QStringLiteral("Open") && signature == QStringLiteral("asa{sv}")) ||
        (call.member() == QStringLiteral("ActivateAction") &&
         signature == QStringLiteral("sava{sv}"));
    if (!known || (!call.interface().isEmpty() && call.interface() != interfaceName)) {
        return false;
    }
    connection.send(call.createReply()); // first: the caller waits for no drawing
    if (activated_) {
        activated_();
    } else {
        activationPending_ = true;
    }
    return true;
}

} // namespace tidewell
