#include "app/panel/PanelToolbar.h"

#include "app/SceneWindows.h"
#include "ui/SymbolButton.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QShortcut>

namespace tidewell {

namespace {

constexpr int buttonSize = 26;

} // namespace

PanelToolbar::PanelToolbar(const QString& applicationName, SceneWindows& windows,
                           const std::function<void()>& confirmQuit, QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    const QKeySequence settings(Qt::CTRL | Qt::Key_Comma);
    const QKeySequence quit(Qt::CTRL | Qt::Key_Q);
    add("info.circle", tr("About"), tr("About %1").arg(applicationName), {},
        [&windows] { windows.openAuxiliaryWindow(SceneIdentifier::about); });
    add("gear", tr("Settings"),
        tr("Go to Settings - %1").arg(settings.toString(QKeySequence::NativeText)), settings,
        [&windows] { windows.openAuxiliaryWindow(SceneIdentifier::settings); });
    add("power", tr("Quit"),
        tr("Quit %1 - %2").arg(applicationName, quit.toString(QKeySequence::NativeText)), quit,
        confirmQuit);
    adjustSize();
}

void PanelToolbar::add(std::string_view symbol, const QString& name, const QString& help,
                       const QKeySequence& keys, const std::function<void()>& action) {
    auto* button = new SymbolButton(symbol, name);
    button->setFixedSize(buttonSize, buttonSize);
    button->setToolTip(help);
    if (!keys.isEmpty()) {
        auto* shortcut = new QShortcut(keys, button);
        // Hovering the panel may have made another of the program's windows the active one.
        shortcut->setContext(Qt::ApplicationShortcut);
        connect(shortcut, &QShortcut::activated, button, &SymbolButton::animateClick);
    }
    connect(button, &SymbolButton::clicked, button, action);
    layout()->addWidget(button);
}

} // namespace tidewell
