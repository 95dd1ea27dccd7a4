#include "platform/linux/DesktopAnimations.h"

#include "platform/linux/ServiceCall.h"

#include <QDBusVariant>
#include <QVariant>

#include <chrono>

namespace tidewell {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString xfceService = QStringLiteral("org.xfce.Xfconf");

struct Setting {
    QString group;
    QString key;
    /// Whether the setting's value asks for stillness.
    bool (*wantsNone)(const QVariant& value);
};

// What has another type, or is no value at all, asks for nothing.
bool isFalse(const QVariant& value) {
    return value.metaType() == QMetaType::fromType<bool>() && !value.toBool();
}

bool isOne(const QVariant& value) {
    bool isNumber = false;
    return value.toUInt(&isNumber) == 1 && isNumber;
}

bool isZero(const QVariant& value) { // a number, or its text
    bool isNumber = false;
    return value.toDouble(&isNumber) == 0 && isNumber;
}

QDBusMessage portalQuestion(const Setting& setting) {
    auto question = QDBusMessage::createMethodCall(
        portalService, QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question << setting.group << setting.key;
    return question;
}

// Not started for us: where it does not run, this is not Xfce.
QDBusMessage xfceQuestion(const Setting& setting) {
    auto question = QDBusMessage::createMethodCall(xfceService, QStringLiteral("/org/xfce/Xfconf"),
                                                   xfceService, QStringLiteral("GetProperty"));
    question << setting.group << setting.key;
    question.setAutoStartService(false);
    return question;
}

} // namespace

DesktopAnimations::DesktopAnimations(const QDBusConnection& bus) {
    const auto ask = [&](const QDBusMessage& question, const Setting& setting) {
        callService(bus, question, std::chrono::seconds(25), *this,
                    [this, wantsNone = setting.wantsNone](const QDBusMessage& reply) {
                        QVariant value = reply.arguments().value(0);
                        while (value.metaType() == QMetaType::fromType<QDBusVariant>()) {
                            value = value.value<QDBusVariant>().variant();
                        }
                        if (reply.type() == QDBusMessage::ReplyMessage && wantsNone(value)) {
                            areWanted_ = false;
                        }
                    });
    };
    for (const Setting& setting : {
             Setting{QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion"),
                     isOne},
             Setting{QStringLiteral("org.gnome.desktop.interface"),
                     QStringLiteral("enable-animations"), isFalse},
             Setting{QStringLiteral("org.kde.kdeglobals.KDE"),
                     QStringLiteral("AnimationDurationFactor"), isZero},
         }) {
        ask(portalQuestion(setting), setting);
    }
    const Setting xfce{QStringLiteral("xsettings"), QStringLiteral("/Gtk/EnableAnimations"),
                       isFalse};
    ask(xfceQuestion(xfce), xfce);
}

} // namespace tidewell
