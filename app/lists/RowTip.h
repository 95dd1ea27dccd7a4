#pragma once

#include <QLabel>

namespace tidewell {

/// A tooltip that the pointer goes through. With QToolTip, which does not let it, a window that
/// closes when the pointer leaves it would close because of its own tooltips. Main thread.
class RowTip final : public QLabel {
public:
    /// Shown in the palette of `parent`, which owns it.
    explicit RowTip(QWidget* parent);

    /// Shows plain text near the pointer at `position`, wholly on its screen.
    void showText(const QString& text, QPoint position);
};

} // namespace tidewell
