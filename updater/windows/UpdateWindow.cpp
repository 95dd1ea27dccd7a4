#include "updater/windows/UpdateWindow.h"

#include "ui/Fonts.h"
#include "ui/Geometry.h"
#include "ui/Pictures.h"
#include "ui/PushButton.h"
#include "ui/TextDirection.h"

#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tidewell {

namespace {

using namespace std::chrono_literals;

constexpr auto untilPlaced = 200ms; // what a window manager takes to map a window
constexpr int margin = 20;
constexpr int iconSize = 56;
constexpr int textWidth = 440;

QLabel* makeText(const QString& text, TextStyle style) {
    auto* label = new QLabel(alongLayout(text));
    label->setFont(textFont(style, label->font()));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    return label;
}

} // namespace

UpdateWindow::UpdateWindow(const QString& applicationName)
    : layout_(new QHBoxLayout(this)) {
    setWindowTitle(applicationName);
    setWindowIcon(applicationIcon());
    auto* icon = new PictureView(drawApplicationIcon);
    icon->setFixedSize(iconSize, iconSize);
    icon->setAccessibleName(applicationName);
    layout_->setContentsMargins(margin, margin, margin, margin);
    layout_->setSpacing(16);
    layout_->addWidget(icon, 0, Qt::AlignTop);
    layout_->setSizeConstraint(QLayout::SetFixedSize);
}

void UpdateWindow::setContent(Content content) {
    buttons_ = std::move(content.buttons);
    if (body_ != nullptr) {
        body_->hide();
        body_->deleteLater(); // it may be one of its buttons that brought us here
    }
    body_ = new QWidget;
    auto* column = new QVBoxLayout(body_);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(makeText(content.headline, TextStyle::headline));
    if (!content.text.isEmpty()) {
        column->addWidget(makeText(content.text, TextStyle::body));
    }
    if (content.extra != nullptr) {
        column->addSpacing(4);
        column->addWidget(content.extra);
    }
    if (!buttons_.empty()) {
        column->addSpacing(8);
        column->addWidget(makeButtons());
    }
    layout_->addWidget(body_);
    body_->show();
    // Only now: setDefault() and setFocus() need the button to be in its dialog. It gets the focus,
    // too, since with some platform themes Return presses the focused button, not the default one.
    for (QPushButton* button : body_->findChildren<QPushButton*>()) {
        if (button->autoDefault()) {
            button->setDefault(true);
            button->setFocus();
        }
    }
    setAccessibleDescription(content.headline + u'\n' + content.text);
    QTimer::singleShot(untilPlaced, this, &UpdateWindow::stayOnScreen);
}

void UpdateWindow::stayOnScreen() {
    const QRect available = screen()->availableGeometry();
    const QRect frame = frameGeometry();
    if (isVisible() && !available.contains(frame)) {
        move(movedInto(available, frame).topLeft().toPoint());
    }
}

QWidget* UpdateWindow::makeButtons() {
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    layout->addSpacing(16); // at least, beside what stands apart
    layout->addStretch();
    for (std::size_t index = 0; index < buttons_.size(); ++index) {
        const Button& button = buttons_[index];
        auto* widget = new PushButton(button.text);
        widget->setFont(textFont(TextStyle::body, widget->font()));
        connect(widget, &QPushButton::clicked, this, [this, index] { act(index); });
        if (button.role == Role::other) {
            layout->insertWidget(0, widget);
        } else {
            layout->addWidget(widget);
        }
        widget->setAutoDefault(button.role == Role::confirm);
    }
    return row;
}

void UpdateWindow::act(std::size_t button) {
    if (button < buttons_.size()) {
        const auto buttons = std::exchange(buttons_, {});
        buttons[button].action();
    }
}

void UpdateWindow::reject() {
    auto found = std::ranges::find(buttons_, Role::dismiss, &Button::role);
    if (found == buttons_.end()) {
        found = std::ranges::find(buttons_, Role::confirm, &Button::role);
    }
    act(static_cast<std::size_t>(found - buttons_.begin()));
}

} // namespace tidewell
