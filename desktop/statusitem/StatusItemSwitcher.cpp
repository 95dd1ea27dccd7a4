#include "desktop/statusitem/StatusItemSwitcher.h"

namespace tidewell {

StatusItemSwitcher::StatusItemSwitcher(ContinuousClock& clock, std::vector<StatusItemForm> forms)
    : clock_(clock)
    , forms_(std::move(forms)) {
    for (const StatusItemForm& form : forms_) {
        if (form.host) {
            hostChanges_.push_back(form.host->didChange([this] { follow(); }));
        }
    }
    follow();
}

StatusItemSwitcher::~StatusItemSwitcher() {
    if (alarm_) {
        clock_.cancelAlarm(*alarm_);
    }
}

void StatusItemSwitcher::setContent(const StatusItemContent& content) {
    if (content == content_) {
        return;
    }
    content_ = content;
    if (item_) {
        item_->setContent(content);
    } else if (form_ != nullptr) {
        take(*form_);
    }
}

void StatusItemSwitcher::follow() {
    isLost_ = isLost_ || (form_ != nullptr && form_->isForgotten &&
                          form_->host->state() != HostState::present);
    if (alarm_) {
        clock_.cancelAlarm(*alarm_);
        alarm_.reset();
    }
    const StatusItemForm& best = wanted();
    if (&best == form_ && !isLost_) {
        return;
    }
    if (&best == &forms_.front()) {
        take(best);
        return;
    }
    alarm_ = clock_.setAlarm(after(clock_.now(), grace), [this] {
        alarm_.reset();
        take(wanted());
    });
}

const StatusItemForm& StatusItemSwitcher::wanted() const {
    for (const StatusItemForm& form : forms_) {
        const HostState state = form.host ? form.host->state() : HostState::present;
        if (state == HostState::present) {
            return form;
        }
        if (state == HostState::unknown) {
            break; // it hangs, perhaps, and QSystemTrayIcon would wait for it
        }
    }
    return forms_.back();
}

void StatusItemSwitcher::take(const StatusItemForm& form) {
    form_ = &form;
    isLost_ = false;
    item_.reset(); // before the next is made: never two at once
    if (content_) {
        item_ = form.make();
        item_->setContent(*content_);
    }
}

} // namespace tidewell
