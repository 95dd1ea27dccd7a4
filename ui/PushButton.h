#pragma once

#include <QKeyEvent>
#include <QPushButton>

namespace tidewell {

/// Clicks the button if that is what the key stands for, whatever the desktop's platform theme
/// says.
inline bool pressByReturn(QAbstractButton& button, const QKeyEvent& event) {
    if (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter) {
        return false;
    }
    button.click();
    return true;
}

/// Return and Enter press it: which keys do so otherwise depends on the desktop's platform theme.
/// Main thread.
class PushButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!pressByReturn(*this, *event)) {
            QPushButton::keyPressEvent(event);
        }
    }
};

} // namespace tidewell
