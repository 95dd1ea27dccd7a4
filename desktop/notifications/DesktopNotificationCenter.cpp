#include "desktop/notifications/DesktopNotificationCenter.h"

#include "desktop/session/ServiceCall.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QVariantMap>

namespace tidewell {

namespace {

const QString serviceName = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage serviceCall(const QString& method) {
    return QDBusMessage::createMethodCall(
        serviceName, QStringLiteral("/org/freedesktop/Notifications"), serviceName, method);
}

/// A failure where `reply` is an error.
Result<> resultOf(const QDBusMessage& reply) {
    if (reply.type() == QDBusMessage::ErrorMessage) {
        return failure(errorText(reply));
    }
    return {};
}

/// The lines that follow the title.
QStringList textLines(const NotificationRequest& request) {
    QStringList lines;
    if (request.subtitle && !request.subtitle->empty()) {
        lines << QString::fromStdString(*request.subtitle);
    }
    if (!request.body.empty()) {
        lines << QString::fromStdString(request.body);
    }
    return lines;
}

QString withoutMarkup(QString text) {
    text.replace(u'&', QStringLiteral("&amp;"));
    text.replace(u'<', QStringLiteral("&lt;"));
    text.replace(u'>', QStringLiteral("&gt;"));
    return text;
}

} // namespace

DesktopNotificationCenter::DesktopNotificationCenter(QDBusConnection sessionBus,
                                                     ContinuousClock& clock,
                                                     QString applicationName,
                                                     PermissionRecords records, Limits limits)
    : bus_(std::move(sessionBus))
    , clock_(clock)
    , applicationName_(std::move(applicationName))
    , records_(std::move(records))
    , limits_(limits) {}

void DesktopNotificationCenter::requestAuthorization(AuthorizationOptions /*options*/,
                                                     std::function<void(Result<bool>)> answer) {
    findService([this, answer = std::move(answer)](const Result<>& found) {
        if (!found) {
            answer(tl::unexpected(found.error()));
            return;
        }
        findWhetherDenied(records_, bus_, limits_.records, context_,
                          [answer](bool denied) { answer(!denied); });
    });
}

void DesktopNotificationCenter::findService(const Answer& found) {
    const auto lookAmongActivatable = [found](const QDBusMessage& reply) {
        auto result = resultOf(reply);
        if (result && !reply.arguments().value(0).toStringList().contains(serviceName)) {
            result = failure("this session has no notification service (" +
                             serviceName.toStdString() + ")");
        }
        found(result);
    };
    const auto lookAtOwner = [this, found, lookAmongActivatable](const QDBusMessage& reply) {
        const auto result = resultOf(reply);
        if (!result || reply.arguments().value(0).toBool()) {
            found(result);
            return;
        }
        // It may be D-Bus activated, and not be running yet.
        callService(bus_, busCall(QStringLiteral("ListActivatableNames")), limits_.bus, context_,
                    lookAmongActivatable);
    };
    callService(bus_, busCall(QStringLiteral("NameHasOwner")) << serviceName, limits_.bus, context_,
                lookAtOwner);
}

void DesktopNotificationCenter::add(NotificationRequest request, Answer answer) {
    const auto delay = request.delay.count();
    clock_.setAlarm(after(clock_.now(), delay),
                    [this, alive = QPointer<QObject>(&context_), request = std::move(request),
                     answer = std::move(answer)] {
                        if (alive) {
                            deliver(request, answer);
                        }
                    });
}

void DesktopNotificationCenter::deliver(const NotificationRequest& request, Answer answer) {
    const QDeadlineTimer deadline(limits_.delivery);
    const auto notify = [this, request, answer = std::move(answer),
                         deadline](const QDBusMessage& capabilities) {
        if (const auto result = resultOf(capabilities); !result) {
            answer(result);
            return;
        }
        callService(bus_, notifyCall(request, capabilities.arguments().value(0).toStringList()),
                    std::chrono::milliseconds(deadline.remainingTime()), context_,
                    [answer](const QDBusMessage& reply) { answer(resultOf(reply)); });
    };
    callService(bus_, serviceCall(QStringLiteral("GetCapabilities")), limits_.delivery, context_,
                notify);
}

QDBusMessage DesktopNotificationCenter::notifyCall(const NotificationRequest& request,
                                                   const QStringList& capabilities) const {
    QStringList summary = {QString::fromStdString(request.title)};
    QString body;
    if (capabilities.contains(QStringLiteral("body"))) {
        body = textLines(request).join(u'\n');
    } else {
        summary << textLines(request); // one line is all there is
    }
    if (capabilities.contains(QStringLiteral("body-markup"))) {
        body = withoutMarkup(body);
    }
    QVariantMap hints = {
        {QStringLiteral("desktop-entry"), records_.identifier},
        {QStringLiteral("urgency"), QVariant::fromValue(uchar{1})}, // normal
    };
    if (capabilities.contains(QStringLiteral("sound"))) {
        hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    }
    const uint replacesNone = 0;
    const int expiresAsUsual = -1;
    return serviceCall(QStringLiteral("Notify"))
           << applicationName_ << replacesNone << records_.identifier // the icon has its name
           << summary.join(QStringLiteral(" – ")) << body << QStringList() << hints
           << expiresAsUsual;
}

} // namespace tidewell
