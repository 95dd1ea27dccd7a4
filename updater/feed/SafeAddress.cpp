#include "updater/feed/SafeAddress.h"

#include <QRegularExpression>

namespace tidewell {

namespace {

bool isEncrypted(const QUrl& address) {
    return address.scheme() == QStringLiteral("https");
}

/// Names are not looked up: only what cannot be anything else is this machine.
bool isLoopback(const QString& host) {
    // What has a part above 255 is a name again.
    static const QRegularExpression addresses(
        QStringLiteral("\\A(localhost|::1|127(\\.(25[0-5]|2[0-4]\\d|1\\d\\d|[1-9]?\\d)){3})\\z"));
    return addresses.match(host).hasMatch();
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
    static const QRegularExpression local(
        QStringLiteral("(\\A|\\.)localhost\\.?\\z|\\A(127|0)\\.|\\A::(1|ffff:.*)?\\z"));
    return isSafeAddress(address) && isEncrypted(address) &&
           !local.match(address.host()).hasMatch();
}

bool isSafeRedirect(const QUrl& from, const QUrl& to) {
    return isSafeLink(to) || (isLoopback(from.host()) && isSafeAddress(to) &&
                              (isEncrypted(to) || !isEncrypted(from)));
}

} // namespace tidewell
