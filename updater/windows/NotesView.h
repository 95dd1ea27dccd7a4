#pragma once

#include <QTextBrowser>

namespace tidewell {

/// Shows release notes, Markdown, and nothing that is not in them: no file and no address is read
/// for them, pictures are left out, and HTML is shown as the text that it is. For a box around it.
/// Main thread.
class NotesView final : public QTextBrowser {
public:
    NotesView(const QString& markdown, const QString& accessibleName);

    QVariant loadResource(int /*type*/, const QUrl& /*name*/) override { return {}; }

protected:
    bool event(QEvent* event) override;

private:
    void tidy();
};

} // namespace tidewell
