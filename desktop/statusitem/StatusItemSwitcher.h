#pragma once

#include "base/runtime/ContinuousClock.h"
#include "desktop/statusitem/StatusHost.h"
#include "desktop/statusitem/StatusItem.h"

#include <memory>

namespace tidewell {

/// Makes each form of the status item.
struct StatusItemForms {
    using Maker = std::function<std::unique_ptr<StatusItem>()>;
    Maker notifier; ///< a StatusNotifierItem on D-Bus
    Maker tray;     ///< an XEmbed icon in a system tray
    Maker label;    ///< a window of our own
};

/// The status item in the best form that the present hosts allow; never two at once. The switch to
/// the StatusNotifierItem is immediate. The others are debounced by `grace`: at login the program
/// may start before the host, and a host that restarts is back soon.
class StatusItemSwitcher final : public StatusItem {
public:
    static constexpr double grace = 1.5; ///< seconds

    /// The references must outlive this.
    StatusItemSwitcher(ContinuousClock& clock, StatusHost& notifierHost, StatusHost& trayHost,
                       StatusItemForms forms);
    ~StatusItemSwitcher() override;

    /// Shows nothing before the first call.
    void setContent(const StatusItemContent& content) override;

private:
    using Form = StatusItemForms::Maker StatusItemForms::*;

    void follow();
    Form wanted() const;
    void take(Form form);

    ContinuousClock& clock_;
    StatusHost& notifierHost_;
    StatusHost& trayHost_;
    StatusItemForms forms_;
    std::optional<StatusItemContent> content_;
    Form form_ = nullptr; // none before the first is chosen
    // The host went away while it showed the item, which has to be registered again with the next.
    // QSystemTrayIcon does so by itself.
    bool isLost_ = false;
    std::unique_ptr<StatusItem> item_;
    std::optional<ContinuousClock::AlarmId> alarm_;
    Subscription notifierChanged_;
    Subscription trayChanged_;
};

} // namespace tidewell
