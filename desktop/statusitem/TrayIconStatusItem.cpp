#include "desktop/statusitem/TrayIconStatusItem.h"

#include "desktop/statusitem/StatusMenu.h"
#include "ui/Symbols.h"

#include <QCursor>
#include <QPixmap>

namespace tidewell {

TrayIconStatusItem::TrayIconStatusItem(DesktopAppearance& appearance, StatusItemBehaviour behaviour)
    : appearance_(appearance)
    , behaviour_(std::move(behaviour))
    , appearanceChanged_(appearance.didChange([this] { draw(); })) {
    QObject::connect(&icon_, &QSystemTrayIcon::activated, &icon_,
                     [this](auto reason) { react(reason); });
}

void TrayIconStatusItem::setContent(const StatusItemContent& content) {
    if (icon_.isVisible() && content == content_) {
        return;
    }
    content_ = content;
    draw();
    icon_.setToolTip(QString::fromStdString(content.text));
    icon_.show();
}

void TrayIconStatusItem::draw() {
    QIcon icon;
    for (const int size : statusItemSizes) {
        if (const auto image = symbolImage(content_.symbolName,
                                           content_.colour.in(appearance_.statusArea()), size, 1)) {
            icon.addPixmap(QPixmap::fromImage(*image));
        }
    }
    icon_.setIcon(icon);
}

void TrayIconStatusItem::react(QSystemTrayIcon::ActivationReason reason) {
    switch (reason) {
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::MiddleClick: {
        const QRect place = icon_.geometry();
        const StatusItemActivation activation{QCursor::pos(), place.isValid() ? std::optional(place)
                                                                              : std::nullopt};
        // Queued: the call may run a nested event loop in which the icon is deleted.
        QMetaObject::invokeMethod(
            &icon_, [activated = behaviour_.activated, activation] { activated(activation); },
            Qt::QueuedConnection);
        break;
    }
    case QSystemTrayIcon::Context:
        popUpStatusMenu(behaviour_.menu, appearance_.desktop(), QCursor::pos());
        break;
    case QSystemTrayIcon::DoubleClick: // follows a Trigger
    case QSystemTrayIcon::Unknown:
        break;
    }
}

} // namespace tidewell
