#pragma once

#include <QUrl>

namespace tidewell {

/// Whether the updater may ask an address: one of https, or of http on this very machine, without a
/// name and password in it. Pure.
bool isSafeAddress(const QUrl& address);

/// Whether an answer from `from` may send the updater on to `to`: to a safe address, and not from
/// https to less. Pure.
bool isSafeRedirect(const QUrl& from, const QUrl& to);

} // namespace tidewell
