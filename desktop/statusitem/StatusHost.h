#pragma once

#include "base/observable/ObserverList.h"

namespace tidewell {

enum class HostState {
    absent,  ///< there is none, or it does not want us
    unknown, ///< it was asked and has not answered yet; a hung one never does
    present,
};

/// Something on the desktop that can show status items, and may come and go. Main thread.
class StatusHost {
public:
    StatusHost() = default;
    StatusHost(const StatusHost&) = delete;
    StatusHost& operator=(const StatusHost&) = delete;
    virtual ~StatusHost() = default;

    virtual HostState state() const = 0;

    /// Calls `observer` after every change. One host following another without a gap is told as
    /// two changes: what was shown in the first is not in the second.
    Subscription didChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

protected:
    void tellObservers() const { observers_.tell(); }

private:
    ObserverList<> observers_;
};

} // namespace tidewell
