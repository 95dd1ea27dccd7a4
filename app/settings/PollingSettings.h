#pragma once

#include "base/ports/UserDefaults.h"

#include <QWidget>

#include <functional>

class QLabel;
class QSlider;

namespace tidewell {

class SymbolButton;

/// How often the models sample: a slider between two buttons, and the seconds in words. Each choice
/// is stored at the moment it is made. Main thread.
class PollingSettings final : public QWidget {
    Q_OBJECT

public:
    /// `animationsAreWanted` is asked each time something would move. `defaults` must outlive this.
    PollingSettings(UserDefaults& defaults, std::function<bool()> animationsAreWanted);

protected:
    void changeEvent(QEvent* event) override;

private:
    SymbolButton* makeStepper(const char* symbol, const QString& name, double step);
    void setInterval(double seconds);
    void setEditing(bool isEditing);
    void showInterval();

    UserDefaults& defaults_;
    std::function<bool()> animationsAreWanted_;
    double kPollingInterval_;
    bool isEditing_ = false;

    // Owned by their parents.
    SymbolButton* hare_;
    SymbolButton* tortoise_;
    QSlider* slider_;
    QLabel* label_;
};

} // namespace tidewell
