#pragma once

#include "base/values/Hash.h"

#include <memory>
#include <string>
#include <utility>

namespace tidewell {

/// Names an icon of the desktop's icon theme; the pixels are looked up where it is drawn. Copies
/// are the same icon; two that were made apart are not equal, even with the same name.
class ThemeIcon {
public:
    /// The standard name of the theme's icon for programs in general, which stands in for an icon
    /// that the theme does not have.
    static constexpr const char* executable = "application-x-executable";

    /// `name` is a name in the icon theme, or the absolute path of a file.
    explicit ThemeIcon(std::string name)
        : name_(std::make_shared<const std::string>(std::move(name))) {}

    const std::string& name() const { return *name_; }

    auto fields() const { return std::tie(name_); }
    bool operator==(const ThemeIcon&) const = default;

private:
    std::shared_ptr<const std::string> name_;
};

} // namespace tidewell
