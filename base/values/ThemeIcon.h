#pragma once

#include "base/values/Hash.h"

#include <memory>
#include <string>
#include <utility>

namespace tidewell {

/// Names an icon of the desktop's icon theme; the pixels are made where it is drawn. Copies
/// are the same icon; two that were made apart are not equal, even with the same name.
class ThemeIcon {
public:
    /// The standard name of the theme's icon for programs in general, which stands in for an icon
    /// that the theme does not have.
    static constexpr const char* executable = "application-x-executable";

    /// `name` is a name in the icon theme, or the absolute path of a file that holds `content`.
    explicit ThemeIcon(std::string name, std::string content = {})
        : icon_(std::make_shared<const Icon>(Icon{std::move(name), std::move(content)})) {}

    const std::string& name() const { return icon_->name; }
    bool isFile() const { return name().starts_with('/'); }
    /// Of the file, whose reader may be kept waiting, so not where it is drawn. Empty before it was
    /// read, and where it cannot be.
    const std::string& content() const { return icon_->content; }

    auto fields() const { return std::tie(icon_); }
    bool operator==(const ThemeIcon&) const = default;

private:
    struct Icon {
        std::string name;
        std::string content;
    };
    std::shared_ptr<const Icon> icon_;
};

} // namespace tidewell
