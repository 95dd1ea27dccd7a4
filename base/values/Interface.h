#pragma once

namespace tidewell {

/// The base of abstract types: destroyed through a pointer to it, neither copied nor moved.
class Interface {
public:
    Interface() = default;
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;
    virtual ~Interface() = default;
};

} // namespace tidewell
