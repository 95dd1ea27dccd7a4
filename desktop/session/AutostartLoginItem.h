#pragma once

#include "base/ports/LoginItem.h"

#include <filesystem>
#include <string>

namespace tidewell {

/// A desktop entry in the user's autostart folder, named after the program's identifier.
class AutostartLoginItem final : public LoginItem {
public:
    /// `program` is the file that is started at login; `folder` need not exist yet.
    AutostartLoginItem(const std::filesystem::path& folder, const std::string& identifier,
                       std::string applicationName, std::filesystem::path program);

    Result<> registerApplication() override;
    Result<> unregisterApplication() override;

private:
    std::filesystem::path file_;
    std::string identifier_;
    std::string applicationName_;
    std::filesystem::path program_;
};

/// The folder that desktops start programs from at login, whether or not it exists.
std::filesystem::path autostartFolder();

} // namespace tidewell
