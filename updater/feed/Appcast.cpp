#include "updater/feed/Appcast.h"

#include "updater/UpdateProblem.h"
#include "updater/feed/SafeAddress.h"
#include "updater/feed/VersionOrder.h"

#include <QXmlStreamReader>

namespace tidewell {

namespace {

constexpr std::size_t mostItems = 1000;
constexpr qsizetype longestNotes = qsizetype{64} << 10; // characters

/// Whether a start tag has more attributes than any of a feed. Qt's reader takes time that grows
/// with the square of their number: 20 seconds for 100,000.
bool hasCrowdedElement(const QByteArray& feed) {
    constexpr int mostAttributes = 50;
    for (qsizetype at = feed.indexOf('<'); at >= 0; at = feed.indexOf('<', at)) {
        for (const auto& [begin, end] : {std::pair("<![CDATA[", "]]>"), {"<!--", "-->"}}) {
            if (QByteArrayView(feed).sliced(at).startsWith(begin)) {
                at = std::max(feed.indexOf(end, at), at);
            }
        }
        int attributes = 0;
        char quote = 0;
        for (; at < feed.size() && (quote != 0 || feed[at] != '>'); ++at) {
            const char character = feed[at];
            if (quote == 0 && (character == '"' || character == '\'')) {
                quote = character;
                ++attributes;
            } else if (character == quote) {
                quote = 0;
            }
        }
        if (attributes > mostAttributes) {
            return true;
        }
    }
    return false;
}

QString ownAttribute(const QXmlStreamAttributes& attributes, QLatin1StringView name) {
    return attributes.value(appcastNamespace, name).toString().trimmed();
}

/// Fills in what an enclosure says; false when it is not one of ours or says it wrongly.
bool readEnclosure(const QXmlStreamAttributes& attributes, const QUrl& from, AppcastItem& item) {
    item.version = ownAttribute(attributes, QLatin1StringView("version"));
    item.minimumSystemVersion = ownAttribute(attributes, QLatin1StringView("minimumSystemVersion"));
    item.architecture = ownAttribute(attributes, QLatin1StringView("architecture"));
    item.type = attributes.value(QLatin1StringView("type")).toString().trimmed();
    item.address =
        QUrl(attributes.value(QLatin1StringView("url")).toString().trimmed(), QUrl::StrictMode);
    bool isNumber = false;
    item.length = attributes.value(QLatin1StringView("length")).toLongLong(&isNumber);
    const auto signature =
        readSignature(ownAttribute(attributes, QLatin1StringView("signature")).toLatin1());
    if (signature) {
        item.signature = *signature;
    }
    const auto isOneLine = [](const QString& text) { return !text.contains(u'\n'); };
    const auto isGivenAsVersion = [](const QString& text) {
        return text.isEmpty() || isVersion(text.toStdString());
    };
    return !item.version.isEmpty() && isGivenAsVersion(item.version) &&
           isGivenAsVersion(item.minimumSystemVersion) && isOneLine(item.type) &&
           isOneLine(item.architecture) && isSafeRedirect(from, item.address) && isNumber &&
           item.length > 0 && item.length <= largestUpdate && signature;
}

/// Reads an `item` to its end; false when it offers nothing that could be installed.
bool readItem(QXmlStreamReader& xml, const QUrl& from, AppcastItem& item) {
    bool isOffer = false;
    while (xml.readNextStartElement()) {
        if (xml.namespaceUri().isEmpty() && xml.name() == QLatin1StringView("enclosure")) {
            isOffer = readEnclosure(xml.attributes(), from, item);
            xml.skipCurrentElement();
        } else if (xml.namespaceUri().isEmpty() && xml.name() == QLatin1StringView("description")) {
            item.notes = xml.readElementText(QXmlStreamReader::SkipChildElements).trimmed();
        } else {
            xml.skipCurrentElement();
        }
    }
    return isOffer && item.notes.size() <= longestNotes;
}

void readChannel(QXmlStreamReader& xml, const QUrl& from, std::vector<AppcastItem>& items) {
    std::size_t count = 0;
    while (xml.readNextStartElement()) {
        if (!xml.namespaceUri().isEmpty() || xml.name() != QLatin1StringView("item")) {
            xml.skipCurrentElement();
            continue;
        }
        if (++count > mostItems) {
            xml.raiseError(QStringLiteral("it has too many releases"));
            return;
        }
        AppcastItem item{};
        if (readItem(xml, from, item)) {
            items.push_back(std::move(item));
        }
    }
}

/// Goes to the root element; a document type is refused before anything could make use of it.
bool readRoot(QXmlStreamReader& xml) {
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::DTD:
            xml.raiseError(QStringLiteral("it declares a document type"));
            return false;
        case QXmlStreamReader::StartElement:
            if (xml.name() != QLatin1StringView("rss") ||
                xml.attributes().value(QLatin1StringView("version")) != QLatin1StringView("2.0")) {
                xml.raiseError(QStringLiteral("it is no RSS 2.0"));
                return false;
            }
            return true;
        default:
            break;
        }
    }
    return false;
}

} // namespace

QByteArray signedText(const AppcastItem& item, const FileDigest& file) {
    const auto sum = file.sum();
    const auto bytes = QByteArray(reinterpret_cast<const char*>(sum.data()), qsizetype(sum.size()));
    QByteArray text = "tidewell update 2\n";
    for (const QByteArray& line :
         {item.version.toUtf8(), item.type.toUtf8(), item.architecture.toUtf8(),
          item.minimumSystemVersion.toUtf8(), QByteArray::number(file.length()), bytes.toHex()}) {
        text += line + '\n';
    }
    return text;
}

Result<std::vector<AppcastItem>> readAppcast(const QByteArray& feed, const QUrl& from) {
    if (hasCrowdedElement(feed)) {
        return failure("an element has too many attributes", UpdateProblem::badFeed);
    }
    std::vector<AppcastItem> items;
    QXmlStreamReader xml(feed);
    if (readRoot(xml)) {
        while (xml.readNextStartElement()) {
            if (xml.namespaceUri().isEmpty() && xml.name() == QLatin1StringView("channel")) {
                readChannel(xml, from, items);
            } else {
                xml.skipCurrentElement();
            }
        }
        while (!xml.atEnd()) {
            xml.readNext(); // what follows the root has to be well-formed, too
        }
    }
    if (xml.hasError()) {
        return failure("line " + std::to_string(xml.lineNumber()) + ": " +
                           xml.errorString().toStdString(),
                       UpdateProblem::badFeed);
    }
    return items;
}

const AppcastItem* newestUpdate(const std::vector<AppcastItem>& items,
                                const Installation& installation) {
    const std::string system = installation.systemVersion.toStdString();
    std::string newest = installation.version.toStdString();
    const AppcastItem* update = nullptr;
    for (const AppcastItem& item : items) {
        const bool fitsSystem =
            system.empty() || item.minimumSystemVersion.isEmpty() ||
            compareVersions(item.minimumSystemVersion.toStdString(), system) <= 0;
        const bool fitsMachine =
            item.architecture.isEmpty() || item.architecture == installation.architecture;
        const bool fitsInstallation = !installation.isAppImage || item.type == appImageType;
        if (fitsSystem && fitsMachine && fitsInstallation &&
            compareVersions(item.version.toStdString(), newest) > 0) {
            newest = item.version.toStdString();
            update = &item;
        }
    }
    return update;
}

} // namespace tidewell
