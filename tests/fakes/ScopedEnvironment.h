#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

namespace tidewell {

/// Sets environment variables, and puts back what was there at the end of its scope.
class ScopedEnvironment final {
public:
    using Variables = std::map<std::string, std::optional<std::string>>;

    explicit ScopedEnvironment(Variables variables)
        : other_(std::move(variables)) {
        swap();
    }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment() { swap(); }

private:
    void swap() {
        for (auto& [name, text] : other_) {
            const char* present = std::getenv(name.c_str());
            auto earlier = present == nullptr ? std::nullopt : std::optional<std::string>(present);
            text ? ::setenv(name.c_str(), text->c_str(), 1) : ::unsetenv(name.c_str());
            text = std::move(earlier);
        }
    }

    Variables other_; // what is not in force
};

} // namespace tidewell
