#include "updater/download/Fetch.h"

#include "updater/UpdateProblem.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

#include <optional>

#include <unistd.h>

namespace tidewell {

namespace {

constexpr qsizetype longestReason = 500; // bytes
constexpr qsizetype mostErrorOutput = qsizetype{64} << 10;

/// What TLS and proxies need of the environment, and nothing else. No Kerberos ticket of the user's
/// answers a server that asks for one.
QProcessEnvironment environmentForFetching() {
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8")); // Qt remarks on others
    environment.insert(QStringLiteral("KRB5CCNAME"), QStringLiteral("MEMORY:"));
    environment.insert(QStringLiteral("KRB5_CONFIG"), QStringLiteral("/dev/null"));
    for (const char* name : {"http_proxy", "HTTP_PROXY", "https_proxy", "HTTPS_PROXY", "all_proxy",
                             "ALL_PROXY", "no_proxy", "NO_PROXY", "SSL_CERT_FILE"}) {
        if (qEnvironmentVariableIsSet(name)) {
            environment.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
        }
    }
    return environment;
}

} // namespace

Result<std::string> fetch(const FetchSettings& settings, const QUrl& address,
                          std::chrono::milliseconds limit, const std::stop_token& stop,
                          const std::function<Result<>(QByteArrayView piece)>& take) {
    QEventLoop loop; // of this thread; ends with the program, or before it with the first failure
    QProcess program;
    QTimer silence;
    QTimer whole;
    QByteArray reason;
    std::optional<Error> failed;
    const auto fail = [&](const std::string& text, const std::error_code& cause) {
        program.disconnect(&loop); // nothing more is taken
        failed = failed.value_or(Error{text, cause});
        loop.quit();
    };

    QObject::connect(&program, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&program, &QProcess::readyReadStandardOutput, &loop, [&] {
        silence.start();
        if (const auto taken = take(program.readAllStandardOutput()); !taken) {
            fail(taken.error().text, taken.error().cause);
        }
    });
    QObject::connect(&program, &QProcess::readyReadStandardError, &loop, [&] {
        reason += program.readAllStandardError();
        if (reason.size() > mostErrorOutput) {
            fail("the fetching program says too much", UpdateProblem::broken);
        }
    });
    for (const auto& [timer, time] : {std::pair(&silence, settings.silence), {&whole, limit}}) {
        timer->callOnTimeout(&loop, [&] { fail("it took too long", UpdateProblem::timedOut); });
        timer->start(time);
    }
    const std::stop_callback callOff(
        stop, [&loop] { QCoreApplication::postEvent(&loop, new QEvent(QEvent::Quit)); });

    program.setStandardInputFile(QProcess::nullDevice());
    program.setProcessEnvironment(environmentForFetching());
    program.start(settings.program, {QString::fromLatin1(address.toEncoded()),
                                     QString::number(settings.silence.count()),
                                     QString::number(::getpid()), settings.authorities});
    if (!program.waitForStarted(-1)) {
        return failure(program.errorString().toStdString(), UpdateProblem::broken);
    }
    loop.exec();
    if (stop.stop_requested()) {
        fail("it was called off", UpdateProblem::broken);
    }
    if (failed) {
        program.kill();
        program.waitForFinished(-1);
        return tl::unexpected(*failed);
    }
    std::string said = reason.simplified().left(longestReason).toStdString();
    const bool isEnd = program.exitStatus() == QProcess::NormalExit;
    if (isEnd && program.exitCode() == 0) {
        return said;
    }
    const auto problem = static_cast<UpdateProblem>(program.exitCode());
    if (isEnd && problem >= UpdateProblem::broken && problem <= UpdateProblem::timedOut) {
        return failure(said, problem);
    }
    return failure("the fetching program ended with " + std::string(isEnd ? "status " : "signal ") +
                       std::to_string(program.exitCode()) + (said.empty() ? "" : ": ") + said,
                   UpdateProblem::broken);
}

} // namespace tidewell
