#include "desktop/statusitem/TrayIconStatusItem.h"

#include "ui/Symbols.h"

#include <QCursor>
#include <QPixmap>

namespace tidewell {

TrayIconStatusItem::TrayIconStatusItem(DesktopAppearance& appearance, StatusItemPlace& place,
                                       StatusItemBehaviour behaviour)
    : appearance_(appearance)
    , place_(place)
    , behaviour_(std::move(behaviour))
    , menu_(behaviour_.menu, appearance)
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
    icon_.setToolTip(QString::fromStdString(content.description));
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
    if (const QRect geometry = icon_.geometry(); geometry.isValid()) {
        place_.isAt(geometry);
    } else {
        place_.clicked();
    }
    switch (reason) {
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::MiddleClick:
        // Queued: the call may run a nested event loop in which the icon is deleted.
        QMetaObject::invokeMethod(&icon_, behaviour_.activated, Qt::QueuedConnection);
        break;
    case QSystemTrayIcon::Context:
        menu_.popUp(QCursor::pos());
        break;
    case QSystemTrayIcon::DoubleClick: // follows a Trigger
    case QSystemTrayIcon::Unknown:
        break;
    }
}

} // namespace tidewell
