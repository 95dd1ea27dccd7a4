#pragma once

#include "base/values/Result.h"
#include "updater/feed/Signature.h"

#include <QDateTime>

namespace tidewell {

/// A list of releases as it is published: signed as a whole, so that nobody on its way can add,
/// change, hold back or bring back anything.
struct SignedFeed {
    qint64 serial;     ///< higher with each signing; refused below one that was seen before
    QDateTime expires; ///< from when on it counts no more
    QByteArray feed;   ///< as it was signed, to the byte
};

/// The published form: the signature's base64 in a line of its own, and everything after that is
/// what is signed. See docs/updates.md.
QByteArray publish(const SignedFeed& feed, const SecretKey& key);

/// Reads a published feed. Nothing of it is looked at before the signature was found to fit; the
/// cause of a failure is an `UpdateProblem`. Expiry and serial are the caller's to judge. Pure.
Result<SignedFeed> readSignedFeed(const QByteArray& published, const PublicKey& key);

/// Fails for a feed that has expired, or whose serial is below the highest seen.
Result<> checkFresh(const SignedFeed& feed, const QDateTime& now, qint64 highestSerial);

} // namespace tidewell
