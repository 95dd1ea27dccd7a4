#include "updater/download/Fetch.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace tidewell {

namespace {

constexpr qsizetype longestReason = 500; // bytes

QTimer* makeTimer(QObject* parent, std::chrono::milliseconds interval) {
    auto* timer = new QTimer(parent);
    timer->setSingleShot(true);
    timer->setInterval(interval);
    return timer;
}

} // namespace

/// Not at once: it may be its own signal that ends it, and killing takes its time, too.
void Fetch::Letting::operator()(QProcess* process) const {
    process->disconnect();
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [process](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) { // and so never finishes
                             process->deleteLater();
                         }
                     });
    process->kill();
}

Fetch::Fetch(const FetchSettings& settings, const QUrl& address, Limits limits, Observer observer)
    : bytesLeft_(limits.bytes)
    , observer_(std::move(observer))
    , process_(new QProcess(QCoreApplication::instance()))
    , silence_(makeTimer(process_.get(), settings.silence))
    , limit_(makeTimer(process_.get(), limits.time)) {
    for (QTimer* timer : {silence_, limit_}) {
        QObject::connect(timer, &QTimer::timeout, process_.get(), [this] {
            end(FetchOutcome::timedOut, QStringLiteral("it took too long"));
        });
    }
    // Later: it may fail at once.
    QMetaObject::invokeMethod(
        process_.get(),
        [this, alive = std::weak_ptr(isAlive_), settings, address] {
            if (!alive.expired()) {
                start(settings, address);
            }
        },
        Qt::QueuedConnection);
}

Fetch::~Fetch() {
    // They go with the process, which may take a moment.
    silence_->stop();
    limit_->stop();
}

void Fetch::start(const FetchSettings& settings, const QUrl& address) {
    QProcess* process = process_.get();
    QObject::connect(process, &QProcess::readyReadStandardOutput, process, [this] { takeBytes(); });
    QObject::connect(process, &QProcess::errorOccurred, process,
                     [this, process](QProcess::ProcessError error) {
                         if (error == QProcess::FailedToStart) {
                             end(FetchOutcome::crashed, process->errorString());
                         }
                     });
    QObject::connect(process, &QProcess::finished, process, [this, process](int exitCode) {
        const std::weak_ptr<bool> alive = isAlive_;
        takeBytes();
        if (alive.expired() || !observer_.ended) {
            return;
        }
        const bool isOutcome =
            process->exitStatus() == QProcess::NormalExit &&
            (exitCode == 0 || (exitCode >= static_cast<int>(FetchOutcome::misused) &&
                               exitCode < static_cast<int>(FetchOutcome::crashed)));
        end(isOutcome ? static_cast<FetchOutcome>(exitCode) : FetchOutcome::crashed,
            QString::fromUtf8(process->readAllStandardError().trimmed().left(longestReason)));
    });
    process->setStandardInputFile(QProcess::nullDevice());
    silence_->start();
    limit_->start();
    process->start(settings.program,
                   {address.toString(QUrl::FullyEncoded), QString::number(settings.silence.count()),
                    QString::number(QCoreApplication::applicationPid()), settings.authorities},
                   QIODevice::ReadOnly);
}

void Fetch::takeBytes() {
    const QByteArray bytes = process_->readAllStandardOutput();
    if (bytes.isEmpty()) {
        return;
    }
    if (bytes.size() > bytesLeft_) {
        end(FetchOutcome::tooLarge, QStringLiteral("it is larger than it may be"));
        return;
    }
    bytesLeft_ -= bytes.size();
    silence_->start();
    const auto received = observer_.received;
    received(bytes);
}

void Fetch::end(FetchOutcome outcome, const QString& reason) {
    silence_->stop();
    limit_->stop();
    process_->disconnect();
    const auto ended = std::exchange(observer_.ended, nullptr);
    ended(outcome, reason);
}

} // namespace tidewell
