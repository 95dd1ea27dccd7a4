#pragma once

#include "base/ports/Log.h"
#include "base/values/FileDescriptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>

namespace tidewell {

/// Lets the program run once for each user, and a second start bring up the first one's panel. The
/// first start owns the program's name on the session bus and answers `org.freedesktop.Application`
/// there. It also holds the flock() of a file for its life, for a program on another bus, or on
/// none: two of them would write the same store. The kernel releases it with the process, and
/// neither what the file holds nor what kind of file it is matters. Main thread.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `identifier` is the bus name; the object's path follows from it. `patience` bounds
    /// `start()` where the first program, or the bus, hangs.
    SingleInstance(QDBusConnection sessionBus, QString identifier, std::filesystem::path lockFile,
                   std::chrono::milliseconds patience, Log& log);
    ~SingleInstance() override;

    /// Whether this is the first start: empty if so, and otherwise the status that `main` ends
    /// with. That is 0 where the first one brought up its panel. It is 1, with one error line,
    /// where the first one did not answer within the patience, or runs out of reach of this
    /// session. Where it cannot be found out, this counts as the first, with one error line.
    /// Waits; to be called once, before anything is on screen.
    std::optional<int> start();

    /// Calls `activated` whenever the panel is to be brought up, at once if it was asked for
    /// already.
    void onActivate(std::function<void()> activated);

    // What other programs call over the bus. There are no documents to open and no actions beside
    // the panel itself: whatever is asked for, bringing up the panel is what was meant.
    Q_SLOT void Activate(const QVariantMap& platformData);
    Q_SLOT void Open(const QStringList& addresses, const QVariantMap& platformData);
    Q_SLOT void ActivateAction(const QString& action, const QVariantList& parameters,
                               const QVariantMap& platformData);

private:
    /// Claims it. False also where there is no bus to ask.
    bool isNameTaken(std::chrono::milliseconds limit);
    std::optional<int> startLocked();

    QDBusConnection bus_;
    QString identifier_;
    QString objectPath_;
    std::filesystem::path lockFile_;
    FileDescriptor lock_;
    std::chrono::milliseconds patience_;
    Log& log_;
    bool registered_ = false;
    bool activationPending_ = false;
    std::function<void()> activated_;
};

} // namespace tidewell
