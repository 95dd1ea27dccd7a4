// sign-update: makes the keys that releases are signed with, and the entries of the list of
// releases. docs/updates.md says how it is used.

#include "updater/feed/Appcast.h"
#include "updater/feed/SignedFeed.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include <sodium/utils.h>

namespace tidewell {
namespace {

/// Ends the program with a line on standard error.
[[noreturn]] void giveUp(const QString& reason) {
    std::fputs((QStringLiteral("sign-update: ") + reason + u'\n').toLocal8Bit().constData(),
               stderr);
    std::exit(EXIT_FAILURE); // NOLINT(concurrency-mt-unsafe): there is one thread
}

void print(const QByteArray& text) {
    if (std::fwrite(text.constData(), 1, std::size_t(text.size()), stdout) !=
            std::size_t(text.size()) ||
        std::fflush(stdout) != 0) {
        giveUp(QStringLiteral("cannot write to standard output"));
    }
}

QByteArray readText(const QString& path) {
    constexpr qint64 largest = qint64{1} << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        giveUp(path + QStringLiteral(": ") + file.errorString());
    }
    return file.read(largest);
}

/// What the file of a key holds; wiped when it is destroyed, as the key itself is.
struct KeyText : std::array<char, sodium_base64_ENCODED_LEN(sizeof(SecretKey),
                                                            sodium_base64_VARIANT_ORIGINAL)> {
    KeyText() = default;
    KeyText(const KeyText&) = delete;
    KeyText& operator=(const KeyText&) = delete;
    ~KeyText() { sodium_memzero(data(), size()); }
};

// Unbuffered, here and below: a buffer would keep a copy.
SecretKey readKey(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        giveUp(path + QStringLiteral(": ") + file.errorString());
    }
    KeyText text;
    const auto length = static_cast<qsizetype>(file.read(text.data(), qint64(text.size())));
    const auto key = readSecretKey({text.data(), std::max<qsizetype>(length, 0)});
    if (!key) {
        giveUp(QStringLiteral("the key's file holds no key"));
    }
    return *key;
}

void makeKey(const QString& path) {
    const KeyPair pair = makeKeyPair();
    QFile file(path);
    // Never over a key that is there: releases signed with it could not be followed any more.
    const bool isNew = file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                                 QFile::ReadOwner | QFile::WriteOwner);
    KeyText text;
    sodium_bin2base64(text.data(), text.size(), pair.secretKey.data(), pair.secretKey.size(),
                      sodium_base64_VARIANT_ORIGINAL);
    text.back() = '\n'; // in the place of the NUL byte
    if (!isNew || file.write(text.data(), qint64(text.size())) != qint64(text.size())) {
        const QString reason = file.errorString();
        if (isNew) {
            file.remove(); // half a key would keep the next from being made
        }
        giveUp(path + QStringLiteral(": ") + reason);
    }
    print(base64(pair.publicKey) + '\n');
}

QString typeOf(const QString& path) {
    const auto* const kind = std::ranges::find_if(
        updateFileKinds, [&path](const auto& known) { return path.endsWith(known.extension); });
    return kind == updateFileKinds.end() ? QStringLiteral("application/octet-stream")
                                         : QString(kind->type);
}

FileDigest digestOf(const QString& path) {
    constexpr qint64 piece = qint64{1} << 20;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        giveUp(path + QStringLiteral(": ") + file.errorString());
    }
    FileDigest digest;
    while (!file.atEnd()) {
        const QByteArray bytes = file.read(piece);
        if (bytes.isEmpty()) {
            giveUp(path + QStringLiteral(": ") + file.errorString());
        }
        digest.add(bytes);
    }
    return digest;
}

QByteArray itemText(const AppcastItem& item) {
    const QString own = appcastNamespace;
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeNamespace(own, QStringLiteral("tidewell"));
    xml.writeStartElement(QStringLiteral("item"));
    xml.writeTextElement(QStringLiteral("title"), item.version);
    xml.writeTextElement(QStringLiteral("pubDate"),
                         QDateTime::currentDateTimeUtc().toString(Qt::RFC2822Date));
    if (!item.notes.isEmpty()) {
        xml.writeTextElement(QStringLiteral("description"), item.notes);
    }
    xml.writeStartElement(QStringLiteral("enclosure"));
    xml.writeAttribute(QStringLiteral("url"), item.address.toString(QUrl::FullyEncoded));
    xml.writeAttribute(QStringLiteral("length"), QString::number(item.length));
    xml.writeAttribute(QStringLiteral("type"), item.type);
    xml.writeAttribute(own, QStringLiteral("version"), item.version);
    xml.writeAttribute(own, QStringLiteral("signature"),
                       QString::fromLatin1(base64(item.signature)));
    for (const auto& [name, value] :
         {std::pair(QStringLiteral("minimumSystemVersion"), item.minimumSystemVersion),
          std::pair(QStringLiteral("architecture"), item.architecture)}) {
        if (!value.isEmpty()) {
            xml.writeAttribute(own, name, value);
        }
    }
    xml.writeEndElement();
    xml.writeEndElement();
    return text.trimmed() + '\n';
}

void printItem(const AppcastItem& item, const PublicKey& key, const FileDigest& digest) {
    const QByteArray text = itemText(item);
    const auto items =
        readAppcast("<rss version='2.0'><channel>" + text + "</channel></rss>", item.address);
    if (!items || items->size() != 1 ||
        !isSigned(key, items->front().signature, signedText(items->front(), digest))) {
        giveUp(QStringLiteral("no updater would accept this release: look at the version, the "
                              "address, the size of the file and the key"));
    }
    print(text);
}

void printFeed(const QByteArray& text, const SecretKey& key, const QString& days,
               const QString& serial) {
    const auto now = QDateTime::currentDateTimeUtc();
    const auto signedBefore = readSignedFeed(text, publicHalf(key));
    bool areNumbers = true;
    const auto number = [&areNumbers](const QString& given, qint64 otherwise) {
        bool isNumber = true;
        const qint64 read = given.isEmpty() ? otherwise : given.toLongLong(&isNumber);
        areNumbers = areNumbers && isNumber && read > 0;
        return read;
    };
    const SignedFeed feed{number(serial, now.toSecsSinceEpoch()), now.addDays(number(days, 30)),
                          signedBefore ? signedBefore->feed : text};
    if (!areNumbers || (signedBefore && feed.serial <= signedBefore->serial)) {
        giveUp(QStringLiteral("--days and --serial are numbers, and serial numbers only grow"));
    }
    if (const auto items = readAppcast(feed.feed, QUrl(QStringLiteral("https://feed.example")));
        !items) {
        giveUp(QString::fromStdString(items.error().text));
    }
    print(publish(feed, key));
}

int run() {
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral(
        "sign-update make-key KEYFILE\n"
        "    makes a key, and prints its public half\n"
        "sign-update item --key KEYFILE --version VERSION --address URL FILE\n"
        "    prints the entry of a release for the list of releases\n"
        "sign-update feed --key KEYFILE [--days DAYS] FILE\n"
        "    prints a list of releases as it is published; renews one that is signed"));
    const auto add = [&options](const char* name, const char* description) {
        options.addOption({QString::fromLatin1(name), QString::fromLatin1(description),
                           QString::fromLatin1(name).toUpper()});
    };
    options.addHelpOption();
    add("key", "the file that make-key wrote");
    add("version", "the release's version");
    add("address", "where the file will be");
    add("notes", "a file with the release notes, in Markdown");
    add("minimum-system", "the oldest C library that the file runs with");
    add("architecture", "the machines that the file runs on, such as x86_64 or arm64");
    add("days", "for how long a feed is valid, 30 days unless said");
    add("serial", "a feed's serial number, the time in seconds unless said");
    options.addPositionalArgument(QStringLiteral("command"),
                                  QStringLiteral("make-key, item or feed"));
    options.addPositionalArgument(QStringLiteral("file"), QStringLiteral("KEYFILE or FILE"));
    options.process(*QCoreApplication::instance());

    const QStringList arguments = options.positionalArguments();
    const QString file = arguments.value(1);
    if (arguments.size() == 2 && arguments[0] == QStringLiteral("make-key")) {
        makeKey(file);
        return EXIT_SUCCESS;
    }
    if (arguments.size() != 2 ||
        (arguments[0] != QStringLiteral("item") && arguments[0] != QStringLiteral("feed"))) {
        options.showHelp(EXIT_FAILURE);
    }
    const auto value = [&options](const char* name) { // trimmed, as readers of a feed do
        return options.value(QString::fromLatin1(name)).trimmed();
    };
    const SecretKey key = readKey(value("key"));
    if (arguments[0] == QStringLiteral("feed")) {
        printFeed(readText(file), key, value("days"), value("serial"));
        return EXIT_SUCCESS;
    }
    const FileDigest digest = digestOf(file);
    AppcastItem item{
        .version = value("version"),
        .notes = value("notes").isEmpty() ? QString() : QString::fromUtf8(readText(value("notes"))),
        .address = QUrl(value("address"), QUrl::StrictMode),
        .type = typeOf(file),
        .length = digest.length(),
        .signature = {},
        .minimumSystemVersion = value("minimum-system"),
        .architecture = value("architecture")};
    item.signature = sign(key, signedText(item, digest));
    printItem(item, publicHalf(key), digest);
    return EXIT_SUCCESS;
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return tidewell::run();
}
