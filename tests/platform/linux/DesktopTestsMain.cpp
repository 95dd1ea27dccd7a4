#include "platform/linux/SingleInstance.h"
#include "tests/fakes/RecordingLog.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

#include <chrono>
#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The other program of the single-instance tests: says what becomes of it, line by line.
int runInstance(const QString& busAddress, const QString& lockFile) {
    const auto say = [](const char* line) {
        std::puts(line);
        std::fflush(stdout);
    };
    tidewell::RecordingLog log;
    tidewell::SingleInstance instance(QDBusConnection::connectToBus(busAddress, u"instance"_s),
                                      u"net.tidewell.Tidewell"_s, lockFile,
                                      std::chrono::seconds(20), log);
    if (const auto status = instance.start()) {
        say("second");
        return *status;
    }
    instance.onActivate([say] { say("activated"); });
    say("first");
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen"); // no display needed
    testing::InitGoogleTest(&argc, argv);
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.value(1) == u"--run-instance"_s) {
        return runInstance(arguments.value(2), arguments.value(3));
    }
    return RUN_ALL_TESTS();
}
