#include "updater/feed/SafeAddress.h"

#include <array>

#include <arpa/inet.h>

namespace tidewell {

namespace {

bool isEncrypted(const QUrl& address) {
    return address.scheme() == QStringLiteral("https");
}

/// Names are not looked up: only what cannot be anything else is this machine. QUrl has written
/// numbers in their usual form.
bool isLoopback(const QString& host) {
    std::array<unsigned char, sizeof(in_addr)> bytes{};
    return host == QStringLiteral("localhost") || host == QStringLiteral("::1") ||
           (::inet_pton(AF_INET, host.toLatin1().constData(), bytes.data()) == 1 &&
            bytes[0] == 127);
}

/// Whether anybody could take a host for this machine.
bool mayBeThisMachine(QString host) {
    if (host.endsWith(u'.')) {
        host.chop(1);
    }
    return isLoopback(host) || host.endsWith(QStringLiteral(".localhost")) ||
           host.startsWith(QStringLiteral("127.")) || host.startsWith(QStringLiteral("0.")) ||
           host == QStringLiteral("::") || host.startsWith(QStringLiteral("::ffff:"));
}

} // namespace

bool isSafeAddress(const QUrl& address) {
    if (!address.isValid() || address.host().isEmpty() || !address.userInfo().isEmpty()) {
        return false;
    }
    return isEncrypted(address) ||
           (address.scheme() == QStringLiteral("http") && isLoopback(address.host()));
}

bool isSafeLink(const QUrl& address) {
    return isSafeAddress(address) && isEncrypted(address) && !mayBeThisMachine(address.host());
}

bool isSafeRedirect(const QUrl& from, const QUrl& to) {
    return isSafeLink(to) || (isLoopback(from.host()) && isSafeAddress(to) &&
                              (isEncrypted(to) || !isEncrypted(from)));
}

} // namespace tidewell
