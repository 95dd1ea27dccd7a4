#include "tests/fuzz/Require.h"
#include "updater/feed/Appcast.h"
#include "updater/feed/SafeAddress.h"
#include "updater/feed/VersionOrder.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<QByteArray> lines = bytes.split('\n');
    // Whatever the texts are, they have to have one order.
    const std::string a = lines.value(0).toStdString();
    const std::string b = lines.value(1).toStdString();
    const std::string c = lines.value(2).toStdString();
    require(compareVersions(a, b) == 0 <=> compareVersions(b, a));
    require(compareVersions(a, b) > 0 || compareVersions(b, c) > 0 || compareVersions(a, c) <= 0);

    const QUrl from(QStringLiteral("https://tidewell.example/feed.xml"));
    const auto items = readAppcast(bytes, from);
    if (!items) {
        return 0;
    }
    for (const AppcastItem& item : *items) {
        require(isVersion(item.version.toStdString()) && isSafeLink(item.address) &&
                item.length > 0 && item.length <= largestUpdate);
    }
    for (const bool isAppImage : {false, true}) {
        const AppcastItem* update = newestUpdate(
            *items, {QStringLiteral("1.9"), QStringLiteral("2.36"), QString(), isAppImage});
        require(update == nullptr || compareVersions(update->version.toStdString(), "1.9") > 0);
    }
    return 0;
}
