#pragma once

#include <QUrl>

namespace tidewell {

/// Whether the updater may ask an address: one of https, or of http on this very machine, without a
/// name and password in it. Pure.
bool isSafeAddress(const QUrl& address);

/// Whether an address is one of https, and not on this machine. Pure.
bool isSafeLink(const QUrl& address);

/// Whether what came from `from` may send the updater on to `to`: from the network only to a safe
/// link, and from this machine to no less safe an address. Pure.
bool isSafeRedirect(const QUrl& from, const QUrl& to);

} // namespace tidewell
