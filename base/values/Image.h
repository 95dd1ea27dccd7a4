#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace tidewell {

/// A picture of the desktop's icon theme, as a small value without pixels. Copies are the same
/// picture; two that were made apart are not equal, whatever they show.
///
/// Whoever draws it asks the theme for the size and scale at hand, and keeps what it was given
/// until the theme changes. A picture that is not to be found then is drawn as the theme's
/// `executable`, or not at all.
class Image {
public:
    /// The theme's name of its icon for programs in general.
    static constexpr const char* executable = "application-x-executable";

    /// `icon` is a name in the icon theme, or the absolute path of a file.
    explicit Image(std::string icon)
        : icon_(std::make_shared<const std::string>(std::move(icon))) {}

    const std::string& icon() const { return *icon_; }

    /// Whether both are the same picture.
    bool operator==(const Image&) const = default;

private:
    friend struct std::hash<Image>;

    std::shared_ptr<const std::string> icon_;
};

} // namespace tidewell

template <>
struct std::hash<tidewell::Image> {
    std::size_t operator()(const tidewell::Image& image) const noexcept {
        return std::hash<const void*>()(image.icon_.get());
    }
};
