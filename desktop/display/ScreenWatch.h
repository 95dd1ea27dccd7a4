#pragma once

#include <QObject>

#include <functional>

class QScreen;

namespace tidewell {

/// Tells when a screen has come, gone or changed its geometry, or bars leave another part of it.
/// Main thread.
class ScreenWatch final : public QObject {
public:
    /// `changed` is called at once, perhaps several times for one change. After the application
    /// object.
    explicit ScreenWatch(std::function<void()> changed);

private:
    void follow(const QScreen* screen);

    std::function<void()> changed_;
};

} // namespace tidewell
