#pragma once

#include <QDialog>
#include <QString>

#include <functional>
#include <vector>

class QHBoxLayout;

namespace tidewell {

/// A window with the program's icon, a headline, a text, perhaps something more, and buttons. It
/// is as large as its content, which is set as a whole. Main thread.
class UpdateWindow final : public QDialog {
public:
    enum class Role {
        confirm, ///< the default button
        dismiss, ///< also what Escape and closing the window do
        other,   ///< stands apart
    };
    struct Button {
        QString text;
        Role role;
        std::function<void()> action;
    };
    /// Without a button that confirms or dismisses, the window cannot be closed. A single button
    /// may confirm only: closing the window does the same then.
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
    /// What is below may have grown past the screen's edge. A window manager that is told a new
    /// size while it still places the window may put it there, too.
    void stayOnScreen();
    QWidget* makeButtons();

    QHBoxLayout* layout_;
    QWidget* body_ = nullptr;
    std::vector<Button> buttons_;
};

} // namespace tidewell
