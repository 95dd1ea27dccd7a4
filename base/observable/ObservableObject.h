#pragma once

#include "base/observable/ObserverList.h"

namespace tidewell {

/// A model whose published fields tell their observers before they change. One thread.
class ObservableObject {
public:
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// Calls `observer` before every change of a published field, as long as the subscription
    /// lives. The fields still have their old values then: views mark themselves dirty and draw
    /// later.
    Subscription objectWillChange(std::function<void()> observer) {
        return observers_.add(std::move(observer));
    }

protected:
    ObservableObject() = default;
    ~ObservableObject() = default;

private:
    template <typename T>
    friend class Published;
    void tellObservers() const { observers_.tell(); }

    ObserverList<> observers_;
};

/// A published field: a private member of its owner, which gives it out as a plain value.
template <typename T>
class Published {
public:
    explicit Published(ObservableObject& owner, T initial = T())
        : owner_(owner)
        , value_(std::move(initial)) {}
    Published(const Published&) = delete;

    const T& get() const { return value_; }

    /// Tells the owner's observers, then assigns, whether or not the value differs.
    Published& operator=(T value) {
        owner_.tellObservers();
        value_ = std::move(value);
        return *this;
    }
    Published& operator=(const Published&) = delete;

    /// Tells the owner's observers, then lets `change` change the value in place.
    template <typename Change>
    void mutate(Change change) {
        owner_.tellObservers();
        change(value_);
    }

private:
    ObservableObject& owner_;
    T value_;
};

} // namespace tidewell
