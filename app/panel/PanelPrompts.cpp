#include "app/panel/PanelPrompts.h"

#include "ui/Fonts.h"
#include "ui/Palette.h"
#include "ui/Pictures.h"
#include "ui/PushButton.h"

#include <QEvent>
#include <QMessageBox>
#include <QVBoxLayout>

#include <utility>

namespace tidewell {

namespace {

constexpr int promptHeight = 25;
constexpr int aroundPrompts = 5; // which is what the panel has room for with both
constexpr int belowPrompt = 15;  // its padding

} // namespace

PanelPrompts::PanelPrompts(QString applicationName, Actions actions)
    : applicationName_(std::move(applicationName))
    , actions_(std::move(actions)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    notificationPrompt_ =
        addPrompt(tr("Press to set Allow Notifications"), [this] { showNotificationSettings(); });
    updatePrompt_ = addPrompt(tr("Update available!"), actions_.checkForUpdates);
    applyPalette();
}

PushButton* PanelPrompts::addPrompt(const QString& title, std::function<void()> action) {
    auto* prompt = new PushButton(title);
    prompt->setFont(textFont(TextStyle::body, prompt->font()));
    prompt->setFixedHeight(promptHeight);
    connect(prompt, &QPushButton::clicked, this, std::move(action));
    // A row of its own, so that its padding is hidden with it.
    auto* row = new QWidget;
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, aroundPrompts, 0, belowPrompt);
    rowLayout->addWidget(prompt, 0, Qt::AlignHCenter);
    layout()->addWidget(row);
    return prompt;
}

void PanelPrompts::setShown(bool notificationPrompt, bool updatePrompt) {
    notificationPrompt_->parentWidget()->setVisible(notificationPrompt);
    updatePrompt_->parentWidget()->setVisible(updatePrompt);
    layout()->setContentsMargins(0, 0, 0, notificationPrompt || updatePrompt ? aroundPrompts : 0);
    layout()->activate(); // now, so that the panel is laid out once
}

void PanelPrompts::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange) {
        applyPalette();
    }
    QWidget::changeEvent(event);
}

void PanelPrompts::applyPalette() {
    QPalette red;
    red.setColor(QPalette::ButtonText, textColour(colours::systemRed, appearanceOf(palette())));
    notificationPrompt_->setPalette(red);
}

void PanelPrompts::showNotificationSettings() {
    if (actions_.openNotificationSettings()) {
        return;
    }
    auto* message = new QMessageBox(
        QMessageBox::Information, applicationName_,
        tr("This desktop has no notification settings that %1 can open.").arg(applicationName_),
        QMessageBox::Ok, this);
    message->setInformativeText(tr("Allow its notifications where your desktop keeps them."));
    message->setWindowIcon(applicationIcon());
    message->setAttribute(Qt::WA_DeleteOnClose);
    message->setAttribute(Qt::WA_WindowPropagation);
    message->setWindowFlag(Qt::WindowStaysOnTopHint); // as the panel does
    message->open();
}

} // namespace tidewell
