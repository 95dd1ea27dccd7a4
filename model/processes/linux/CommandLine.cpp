#include "model/processes/linux/CommandLine.h"

#include "base/text/Words.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tidewell {

namespace {

/// Whether `name` is one of `names`, or one of them with a version ("python3.11").
bool isOneOf(std::string_view name, std::span<const std::string_view> names) {
    const auto letters = name.find_last_not_of("0123456789.-");
    return std::ranges::find(names, name.substr(0, letters + 1)) != names.end();
}

bool isShell(std::string_view name) {
    static constexpr std::array<std::string_view, 7> names{"sh",  "bash", "dash", "ash",
                                                           "zsh", "ksh",  "mksh"};
    return isOneOf(name, names);
}

bool isInterpreter(std::string_view name) {
    static constexpr std::array<std::string_view, 14> names{
        "python", "perl", "ruby",  "node", "nodejs", "gjs",   "gjs-console",
        "lua",    "php",  "tclsh", "wish", "java",   "guile", "mono"};
    return isShell(name) || isOneOf(name, names);
}

/// Programs that exec() the command that they are given.
bool isPrefix(std::string_view name) {
    static constexpr std::array<std::string_view, 9> names{
        "env", "nice", "ionice", "nohup", "setsid", "exec", "pkexec", "snap", "dbus-run-session"};
    return std::ranges::find(names, name) != names.end();
}

/// What runs beside a sandboxed application, or sets its sandbox up.
bool isSandboxTool(std::string_view name) {
    static constexpr std::array<std::string_view, 4> names{"bwrap", "flatpak", "snap-confine",
                                                           "xdg-dbus-proxy"};
    return std::ranges::find(names, name) != names.end();
}

/// The script or module that an interpreter runs; empty for one-liners (-c, -e) and for none.
std::string_view scriptOf(std::span<const std::string> words) {
    const bool isJava = isOneOf(lastComponent(words.front()), std::array{std::string_view("java")});
    for (std::size_t i = 1; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (word == "-m" || word == "-jar") {
            return i + 1 < words.size() ? std::string_view(words[i + 1]) : std::string_view();
        }
        if (word == "-c" || word == "-e") {
            return {};
        }
        // Options of Java take arguments, so its class name cannot be told from those.
        if (!isJava && !word.starts_with('-')) {
            return word;
        }
    }
    return {};
}

/// The command that a shell is told to run.
std::optional<std::string> shellCommand(std::span<const std::string> words) {
    for (std::size_t i = 1; i + 1 < words.size() && words[i].starts_with('-'); ++i) {
        if (!words[i].starts_with("--") && words[i].ends_with('c')) {
            return words[i + 1];
        }
    }
    return std::nullopt;
}

Program interpretedProgram(std::span<const std::string> words) {
    const std::string_view script = scriptOf(words);
    if (script.empty() && words.size() == 1) {
        return {.name = words.front()}; // interactive
    }
    return {.name = std::string(script), .isScript = true, .hasArguments = false};
}

void removePrefix(std::vector<std::string>& words) {
    const auto isOwn = [](const std::string& word) {
        const bool isNumber = !word.empty() && std::ranges::all_of(word, [](char character) {
            return character >= '0' && character <= '9';
        });
        return word.starts_with('-') || word.find('=') != std::string::npos || isNumber;
    };
    const bool isSnap = lastComponent(words.front()) == "snap";
    words.erase(words.begin());
    if (isSnap && !words.empty() && words.front() == "run") {
        words.erase(words.begin());
    }
    words.erase(words.begin(), std::ranges::find_if_not(words, isOwn));
}

} // namespace

std::vector<std::string> splitCommand(std::string_view command) {
    std::vector<std::string> words;
    std::string word;
    bool inWord = false;
    char quote = 0;
    for (std::size_t i = 0; i < command.size(); ++i) {
        const char character = command[i];
        if (character == '\\' && quote != '\'' && i + 1 < command.size()) {
            word += command[++i];
            inWord = true;
        } else if (quote != 0) {
            if (character == quote) {
                quote = 0;
            } else {
                word += character;
            }
        } else if (character == '"' || character == '\'') {
            quote = character;
            inWord = true;
        } else if (character == ' ' || character == '\t' || character == '\n') {
            if (inWord) {
                words.push_back(std::move(word));
            }
            word.clear();
            inWord = false;
        } else if (character == '%' && i + 1 < command.size()) {
            // A field code, or an escaped percent sign.
            if (command[++i] == '%') {
                word += '%';
                inWord = true;
            }
        } else {
            word += character;
            inWord = true;
        }
    }
    if (inWord) {
        words.push_back(std::move(word));
    }
    return words;
}

Program programOfCommand(std::vector<std::string> words) {
    // Each turn unwraps one command; a bound against endless ones.
    for (int depth = 0; depth < 8 && !words.empty(); ++depth) {
        const std::string_view name = lastComponent(words.front());
        if (name == "flatpak") {
            return {}; // starts every Flatpak: those are known by their units
        }
        if (isPrefix(name)) {
            removePrefix(words);
        } else if (const auto inner = isShell(name) ? shellCommand(words) : std::nullopt) {
            words = splitCommand(*inner);
            // Assignments come before the command.
            words.erase(words.begin(), std::ranges::find_if(words, [](const std::string& word) {
                            return word.find('=') == std::string::npos;
                        }));
        } else if (isInterpreter(name)) {
            return interpretedProgram(words);
        } else {
            return {.name = words.front(), .isScript = false, .hasArguments = words.size() > 1};
        }
    }
    return {};
}

Program programOfProcess(std::span<const std::string> words) {
    if (words.empty()) {
        return {};
    }
    const std::string_view name = lastComponent(words.front());
    if (isPrefix(name) || isSandboxTool(name)) {
        return {.name = words.front(), .isWrapper = true};
    }
    if (isShell(name) && shellCommand(words)) {
        return {.name = "", .isScript = true, .isWrapper = true};
    }
    if (isInterpreter(name)) {
        return interpretedProgram(words);
    }
    return {.name = words.front(), .isScript = false, .hasArguments = words.size() > 1};
}

} // namespace tidewell
