#pragma once

#include "base/observable/ObserverList.h"
#include "base/values/Interface.h"

namespace tidewell {

enum class HostState {
    absent,  ///< there is none, or it refused the item
    unknown, ///< asked and not answered yet; a hung host never answers
    present,
};

/// What shows status items on the desktop, and may appear and vanish at any time. Main thread.
class StatusHost : public Interface {
public:
    virtual HostState state() const = 0;

    /// Calls `observer` after every change. A host that replaces another is two changes, absent
    /// in between: the new one does not know the item yet.
    Subscription didChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

protected:
    void tellObservers() const { observers_.tell(); }

private:
    ObserverList<> observers_;
};

} // namespace tidewell
