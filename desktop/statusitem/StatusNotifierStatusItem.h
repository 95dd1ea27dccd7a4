#pragma once

#include "desktop/appearance/DesktopAppearance.h"
#include "desktop/statusitem/StatusItemPlace.h"
#include "desktop/statusitem/StatusMenu.h"
#include "desktop/statusitem/StatusNotifierHost.h"

#include <QString>

namespace tidewell {

class StatusNotifierAdaptor;

/// The status item as an org.kde.StatusNotifierItem: the symbol as pixmaps, the text as
/// XAyatanaLabel and, for hosts that show no label, as the tooltip. Change signals are sent only on
/// a change.
class StatusNotifierStatusItem final : public StatusItem {
public:
    static constexpr const char* path = "/StatusNotifierItem";

    /// The references must outlive this.
    StatusNotifierStatusItem(const QDBusConnection& bus, StatusNotifierHost& host,
                             DesktopAppearance& appearance, StatusItemPlace& place,
                             const StatusItemBehaviour& behaviour);
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

/// The label `guide` with its digits replaced by 8, the widest: hosts reserve its width for the
/// label.
QString labelGuide(QString guide);

} // namespace tidewell
