#include "platform/updater/Appcast.h"
#include "platform/updater/SafeAddress.h"
#include "platform/updater/VersionOrder.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Whatever the texts are, they have to have one order.
void checkOrder(std::string_view a, std::string_view b, std::string_view c) {
    using tidewell::compareVersions;
    require(compareVersions(a, b) == 0 <=> compareVersions(b, a));
    require(!(compareVersions(a, b) <= 0 && compareVersions(b, c) <= 0) ||
            compareVersions(a, c) <= 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<QByteArray> lines = bytes.split('\n');
    checkOrder(lines.value(0).toStdString(), lines.value(1).toStdString(),
               lines.value(2).toStdString());

    const auto appcast = readAppcast(bytes);
    const auto* items = std::get_if<std::vector<AppcastItem>>(&appcast);
    if (items == nullptr) {
        return 0;
    }
    for (const AppcastItem& item : *items) {
        require(isVersion(item.version.toStdString()) && isSafeAddress(item.address) &&
                item.length > 0 && item.length <= largestUpdate);
    }
    for (const bool isAppImage : {false, true}) {
        const AppcastItem* update = newestUpdate(
            *items, {QStringLiteral("1.9"), QStringLiteral("2.36"), QString(), isAppImage});
        require(update == nullptr || compareVersions(update->version.toStdString(), "1.9") > 0);
    }
    return 0;
}
