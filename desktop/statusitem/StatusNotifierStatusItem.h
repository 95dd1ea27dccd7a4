#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusMenu.h"
#include "desktop/statusitem/StatusNotifierHost.h"

#include <QString>

namespace tidewell {

class StatusNotifierAdaptor;

/// The status item as an object on the bus (org.kde.StatusNotifierItem) that the desktop draws:
/// the symbol as pictures in the sizes that desktops ask for, the text as the label beside it and,
/// for the many that draw no labels, as the tooltip. Both are told anew only when they change.
class StatusNotifierStatusItem final : public StatusItem {
public:
    static constexpr const char* path = "/StatusNotifierItem";

    /// The references must outlive this.
    StatusNotifierStatusItem(const QDBusConnection& bus, StatusNotifierHost& host,
                             DesktopAppearance& appearance, const StatusItemBehaviour& behaviour);
    ~StatusNotifierStatusItem() override;

    void setContent(const StatusItemContent& content) override;

private:
    QDBusConnection bus_;
    StatusNotifierHost& host_;
    QString service_;
    ExportedStatusMenu menu_;
    QObject object_;
    StatusNotifierAdaptor* adaptor_; // owned by the object
    bool isRegistered_ = false;
};

/// `text` as a tooltip that no desktop takes for markup.
QString plainTooltip(const std::string& text);

/// A text of the same form as `text` and at least as wide with any digits: what desktops reserve.
QString labelGuide(const std::string& text);

} // namespace tidewell
