#include "desktop/files/FileUserDefaults.h"

#include "base/values/ReadFile.h"
#include "desktop/files/ReplaceFile.h"
#include "desktop/files/UserFolders.h"

#include <QByteArray>

#include <fcntl.h>

#include <array>
#include <chrono>
#include <cmath>
#include <ctime>
#include <limits>

namespace tidewell {

namespace {

using nlohmann::json;

/// Far more than a history needs. Writing back what is larger or deeper would take memory and stack
/// without bounds.
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
    // To the parser, a NUL byte is the end of the text.
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

/// The file that a link leads to, whether or not it exists yet: replacing the link itself would cut
/// it. A cycle of links leads nowhere, stays what it is, and cannot be read.
std::filesystem::path afterLinks(const std::filesystem::path& file) {
    std::error_code error;
    const auto target = std::filesystem::read_symlink(file, error);
    const auto resolved =
        std::filesystem::weakly_canonical(error ? file : file.parent_path() / target, error);
    return error ? file : resolved;
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

void FileUserDefaults::set(std::string_view key, DefaultsValue value) {
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
    const auto content = readFile(AT_FDCWD, file_.c_str(), largestFile);
    if (!content) {
        if (content.error().cause != std::errc::no_such_file_or_directory) {
            setAside(content.error().description());
        }
    } else if (auto entries = parseEntries(*content)) {
        entries_ = std::move(*entries);
    } else {
        setAside(file_.string() + " is not a JSON object");
    }
}

void FileUserDefaults::setAside(const std::string& problem) {
    const std::string name = file_.string() + ".unreadable-" + utcTime();
    std::filesystem::path aside = name;
    std::error_code error;
    for (int number = 2; std::filesystem::exists(symlink_status(aside, error)); ++number) {
        aside = name + "-" + std::to_string(number);
    }
    std::filesystem::rename(file_, aside, error);
    isKeptInMemory_ = static_cast<bool>(error);
    const std::string outcome =
        error
            ? "it stays, and changes last for this run only (setting it aside: " + error.message() +
                  ")"
            : "it was set aside as " + aside.filename().string();
    logMessage(log_, problem + "; " + outcome, "general", __FILE__, "setAside()", __LINE__,
               LogLevel::error);
}

void FileUserDefaults::save() {
    const std::string text = entries_.dump(4, ' ', false, json::error_handler_t::replace) + "\n";
    const auto saved = text.size() > largestFile
                           ? failure("Could not write " + file_.string() + ": it is too large")
                           : replaceFile(file_, text);
    isUnsaved_ = !saved;
    if (!saved) {
        logMessage(log_, saved.error().description(), "general", __FILE__, "save()", __LINE__,
                   LogLevel::error);
    }
}

} // namespace tidewell
