#pragma once

#include "updater/download/FetchOutcome.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <chrono>
#include <functional>
#include <memory>

class QProcess;
class QTimer;

namespace tidewell {

/// What fetches files for the updater, and for how long it is waited for.
struct FetchSettings {
    QString program;     ///< the path of tidewell-fetch
    QString authorities; ///< certificates to trust besides the system's, a PEM file; may be empty
    std::chrono::milliseconds silence{std::chrono::seconds(20)}; ///< longest without a byte
    std::chrono::milliseconds feedLimit{std::chrono::minutes(1)};
    std::chrono::milliseconds fileLimit{std::chrono::hours(6)};
};

/// Fetches one file, in a process of its own that goes with this object. Main thread; does not
/// block.
class Fetch final {
public:
    struct Limits {
        qint64 bytes;                   ///< more than that ends it as `tooLarge`
        std::chrono::milliseconds time; ///< altogether
    };
    struct Observer {
        std::function<void(const QByteArray& bytes)> received;
        /// Last, and once; `reason` is for the log. Neither of the two is called from within the
        /// constructor, and both may destroy the fetch.
        std::function<void(FetchOutcome outcome, const QString& reason)> ended;
    };

    Fetch(const FetchSettings& settings, const QUrl& address, Limits limits, Observer observer);
    Fetch(const Fetch&) = delete;
    Fetch& operator=(const Fetch&) = delete;
    /// Calls it off; the observer is told nothing any more.
    ~Fetch();

private:
    struct Letting {
        void operator()(QProcess* process) const;
    };

    void start(const FetchSettings& settings, const QUrl& address);
    void takeBytes();
    void end(FetchOutcome outcome, const QString& reason);

    qint64 bytesLeft_;
    Observer observer_;
    std::unique_ptr<QProcess, Letting> process_;
    QTimer* silence_; // both are the process's children
    QTimer* limit_;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true); // observers may destroy this
};

} // namespace tidewell
