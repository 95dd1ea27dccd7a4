#pragma once

#include "base/observable/Subscription.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

namespace tidewell {

/// The observers of one source, told in the order in which they subscribed. One thread.
/// Observers may subscribe and unsubscribe anyone, and destroy the source, while they are told: one
/// removed is not told any more, one added is told from the next time on.
template <typename... Arguments>
class ObserverList {
public:
    using Observer = std::function<void(Arguments...)>;

    Subscription add(Observer observer) {
        const std::uint64_t id = ++entries_->lastId;
        entries_->list.push_back({id, std::make_shared<Observer>(std::move(observer))});
        return Subscription([weak = std::weak_ptr(entries_), id] {
            const auto entries = weak.lock();
            if (!entries) {
                return;
            }
            const auto entry = std::ranges::find(entries->list, id, &Entry::id);
            // Off the list first: the observer may hold subscriptions to it, which end with it.
            const auto removed = std::move(entry->observer);
            entries->list.erase(entry);
        });
    }

    void tell(Arguments... arguments) const {
        const auto entries = entries_; // an observer may destroy the source
        const std::uint64_t last = entries->lastId;
        std::uint64_t told = 0;
        for (;;) {
            // Looked up anew each time: the list may have changed under the last observer.
            const auto next = std::ranges::find_if(
                entries->list, [told](const Entry& entry) { return entry.id > told; });
            if (next == entries->list.end() || next->id > last) {
                return;
            }
            told = next->id;
            const auto observer = next->observer;
            (*observer)(arguments...);
        }
    }

private:
    struct Entry {
        std::uint64_t id; // rising: the list is sorted by it
        std::shared_ptr<Observer> observer;
    };
    struct Entries {
        std::vector<Entry> list;
        std::uint64_t lastId = 0;
    };

    std::shared_ptr<Entries> entries_ = std::make_shared<Entries>();
};

} // namespace tidewell
