#pragma once

#include <QDialog>
#include <QString>

#include <functional>
#include <vector>

class QHBoxLayout;

namespace tidewell {

/// A dialog with the program's icon, a headline, a text, perhaps another widget, and a row of
/// buttons. Its size follows from its content, which is replaced as a whole. Main thread.
class UpdateWindow final : public QDialog {
public:
    enum class Role {
        confirm, ///< the default button
        dismiss, ///< also what Escape and closing the window do
        other,   ///< at the other end of the row
    };
    struct Button {
        QString text;
        Role role;
        std::function<void()> action;
    };
    /// Closing the window does what the button that dismisses does, or else the one that confirms.
    /// Without either it cannot be closed.
    struct Content {
        QString headline;
        QString text;   ///< may be empty
        QWidget* extra; ///< owned by the window from now on; may be null
        std::vector<Button> buttons;
    };

    explicit UpdateWindow(const QString& applicationName);

    /// Of the content's actions at most one is called, once.
    void setContent(Content content);

    void reject() override;

private:
    void act(std::size_t button);
    /// Moves the window back onto its screen: new content may have made it larger, and a window
    /// manager may misplace a window that is resized while it is being mapped.
    void stayOnScreen();
    QWidget* makeButtons();

    QHBoxLayout* layout_;
    QWidget* body_ = nullptr;
    std::vector<Button> buttons_;
};

} // namespace tidewell
