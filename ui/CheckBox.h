#pragma once

#include <QCheckBox>

namespace tidewell {

/// A check box whose frame stands out from dark grounds, too, where styles draw it darker than
/// those. Main thread.
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
