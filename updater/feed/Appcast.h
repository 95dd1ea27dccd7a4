#pragma once

#include "base/values/Result.h"
#include "updater/feed/Signature.h"

#include <QString>
#include <QUrl>

#include <array>
#include <vector>

namespace tidewell {

/// One release as a feed offers it, complete and safe to ask for.
struct AppcastItem {
    QString version;
    QString notes; ///< Markdown; may be empty
    QUrl address;
    QString type;  ///< MIME type of the file; one line, like the other texts but the notes
    qint64 length; ///< bytes, at least 1
    Signature signature;
    QString minimumSystemVersion; ///< empty: any system
    QString architecture;         ///< empty: any machine
};

/// What is signed of a release, with the length and the sum of its file. It says all by which a
/// release is chosen and installed, so that a file cannot be passed off as a newer version, as one
/// for another machine, or as another kind of file.
QByteArray signedText(const AppcastItem& item, const FileDigest& file);

/// The namespace of our own elements and attributes.
inline constexpr auto appcastNamespace = QLatin1StringView("https://tidewell.example/ns/updates/1");

/// The type of the files that a program running from an AppImage can be replaced by.
inline constexpr auto appImageType = QLatin1StringView("application/vnd.appimage");

/// The kinds of files that have an extension, by which desktops tell what opens them.
struct UpdateFileKind {
    QLatin1StringView extension;
    QLatin1StringView type;
};
inline constexpr std::array updateFileKinds{
    UpdateFileKind{QLatin1StringView(".AppImage"), appImageType},
    UpdateFileKind{QLatin1StringView(".deb"),
                   QLatin1StringView("application/vnd.debian.binary-package")},
    UpdateFileKind{QLatin1StringView(".rpm"), QLatin1StringView("application/x-rpm")},
};

/// No file of an update is larger, in bytes.
inline constexpr qint64 largestUpdate = qint64{1} << 30;

/// The releases of a feed as docs/updates.md describes it, in their order. Releases that lack
/// something or say it wrongly are left out. A feed is refused as a whole that is not well-formed,
/// declares a document type, is no RSS 2.0 or has more than 1,000 releases. Pure.
/// Addresses that are less safe than `from`, the feed's own, are such a wrong; so are notes of more
/// than 64 Ki characters.
Result<std::vector<AppcastItem>> readAppcast(const QByteArray& feed, const QUrl& from);

/// What a release has to fit.
struct Installation {
    QString version;
    QString systemVersion; ///< of the C library; empty where it is unknown: fits every release
    QString architecture;  ///< as QSysInfo::buildCpuArchitecture() says it
    bool isAppImage;       ///< only AppImages will do then
};

/// The newest release that is newer than the installed version and fits it, the first of several
/// of the same version; null when there is none. Pure.
const AppcastItem* newestUpdate(const std::vector<AppcastItem>& items,
                                const Installation& installation);

} // namespace tidewell
