#include "desktop/files/FileUserDefaults.h"

#include "desktop/files/UserFolders.h"
#include "desktop/files/WholeFile.h"

#include <QByteArray>

#include <fcntl.h>
#include <stdio.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <limits>

namespace tidewell {

namespace {

using nlohmann::json;

/// Far more than a history needs. What is larger or deeper was not written by this program, and
/// writing it back would take memory and stack without bounds.
constexpr std::size_t largestFile = 16U << 20U;
constexpr int deepestNesting = 64;

std::string base64(const Data& data) {
    const auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                               static_cast<qsizetype>(data.size()));
    return bytes.toBase64().toStdString();
}

std::optional<Data> fromBase64(const std::string& text) {
    const auto decoded = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    if (!decoded) {
        return std::nullopt;
    }
    return Data(decoded.decoded.begin(), decoded.decoded.end());
}

json numberEntry(double number) {
    if (std::isfinite(number)) {
        return number;
    }
    return {{"number", std::isnan(number) ? "nan" : number > 0 ? "inf" : "-inf"}};
}

std::optional<DefaultsValue> fromNumberText(const std::string& text) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (text == "nan") {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return text == "inf"    ? std::optional<DefaultsValue>(infinity)
           : text == "-inf" ? std::optional<DefaultsValue>(-infinity)
                            : std::nullopt;
}

struct EntryOf {
    json operator()(bool flag) const { return flag; }
    json operator()(double number) const { return numberEntry(number); }
    json operator()(const std::string& text) const { return text; }
    json operator()(const Data& data) const { return {{"data", base64(data)}}; }
};

std::optional<DefaultsValue> valueOf(const json& entry) {
    if (entry.is_boolean()) {
        return entry.get<bool>();
    }
    if (entry.is_number()) {
        return entry.get<double>();
    }
    if (entry.is_string()) {
        return entry.get<std::string>();
    }
    if (entry.is_object() && entry.size() == 1 && entry.begin()->is_string()) {
        const auto& text = entry.begin()->get_ref<const std::string&>();
        if (entry.begin().key() == "data") {
            auto data = fromBase64(text);
            return data ? std::optional<DefaultsValue>(std::move(*data)) : std::nullopt;
        }
        if (entry.begin().key() == "number") {
            return fromNumberText(text);
        }
    }
    return std::nullopt;
}

/// The JSON object that `content` is; empty when it is none.
std::optional<json> parseEntries(const std::string& content) {
    // A zero byte is JSON nowhere, but to the parser it is the end, whatever follows.
    if (content.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    bool isTooDeep = false;
    const auto checkDepth = [&isTooDeep](int depth, json::parse_event_t, const json&) {
        isTooDeep = isTooDeep || depth > deepestNesting;
        return !isTooDeep;
    };
    auto document = json::parse(content, checkDepth, false);
    return document.is_object() && !isTooDeep ? std::optional(std::move(document)) : std::nullopt;
}

/// Where `file` leads, whether or not there is something yet. A circle of links leads nowhere: it
/// stays what it is, and cannot be read.
std::filesystem::path afterLinks(const std::filesystem::path& file) {
    auto target = file;
    for (int links = 0; links < 40; ++links) {
        std::error_code error;
        const auto next = std::filesystem::read_symlink(target, error);
        if (error) {
            return target;
        }
        target = target.parent_path() / next;
    }
    return file;
}

/// Gives `from` the name `to`, which must be free.
std::error_code renameToFreeName(const std::filesystem::path& from,
                                 const std::filesystem::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    std::error_code error(errno, std::generic_category());
    if (error != std::errc::invalid_argument && error != std::errc::function_not_supported) {
        return error;
    }
    // Some network file systems cannot do both in one step.
    if (std::filesystem::exists(std::filesystem::symlink_status(to, error))) {
        return std::make_error_code(std::errc::file_exists);
    }
    std::filesystem::rename(from, to, error);
    return error;
}

std::string utcTime() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 32> text{};
    const auto length = std::strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &parts);
    return {text.data(), length};
}

} // namespace

std::filesystem::path defaultPreferencesFile() {
    return configurationFolder() / "tidewell" / "defaults.json";
}

FileUserDefaults::FileUserDefaults(const std::filesystem::path& file, Log& log)
    : file_(afterLinks(file))
    , log_(log) {
    read();
}

std::optional<DefaultsValue> FileUserDefaults::value(std::string_view key) const {
    const auto found = entries_.find(key);
    return found == entries_.end() ? std::nullopt : valueOf(*found);
}

void FileUserDefaults::store(std::string_view key, DefaultsValue value) {
    json entry = std::visit(EntryOf(), value);
    const auto found = entries_.find(key);
    if (found == entries_.end()) {
        entries_[std::string(key)] = std::move(entry);
    } else if (*found != entry) {
        *found = std::move(entry);
    } else if (!isUnsaved_) {
        return;
    }
    isUnsaved_ = true;
    if (!isKeptInMemory_) {
        save();
    }
}

void FileUserDefaults::read() {
    const auto content = readWholeFile(file_, largestFile);
    if (const auto* error = std::get_if<std::error_code>(&content)) {
        if (*error != std::errc::no_such_file_or_directory) {
            setAside(error->message());
        }
        return;
    }
    if (auto entries = parseEntries(std::get<std::string>(content))) {
        entries_ = std::move(*entries);
    } else {
        setAside("it is not a JSON object");
    }
}

void FileUserDefaults::setAside(const std::string& problem) {
    auto first = file_;
    first += ".unreadable-" + utcTime();
    auto aside = first;
    auto error = renameToFreeName(file_, aside);
    for (int number = 2; error == std::errc::file_exists; ++number) {
        aside = first;
        aside += "-" + std::to_string(number);
        error = renameToFreeName(file_, aside);
    }
    isKeptInMemory_ = static_cast<bool>(error);
    const std::string outcome =
        error
            ? "it stays, and changes last for this run only (setting it aside: " + error.message() +
                  ")"
            : "it was set aside as " + aside.filename().string();
    logMessage(log_, "Could not read " + file_.string() + ": " + problem + "; " + outcome,
               "general", __FILE__, "setAside(problem:)", __LINE__, LogLevel::error);
}

void FileUserDefaults::save() {
    const std::string text = entries_.dump(4, ' ', false, json::error_handler_t::replace) + "\n";
    const auto error = text.size() > largestFile ? std::make_error_code(std::errc::file_too_large)
                                                 : replaceFile(file_, text);
    isUnsaved_ = static_cast<bool>(error);
    if (error) {
        logMessage(log_, "Could not write " + file_.string() + ": " + error.message(), "general",
                   __FILE__, "save()", __LINE__, LogLevel::error);
    }
}

} // namespace tidewell
