#include "desktop/session/SingleInstance.h"

#include "desktop/session/ServiceCall.h"

#include <QDBusError>
#include <QDeadlineTimer>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace tidewell {

namespace {

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
    registered_ = bus_.registerObject(objectPath_, this, QDBusConnection::ExportAllSlots);
    auto activate = QDBusMessage::createMethodCall(identifier_, objectPath_,
                                                   QStringLiteral("org.freedesktop.Application"),
                                                   QStringLiteral("Activate"));
    activate.setAutoStartService(false); // this is the start
    activate << QVariantMap();
    const QDeadlineTimer deadline(patience_);
    QDBusMessage reply;
    do {
        const auto left = [&deadline] {
            return std::chrono::milliseconds(std::max<qint64>(deadline.remainingTime(), 1));
        };
        if (!isNameTaken(left())) {
            return startLocked();
        }
        reply = bus_.call(activate, QDBus::Block, static_cast<int>(left().count()));
        if (reply.type() == QDBusMessage::ReplyMessage) {
            return EXIT_SUCCESS;
        }
    } while (isGone(reply) && !deadline.hasExpired());
    logError(log_, "The program is running already, but does not answer: " + errorText(reply),
             "start()");
    return EXIT_FAILURE;
}

bool SingleInstance::isNameTaken(std::chrono::milliseconds limit) {
    const uint doNotQueue = 4;
    const uint hasOtherOwner = 3;
    const auto reply =
        bus_.call(busCall(QStringLiteral("RequestName")) << identifier_ << doNotQueue, QDBus::Block,
                  static_cast<int>(limit.count()));
    return reply.type() == QDBusMessage::ReplyMessage &&
           reply.arguments().value(0).toUInt() == hasOtherOwner;
}

std::optional<int> SingleInstance::startLocked() {
    lock_ = openLockFile(lockFile_);
    if (flock(lock_.get(), LOCK_EX | LOCK_NB) == 0) {
        return std::nullopt;
    }
    if (errno == EWOULDBLOCK) {
        logError(log_, "The program is running already, out of reach of this session.",
                 "startLocked()");
        return EXIT_FAILURE;
    }
    // A program that cannot be kept from starting twice is still better than none.
    logError(log_,
             "Could not find out whether the program is running already: locking " +
                 lockFile_.string() + ": " + std::generic_category().message(errno),
             "startLocked()");
    return std::nullopt;
}

void SingleInstance::onActivate(std::function<void()> activated) {
    activated_ = std::move(activated);
    if (std::exchange(activationPending_, false)) {
        activated_();
    }
}

void SingleInstance::Activate(const QVariantMap& /*platformData*/) {
    // Queued: the reply goes out first, since the caller waits for no drawing.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (activated_) {
                activated_();
            } else {
                activationPending_ = true;
            }
        },
        Qt::QueuedConnection);
}

void SingleInstance::Open(const QStringList& /*addresses*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void SingleInstance::ActivateAction(const QString& /*action*/, const QVariantList& /*parameters*/,
                                    const QVariantMap& platformData) {
    Activate(platformData);
}

} // namespace tidewell
