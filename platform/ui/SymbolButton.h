#pragma once

#include <QAbstractButton>

#include <string>
#include <string_view>

namespace tidewell {

/// A button that shows nothing but its symbol, on a soft ground while the pointer is over it or
/// while it is pressed, and with a ring once the keyboard has brought the focus to it. A window
/// that opens with the focus on it shows no ring yet, and a click gives it no focus. Main thread.
class SymbolButton final : public QAbstractButton {
public:
    /// `symbol` is a name that `hasSymbol` knows; `name` is what assistive technology says. The
    /// symbol is drawn in a square of `symbolSize` points.
    SymbolButton(std::string_view symbol, const QString& name, int symbolSize = 20,
                 QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void showRing(bool show);

    std::string symbol_;
    int symbolSize_;
    bool showsRing_ = false;
};

} // namespace tidewell
