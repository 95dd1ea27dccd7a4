#include "desktop/statusitem/StatusItemSwitcher.h"

namespace tidewell {

StatusItemSwitcher::StatusItemSwitcher(ContinuousClock& clock, StatusHost& notifierHost,
                                       StatusHost& trayHost, StatusItemForms forms)
    : clock_(clock)
    , notifierHost_(notifierHost)
    , trayHost_(trayHost)
    , forms_(std::move(forms))
    , notifierChanged_(notifierHost.didChange([this] { follow(); }))
    , trayChanged_(trayHost.didChange([this] { follow(); })) {
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
        take(form_);
    }
}

void StatusItemSwitcher::follow() {
    isLost_ = isLost_ ||
              (form_ == &StatusItemForms::notifier && notifierHost_.state() != HostState::present);
    if (alarm_) {
        clock_.cancelAlarm(*alarm_);
        alarm_.reset();
    }
    if (wanted() == form_ && !isLost_) {
        return;
    }
    if (wanted() == &StatusItemForms::notifier) {
        take(&StatusItemForms::notifier);
        return;
    }
    alarm_ = clock_.setAlarm(after(clock_.now(), grace), [this] {
        alarm_.reset();
        take(wanted());
    });
}

StatusItemSwitcher::Form StatusItemSwitcher::wanted() const {
    if (notifierHost_.state() == HostState::present) {
        return &StatusItemForms::notifier;
    }
    // Not while the watcher is unknown: QSystemTrayIcon would ask it with a blocking call.
    if (trayHost_.state() == HostState::present && notifierHost_.state() == HostState::absent) {
        return &StatusItemForms::tray;
    }
    return &StatusItemForms::label;
}

void StatusItemSwitcher::take(Form form) {
    form_ = form;
    isLost_ = false;
    item_.reset(); // before the next is made: never two at once
    if (content_) {
        item_ = (forms_.*form)();
        item_->setContent(*content_);
    }
}

} // namespace tidewell
