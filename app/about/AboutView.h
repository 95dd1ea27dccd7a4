#pragma once

#include "base/ports/Bundle.h"

#include <QWidget>

#include <functional>

class QUrl;

namespace tidewell {

/// The content of the about window: the program's icon, name, version, build credit, web site and
/// copyright. A click anywhere but on the button closes the window. Main thread.
class AboutView final : public QWidget {
    Q_OBJECT

public:
    struct Environment {
        const Bundle& bundle; ///< read when the view is made
        std::function<void(const QUrl& url)> openUrl;
        std::function<void()> dismissWindow; ///< closes the window that the view is in
    };

    explicit AboutView(Environment environment);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QWidget* makeTexts();
    void visitWebsite() const;

    Environment environment_;
};

} // namespace tidewell
