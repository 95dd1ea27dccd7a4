#pragma once

#include "base/runtime/ContinuousClock.h"
#include "desktop/statusitem/StatusHost.h"
#include "desktop/statusitem/StatusItem.h"

#include <memory>
#include <optional>
#include <vector>

namespace tidewell {

/// A form of the status item.
struct StatusItemForm {
    std::shared_ptr<StatusHost> host; ///< that shows it; null for a form that needs none
    std::function<std::unique_ptr<StatusItem>()> make;
    bool isForgotten = false; ///< by a host that goes away: made anew when one is back
};

/// The status item in the best form that the present hosts allow; never two at once. The switch to
/// the first form is immediate. The others are debounced by `grace`: at login the program may start
/// before the host, and a host that restarts is back soon.
class StatusItemSwitcher final : public StatusItem {
public:
    static constexpr double grace = 1.5; ///< seconds

    /// `forms` are the best first; the last one needs no host. `clock` must outlive this.
    StatusItemSwitcher(ContinuousClock& clock, std::vector<StatusItemForm> forms);
    ~StatusItemSwitcher() override;

    /// Shows nothing before the first call.
    void setContent(const StatusItemContent& content) override;

private:
    void follow();
    const StatusItemForm& wanted() const;
    void take(const StatusItemForm& form);

    ContinuousClock& clock_;
    std::vector<StatusItemForm> forms_;
    std::optional<StatusItemContent> content_;
    const StatusItemForm* form_ = nullptr; // none before the first is chosen
    bool isLost_ = false;                  // its host went away, and has forgotten the item
    std::unique_ptr<StatusItem> item_;
    std::optional<ContinuousClock::AlarmId> alarm_;
    std::vector<Subscription> hostChanges_;
};

} // namespace tidewell
