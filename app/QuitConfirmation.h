#pragma once

#include "base/ports/UserDefaults.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>
#include <QWidget>

#include <functional>

namespace tidewell {

/// The way out that the user chooses: at once, or after a modal question, as the preference says.
/// Main thread.
class QuitConfirmation final {
    Q_DECLARE_TR_FUNCTIONS(QuitConfirmation)

public:
    /// `quit` ends the program after the current event. The question belongs to `window`. All
    /// must outlive this object.
    QuitConfirmation(const UserDefaults& defaults, QString applicationName, QWidget& window,
                     std::function<void()> quit);

    /// Quits, or asks. Returns at once: the question blocks the program's other windows, not its
    /// caller. A question that is open already comes to the front.
    void confirmQuit();

private:
    const UserDefaults& defaults_;
    QString applicationName_;
    QWidget& window_;
    std::function<void()> quit_;
    QPointer<QMessageBox> question_;
};

} // namespace tidewell
