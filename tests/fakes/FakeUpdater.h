#pragma once

#include "base/observable/ObserverList.h"
#include "base/ports/SPUUpdater.h"

#include <string>
#include <utility>

namespace tidewell {

/// An updater that counts what it is asked for; the test answers in its place.
class FakeUpdater final : public SPUUpdater {
public:
    explicit FakeUpdater(SPUUpdaterDelegate& delegate)
        : delegate_(delegate) {}

    Result<> startUpdater() override {
        ++starts;
        isStarted_ = isStarted_ || start;
        tellCanCheck();
        return start;
    }
    bool canCheckForUpdates() const override { return canCheck_; }
    Subscription observeCanCheckForUpdates(std::function<void(bool)> observer) override {
        observer(canCheck_);
        return observers_.add(std::move(observer));
    }
    bool automaticallyChecksForUpdates() const override { return checks; }
    void setAutomaticallyChecksForUpdates(bool automatically) override { checks = automatically; }
    bool automaticallyDownloadsUpdates() const override { return downloads; }
    void setAutomaticallyDownloadsUpdates(bool automatically) override {
        downloads = automatically;
    }
    double updateCheckInterval() const override { return interval; }
    void setUpdateCheckInterval(double seconds) override { interval = seconds; }
    void checkForUpdates() override {
        ++userChecks;
        isChecking_ = true;
        tellCanCheck();
    }
    void checkForUpdateInformation() override {
        if (canCheck_) {
            ++silentChecks;
            isChecking_ = true;
            tellCanCheck();
        }
    }

    /// What the check comes to that is under way; like one that was, where none is.
    void find(const std::string& version) {
        endCheck();
        delegate_.updaterDidFindValidUpdate(*this, {version});
    }
    void findNothing() {
        endCheck();
        delegate_.updaterDidNotFindUpdate(*this);
    }

    Result<> start; ///< what the next start comes to
    bool checks = false;
    bool downloads = false;
    double interval = 3600;
    int starts = 0;
    int userChecks = 0;
    int silentChecks = 0;

private:
    void endCheck() {
        isChecking_ = false;
        tellCanCheck();
    }
    void tellCanCheck() {
        const bool canCheck = isStarted_ && !isChecking_;
        if (std::exchange(canCheck_, canCheck) != canCheck) {
            observers_.tell(canCheck);
        }
    }

    SPUUpdaterDelegate& delegate_;
    bool isStarted_ = false;
    bool isChecking_ = false;
    bool canCheck_ = false;
    ObserverList<bool> observers_;
};

} // namespace tidewell
