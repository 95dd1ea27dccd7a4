#include "desktop/notifications/PermissionRecords.h"

#include "base/values/ReadFile.h"
#include "desktop/session/ServiceCall.h"

#include <QDBusArgument>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>

#include <memory>
#include <optional>

#include <fcntl.h>

namespace tidewell {

namespace {

using Report = std::function<void(bool denied)>;

constexpr std::size_t largestSettingsFile = std::size_t{1} << 20U;

/// What one file of KDE's settings says about pop-ups; empty when it says nothing.
std::optional<bool> popupsInFile(const QString& path, const QString& identifier) {
    const auto content =
        readFile(AT_FDCWD, QFile::encodeName(path).constData(), largestSettingsFile);
    if (!content) {
        return std::nullopt;
    }
    const QString group = QStringLiteral("[Applications][%1]").arg(identifier);
    const QStringList no = {QStringLiteral("false"), QStringLiteral("no"), QStringLiteral("off"),
                            QStringLiteral("0")};
    std::optional<bool> popups;
    bool inGroup = false;
    const auto lines = QString::fromStdString(*content).split(u'\n');
    for (const QString& line : lines) {
        const QString text = line.trimmed();
        if (text.startsWith(u'[')) {
            inGroup = text == group;
        } else if (inGroup && text.section(u'=', 0, 0).trimmed() == QStringLiteral("ShowPopups")) {
            popups = !no.contains(text.section(u'=', 1).trimmed(), Qt::CaseInsensitive);
        }
    }
    return popups;
}

bool plasmaDenies(const PermissionRecords& records) {
    if (!records.desktops.contains(QStringLiteral("KDE"))) {
        return false;
    }
    for (const QString& folder : records.configurationPaths) {
        const auto popups =
            popupsInFile(folder + QStringLiteral("/plasmanotifyrc"), records.identifier);
        if (popups) {
            return !*popups;
        }
    }
    return false;
}

/// The portals' store. It is no daemon of the desktop but a small program that the bus starts on
/// demand and that ends by itself; where no portal is installed the bus refuses at once.
void askPermissionStore(const PermissionRecords& records, const QDBusConnection& bus,
                        std::chrono::milliseconds limit, QObject& context, Report report) {
    auto lookup = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.impl.portal.PermissionStore"),
        QStringLiteral("/org/freedesktop/impl/portal/PermissionStore"),
        QStringLiteral("org.freedesktop.impl.portal.PermissionStore"), QStringLiteral("Lookup"));
    lookup << QStringLiteral("notifications") << QStringLiteral("notification");
    callService(
        bus, lookup, limit, context,
        [report = std::move(report), identifier = records.identifier](const QDBusMessage& reply) {
            bool denied = false;
            if (reply.type() == QDBusMessage::ReplyMessage &&
                reply.signature().startsWith(QStringLiteral("a{sas}"))) {
                const auto permissions =
                    qdbus_cast<QMap<QString, QStringList>>(reply.arguments().first());
                denied = permissions.value(identifier).value(0) == QStringLiteral("no");
            }
            report(denied);
        });
}

/// GNOME keeps the switch of a program in a relocatable schema, below a path made from its
/// identifier.
QString gnomeSchema(const QString& identifier) {
    QString folder = identifier.toLower();
    for (QChar& character : folder) {
        if (character.unicode() > 0x7f || !character.isLetterOrNumber()) {
            character = u'-';
        }
    }
    return QStringLiteral("org.gnome.desktop.notifications.application:"
                          "/org/gnome/desktop/notifications/application/%1/")
        .arg(folder);
}

/// GNOME's settings are read through the tool that comes with every GNOME: the store is a binary
/// database with its own layers of defaults, the settings portal does not give this part of it
/// out, and the library would weigh more than this one Boolean, asked for once an alert, is worth.
void askGnomeSettings(const PermissionRecords& records, std::chrono::milliseconds limit,
                      QObject& context, const Report& report) {
    const bool isGnome = records.desktops.contains(QStringLiteral("GNOME")) ||
                         records.desktops.contains(QStringLiteral("Unity"));
    if (!isGnome || records.gsettings.isEmpty()) {
        report(false);
        return;
    }
    auto* tool = new QProcess(&context);
    tool->setStandardInputFile(QProcess::nullDevice());
    tool->setStandardErrorFile(QProcess::nullDevice());
    auto* const patience = new QTimer(tool);
    patience->setSingleShot(true);
    QObject::connect(tool, &QProcess::finished, &context, [tool, patience, report](int exitCode) {
        tool->deleteLater();
        if (patience->isActive()) {
            patience->stop(); // it may be due in this very pass of the event loop
            report(tool->exitStatus() == QProcess::NormalExit && exitCode == 0 &&
                   tool->readAllStandardOutput().trimmed() == "false");
        }
    });
    QObject::connect(tool, &QProcess::errorOccurred, &context,
                     [tool, patience, report](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) { // only then it does not finish
                             tool->deleteLater();
                             patience->stop();
                             report(false);
                         }
                     });
    // Nor does it finish soon in an uninterruptible sleep: its end is not waited for.
    QObject::connect(patience, &QTimer::timeout, tool, [tool, report] {
        tool->kill();
        report(false);
    });
    patience->start(limit);
    tool->start(records.gsettings,
                {QStringLiteral("get"), gnomeSchema(records.identifier), QStringLiteral("enable")},
                QIODevice::ReadOnly);
}

} // namespace

PermissionRecords permissionRecordsOfThisSession(const QString& identifier) {
    return {identifier, qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts),
            QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
            QStandardPaths::findExecutable(QStringLiteral("gsettings"))};
}

void findWhetherDenied(const PermissionRecords& records, const QDBusConnection& bus,
                       std::chrono::milliseconds limit, QObject& context, Report answer) {
    if (plasmaDenies(records)) {
        answer(true);
        return;
    }
    // The others are asked at the same time; the first that denies settles it.
    const auto outstanding = std::make_shared<int>(2);
    const Report report = [outstanding, answer = std::move(answer)](bool denied) {
        if (*outstanding == 0) {
            return; // settled
        }
        --*outstanding;
        if (*outstanding == 0 || denied) {
            *outstanding = 0;
            answer(denied);
        }
    };
    askPermissionStore(records, bus, limit, context, report);
    askGnomeSettings(records, limit, context, report);
}

} // namespace tidewell
