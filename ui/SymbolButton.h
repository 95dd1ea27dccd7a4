#pragma once

#include "ui/Symbols.h"

#include <QAbstractButton>

#include <string_view>

class QVariantAnimation;

namespace tidewell {

/// A button that shows nothing but its symbol, on a soft ground while the pointer is over it or
/// while it is pressed. A click gives it no focus. Main thread.
class SymbolButton final : public QAbstractButton {
public:
    /// `symbol` is a name in `ui/Symbols.h`; `name` is what assistive technology says. The
    /// symbol is drawn in a square of `symbolSize` points.
    SymbolButton(std::string_view symbol, const QString& name, int symbolSize = 20);

    /// Lets the symbol jump up once.
    void bounce();

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    SymbolPicture symbol_;
    double height_ = 0;                 ///< points that the symbol jumps above its place just now
    QVariantAnimation* jump_ = nullptr; ///< made for the first one; owned by the button
};

} // namespace tidewell
