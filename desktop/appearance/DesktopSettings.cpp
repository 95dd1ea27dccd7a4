#include "desktop/appearance/DesktopSettings.h"

#include "desktop/session/ServiceCall.h"

#include <QDBusVariant>

namespace tidewell {

namespace {

constexpr std::chrono::seconds patience{25};

/// The value itself: the portal's older method wraps it twice.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

void askForSetting(const QDBusConnection& bus, const SettingsService& service, const QString& group,
                   const QString& key, QObject& context,
                   std::function<void(const QVariant& value)> answer) {
    auto question = QDBusMessage::createMethodCall(service.name, service.path, service.interface,
                                                   service.method);
    question << group << key;
    question.setAutoStartService(service.isStarted);
    callService(bus, question, patience, context,
                [answer = std::move(answer)](const QDBusMessage& reply) {
                    const bool isValue = reply.type() == QDBusMessage::ReplyMessage;
                    answer(isValue ? unwrapped(reply.arguments().value(0)) : QVariant());
                });
}

} // namespace tidewell
