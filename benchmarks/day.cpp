// A day of the whole program in virtual time, on a bus of its own: each minute the panel and the
// process window open and close and the level changes; each hour the host and the notification
// daemon start anew and a setting changes. Prints what the program takes each hour, and ends with 1
// where that grew after the third.

#include "app/Platform.h"
#include "app/TidewellApp.h"
#include "app/lists/ShowItemList.h"
#include "benchmarks/Measuring.h"
#include "desktop/files/FileUserDefaults.h"
#include "desktop/notifications/DesktopNotificationCenter.h"
#include "desktop/statusitem/StatusItemForms.h"
#include "model/preferences/StoredPreferences.h"
#include "tests/desktop/PrivateBus.h"
#include "tests/fakes/FakeProbes.h"
#include "tests/fakes/ManualClock.h"
#include "tests/fakes/ManualExecutor.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusVariant>

#include <cstdio>
#include <filesystem>

namespace tidewell {
namespace {

struct NeverAtLogin final : LoginItem {
    Result<> registerApplication() override { return {}; }
    Result<> unregisterApplication() override { return {}; }
};

/// A host of status items and a notification daemon, gone with this.
class Services {
public:
    Services(PrivateBus& bus, int& alerts)
        : host_(bus.connect(), u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                [](const QDBusMessage& call, const QDBusConnection& connection) {
                    connection.send(call.member() == u"Get"_s
                                        ? call.createReply(QVariant::fromValue(QDBusVariant(true)))
                                        : call.createReply());
                })
        , daemon_(bus.connect(), u"org.freedesktop.Notifications"_s,
                  u"/org/freedesktop/Notifications"_s,
                  [&alerts](const QDBusMessage& call, const QDBusConnection& connection) {
                      const bool isAlert = call.member() == u"Notify"_s;
                      alerts += isAlert ? 1 : 0;
                      connection.send(
                          call.createReply(isAlert ? QVariant(1U) : QVariant(QStringList())));
                  }) {}

private:
    FakeService host_;
    FakeService daemon_;
};

class Day {
public:
    Day() { app_.start(); }

    /// Whether nothing grew.
    bool pass() {
        std::map<std::string, double> settled;
        bool grew = false;
        for (int hour = 0; hour < 24; ++hour) {
            for (int minute = 0; minute < 60; ++minute) {
                passMinute(minute);
            }
            services_.reset();
            settle();
            services_ = std::make_unique<Services>(bus_, alerts_);
            write(defaults_, preferences::pollingInterval, 1.0 + hour % 10);
            settle();
            std::printf("hour %2d", hour + 1);
            for (const auto& [name, count] : taken()) {
                std::printf("   %s %.0f", name.c_str(), count);
                const double limit = name == "kB" ? 1.05 : 1;
                grew |= hour > 2 && count > limit * settled[name];
                settled[name] = hour > 2 ? settled[name] : std::max(settled[name], count);
            }
            std::printf("   opened %d   alerts %d\n", opened_, alerts_);
        }
        return !grew;
    }

private:
    void passMinute(int minute) {
        const std::uint64_t used = minute % 3 == 0 ? 0 : minute % 3 == 1 ? 5 : 20;
        probes_.swap = SwapUsage{
            .total = std::uint64_t{32} << 30U, .used = used << 30U, .free = (32 - used) << 30U};
        for (int second = 0; second < 60; ++second) {
            clock_.advance(1);
            settle();
            if (second == 30) {
                openAndClose();
            }
        }
    }

    void openAndClose() {
        app_.openPanel();
        settle();
        const auto windows = QApplication::topLevelWidgets();
        QWidget* const panel = *std::ranges::find_if(
            windows, [](QWidget* each) { return dynamic_cast<PanelWindow*>(each) != nullptr; });
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QApplication::sendEvent(panel->findChild<ShowItemList*>(), &press);
        settle();
        clock_.advance(1);
        settle();
        for (const QWidget* const window : QApplication::topLevelWidgets()) {
            opened_ += window->isVisible() && window->objectName() == u"appMemory"_s ? 1 : 0;
        }
        panel->close();
        settle();
    }

    void settle() {
        do {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        } while (mainThread_.drain() + worker_.drain() > 0);
    }

    std::map<std::string, double> taken() {
        const auto count = [](const char* folder) {
            return static_cast<double>(
                std::distance(std::filesystem::directory_iterator(folder), {}));
        };
        auto question = QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
            u"org.freedesktop.DBus.Debug.Stats"_s, u"GetConnectionStats"_s);
        question << connection_.baseService();
        const auto onBus =
            qdbus_cast<QVariantMap>(answerTo(question, connection_).arguments().value(0));
        return {{"kB", ownMemory("Private_Dirty")},
                {"descriptors", count("/proc/self/fd")},
                {"threads", count("/proc/self/task")},
                {"names", onBus.value(u"BusNames"_s).toDouble()},
                {"matches", onBus.value(u"MatchRules"_s).toDouble()}};
    }

    PrivateBus bus_;
    int alerts_ = 0;
    int opened_ = 0;
    std::unique_ptr<Services> services_ = std::make_unique<Services>(bus_, alerts_);
    QDBusConnection connection_ = bus_.connect();
    TemporaryFolder folder_;
    SilentLog log_;
    Bundle bundle_{{{"CFBundleName", "Tidewell"}}};
    FileUserDefaults defaults_{folder_.path() / "defaults.json", log_};
    FakeProbes probes_;
    ManualClock clock_;
    ManualExecutor mainThread_;
    ManualExecutor worker_;
    DesktopNotificationCenter notificationCenter_{connection_, clock_, u"Tidewell"_s, {}, {}};
    LocalSettings localSettings_{{}};
    DesktopAppearance appearance_{connection_, {}, localSettings_};
    StatusItemPlace place_{{}};
    LinuxApplicationSource applications_{LinuxApplicationSource::usualSettings(), worker_, log_};
    NeverAtLogin loginItem_;
    TidewellApp app_{ApplicationEnvironment{
        .log = log_,
        .bundle = bundle_,
        .defaults = defaults_,
        .clock = clock_,
        .mainThread = mainThread_,
        .schedulerThread = worker_,
        .probes = probes_,
        .applications = applications_,
        .notificationCenter = notificationCenter_,
        .loginItem = loginItem_,
        .appearance = appearance_,
        .itemPlace = place_,
        .makeStatusItem =
            [this](const StatusItemBehaviour& behaviour) {
                return std::make_unique<StatusItemSwitcher>(
                    clock_,
                    statusItemForms(connection_, appearance_, place_,
                                    KeptLabelPosition{defaults_, preferences::labelWindowPos}, log_,
                                    behaviour));
            },
        .makeUpdater = {},
        .openNotificationSettings = [] { return true; },
        .openUrl = [](const QUrl&) {},
        .processesAreHidden = false,
        .animationsAreWanted = [] { return false; },
    }};
};

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return tidewell::Day().pass() ? EXIT_SUCCESS : EXIT_FAILURE;
}
