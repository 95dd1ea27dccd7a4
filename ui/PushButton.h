#pragma once

#include <QPushButton>

namespace tidewell {

/// A button with more room beside its text than every style leaves.
class PushButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override { return QPushButton::sizeHint() + QSize(12, 0); }
    QSize minimumSizeHint() const override { return sizeHint(); }
};

} // namespace tidewell
