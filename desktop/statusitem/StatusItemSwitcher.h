#pragma once

#include "base/runtime/ContinuousClock.h"
#include "desktop/statusitem/StatusHost.h"
#include "desktop/statusitem/StatusItem.h"

#include <memory>

namespace tidewell {

/// How to make each form of the status item.
struct StatusItemForms {
    using Maker = std::function<std::unique_ptr<StatusItem>()>;
    Maker notifier; ///< drawn by the desktop
    Maker tray;     ///< embedded in an old-style tray
    Maker label;    ///< a window of our own
};

/// The status item in the best form that the desktop offers at the moment; never two at once.
///
/// A desktop that draws items is taken at once. Any other form is taken only after the desktop has
/// stayed the same for `grace`: at login programs are up before the desktop is, and a desktop that
/// restarts is soon back.
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
    enum class Form { none, notifier, tray, label };

    void follow();
    void settle();
    Form wanted() const;
    void take(Form form);

    ContinuousClock& clock_;
    StatusHost& notifierHost_;
    StatusHost& trayHost_;
    StatusItemForms forms_;
    std::optional<StatusItemContent> content_;
    Form form_ = Form::none;
    // The desktop that drew the item went away: the next one has to be told of it anew. Tray icons
    // see to that themselves.
    bool isLost_ = false;
    std::unique_ptr<StatusItem> item_;
    std::optional<ContinuousClock::AlarmId> alarm_;
    Subscription notifierChanged_;
    Subscription trayChanged_;
};

} // namespace tidewell
