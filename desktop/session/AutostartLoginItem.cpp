#include "desktop/session/AutostartLoginItem.h"

#include "desktop/files/ReplaceFile.h"
#include "desktop/files/UserFolders.h"

#include <algorithm>
#include <string_view>

namespace tidewell {

namespace {

std::string replaced(std::string_view text, std::string_view special, char escape) {
    std::string result;
    for (const char character : text) {
        if (special.find(character) != std::string_view::npos) {
            result += escape;
        }
        result += character;
    }
    return result;
}

/// As the value of a text entry. Names hold no other control characters, and begin without a blank.
std::string entryText(std::string_view text) {
    return replaced(text, "\\", '\\');
}

/// As one quoted argument of a command line, which is in turn the value of a text entry.
std::string quotedArgument(std::string_view text) {
    return entryText('"' + replaced(replaced(text, "\"`$\\", '\\'), "%", '%') + '"');
}

bool isControl(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
}

/// The entry that starts `program`, which must be an absolute path without control characters: no
/// entry can name another.
std::string autostartEntry(const std::string& identifier, const std::string& applicationName,
                           const std::string& program) {
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=" +
           entryText(applicationName) + "\nExec=" + quotedArgument(program) +
           "\nTryExec=" + entryText(program) + "\nIcon=" + identifier +
           "\nStartupNotify=false\n"
           "X-GNOME-Autostart-enabled=true\n";
}

} // namespace

std::filesystem::path autostartFolder() {
    return configurationFolder() / "autostart";
}

AutostartLoginItem::AutostartLoginItem(const std::filesystem::path& folder,
                                       const std::string& identifier, std::string applicationName,
                                       std::filesystem::path program)
    : file_(folder / (identifier + ".desktop"))
    , identifier_(identifier)
    , applicationName_(std::move(applicationName))
    , program_(std::move(program)) {}

Result<> AutostartLoginItem::registerApplication() {
    const std::string& program = program_.native();
    if (!program_.is_absolute() || std::ranges::any_of(program, isControl)) {
        return failure("No autostart entry can name the program \"" + program + "\"");
    }
    return replaceFile(file_, autostartEntry(identifier_, applicationName_, program));
}

Result<> AutostartLoginItem::unregisterApplication() {
    std::error_code error;
    if (std::filesystem::remove(file_, error); error) {
        return failure("Could not remove " + file_.native(), error);
    }
    return {};
}

} // namespace tidewell
