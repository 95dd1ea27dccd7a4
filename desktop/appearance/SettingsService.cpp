#include "desktop/appearance/SettingsService.h"

#include "desktop/session/ServiceCall.h"

#include <QDBusVariant>

namespace tidewell {

namespace {

constexpr std::chrono::seconds timeout{25};

/// The portal's Read wraps the value in a variant twice.
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
    callService(bus, question, timeout, context,
                [answer = std::move(answer)](const QDBusMessage& reply) {
                    const bool isValue = reply.type() == QDBusMessage::ReplyMessage;
                    answer(isValue ? unwrapped(reply.arguments().value(0)) : QVariant());
                });
}

} // namespace tidewell
