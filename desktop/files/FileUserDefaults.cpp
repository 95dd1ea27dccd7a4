#include "desktop/files/FileUserDefaults.h"

#include "base/values/ReadFile.h"
#include "desktop/files/ReplaceFile.h"
#include "desktop/files/UserFolders.h"

#include <QByteArray>
#include <QDateTime>

#include <fcntl.h>

#include <cmath>
#include <limits>

namespace tidewell {

namespace {

using nlohmann::json;

/// Five times what a history of a thousand hours needs. Writing back what is larger or deeper would
/// take memory and stack without bounds.
constexpr std::size_t largestFile = std::size_t{1} << 30U;
constexpr int deepestNesting = 64;
/// A thousand times those of this version; the samples of a history are one value.
constexpr int mostValues = 100'000;

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

/// Whether what the text holds is neither too deep nor too much to be built. Told beforehand: a
/// value takes some ten times the memory of its text. Of what is no JSON, any answer will do.
bool isModest(std::string_view text) {
    int depth = 0;
    int values = 0;
    bool isQuoted = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        if (isQuoted) {
            at += character == '\\' ? 1 : 0;
            isQuoted = character != '"';
            continue;
        }
        isQuoted = character == '"';
        const bool opens = character == '[' || character == '{';
        depth += opens ? 1 : character == ']' || character == '}' ? -1 : 0;
        values += opens || character == ',' ? 1 : 0;
        if (depth > deepestNesting || values > mostValues) {
            return false;
        }
    }
    return true;
}

/// The JSON object that `content` is; empty when it is none.
std::optional<json> parseEntries(const std::string& content) {
    // To the parser, a NUL byte is the end of the text.
    if (content.find('\0') != std::string::npos || !isModest(content)) {
        return std::nullopt;
    }
    auto document = json::parse(content, nullptr, false);
    return document.is_object() ? std::optional(std::move(document)) : std::nullopt;
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

/// Whether reading will fail again: what is there is no file of preferences. Other failures, EIO or
/// EMFILE, say, pass.
bool isLasting(const std::error_code& cause) {
    return cause == std::errc::file_too_large || cause == std::errc::is_a_directory ||
           cause == std::errc::not_supported || cause == std::errc::too_many_symbolic_link_levels;
}

} // namespace

std::filesystem::path defaultPreferencesFile() {
    return configurationFolder() / "tidewell" / "defaults.json";
}

FileUserDefaults::FileUserDefaults(const std::filesystem::path& file, Log& log)
    : file_(afterLinks(file))
    , log_(log) {
    read();
    if (isUnreadable_) {
        read(); // what passes often passes at once
    }
}

std::optional<DefaultsValue> FileUserDefaults::value(std::string_view key) const {
    const auto found = entries_.find(key);
    return found == entries_.end() ? std::nullopt : valueOf(*found);
}

void FileUserDefaults::set(std::string_view key, DefaultsValue value) {
    setLater(key, std::move(value));
    if (!unsaved_.empty() && !isKeptInMemory_) {
        save();
    }
}

void FileUserDefaults::setLater(std::string_view key, DefaultsValue value) {
    json entry = std::visit(EntryOf(), value);
    const auto found = entries_.find(key);
    if (found == entries_.end() || *found != entry) {
        unsaved_[std::string(key)] = entry;
        entries_[std::string(key)] = std::move(entry);
    }
}

void FileUserDefaults::read() {
    identity_ = identityOf(file_.c_str());
    const auto content = readFile(AT_FDCWD, file_.c_str(), largestFile);
    const std::error_code cause = content ? std::error_code() : content.error().cause;
    isUnreadable_ = cause && cause != std::errc::no_such_file_or_directory && !isLasting(cause);
    if (isUnreadable_) {
        report(content.error().description() + "; it is read again before it is replaced",
               "read()");
    } else if (isLasting(cause)) {
        setAside(content.error().description());
    } else if (auto entries = parseEntries(content.value_or("{}"))) {
        entries_ = std::move(*entries);
    } else {
        setAside(file_.string() + " is not a JSON object");
    }
}

void FileUserDefaults::setAside(const std::string& problem) {
    const std::string name =
        file_.string() + ".unreadable-" +
        QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmss'Z'").toStdString();
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
    report(problem + "; " + outcome, "setAside()");
}

void FileUserDefaults::save() {
    if (isUnreadable_ || identity_ != identityOf(file_.c_str())) {
        read();
        entries_.update(unsaved_);
        if (isUnreadable_ || isKeptInMemory_) {
            return;
        }
    }
    const std::string text = entries_.dump(4, ' ', false, json::error_handler_t::replace) + "\n";
    const auto saved = text.size() > largestFile
                           ? failure("Could not write " + file_.string() + ": it is too large")
                           : replaceFile(file_, text);
    if (saved) {
        unsaved_.clear();
        reported_.clear();
        identity_ = identityOf(file_.c_str());
    } else {
        report(saved.error().description(), "save()");
    }
}

void FileUserDefaults::report(const std::string& problem, std::string_view function) {
    if (std::exchange(reported_, problem) != problem) {
        logError(log_, problem, function);
    }
}

} // namespace tidewell
