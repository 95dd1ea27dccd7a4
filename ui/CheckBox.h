#pragma once

#include <QCheckBox>

namespace tidewell {

/// A check box with a visible frame on dark backgrounds, on which the Fusion style draws it darker
/// than these. Main thread.
class CheckBox final : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& position) const override { return rect().contains(position); }
};

} // namespace tidewell
