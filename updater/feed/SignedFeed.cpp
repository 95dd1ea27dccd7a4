#include "updater/feed/SignedFeed.h"

#include "updater/UpdateProblem.h"

#include <algorithm>

namespace tidewell {

namespace {

// Not what a file's signature is made of, so that neither can stand for the other.
constexpr auto heading = "tidewell feed 1";

/// Cuts off the text up to the next line feed, which goes, too; empty where there is none.
QByteArray takeLine(QByteArray& text) {
    const qsizetype end = text.indexOf('\n');
    const QByteArray line = text.left(std::max(end, qsizetype{0}));
    text.remove(0, end + 1);
    return line;
}

} // namespace

QByteArray publish(const SignedFeed& feed, const SecretKey& key) {
    const QByteArray text = QByteArray(heading) + '\n' + QByteArray::number(feed.serial) + '\n' +
                            feed.expires.toUTC().toString(Qt::ISODate).toLatin1() + '\n' +
                            feed.feed;
    return base64(sign(key, text)) + '\n' + text;
}

Result<SignedFeed> readSignedFeed(const QByteArray& published, const PublicKey& key) {
    QByteArray rest = published;
    const auto signature = readSignature(takeLine(rest));
    if (!signature || !isSigned(key, *signature, rest)) {
        return failure("the feed is not signed with the right key", UpdateProblem::unsignedFeed);
    }
    const bool isKnown = takeLine(rest) == heading;
    bool isNumber = false;
    const qint64 serial = takeLine(rest).toLongLong(&isNumber);
    const auto expires = QDateTime::fromString(QString::fromLatin1(takeLine(rest)), Qt::ISODate);
    if (!isKnown || !isNumber || serial < 0 || !expires.isValid() ||
        expires.timeSpec() != Qt::UTC) {
        return failure("the signed feed is of another format", UpdateProblem::badFeed);
    }
    return SignedFeed{serial, expires, rest};
}

Result<> checkFresh(const SignedFeed& feed, const QDateTime& now, qint64 highestSerial) {
    if (now >= feed.expires) {
        return failure("the feed expired at " + feed.expires.toString(Qt::ISODate).toStdString(),
                       UpdateProblem::oldFeed);
    }
    if (feed.serial < highestSerial) {
        return failure("the feed's serial number " + std::to_string(feed.serial) + " is below " +
                           std::to_string(highestSerial) + ", which was seen before",
                       UpdateProblem::oldFeed);
    }
    return {};
}

} // namespace tidewell
