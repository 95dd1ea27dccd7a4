#include "desktop/appearance/XSettings.h"

#include <QDataStream>
#include <QIODevice>

namespace tidewell {

namespace {

enum class Kind : quint8 { number, text, colour };

/// A text of that length and what fills it up to a multiple of four.
QByteArray takeText(QDataStream& stream, quint32 length) {
    if (length > stream.device()->bytesAvailable()) { // before any memory is taken for it
        stream.setStatus(QDataStream::ReadPastEnd);
        return {};
    }
    QByteArray text = stream.device()->read(length);
    stream.skipRawData(static_cast<int>((4 - length % 4) % 4));
    return text;
}

} // namespace

std::optional<XSettings> parseXSettings(std::span<const std::uint8_t> bytes) {
    QDataStream stream(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                               static_cast<qsizetype>(bytes.size())));
    const bool isBigEndian = !bytes.empty() && bytes.front() != 0;
    stream.setByteOrder(isBigEndian ? QDataStream::BigEndian : QDataStream::LittleEndian);
    stream.skipRawData(8); // the byte order and the serial number
    XSettings settings;
    quint32 count = 0;
    stream >> count;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        Kind kind{};
        quint16 nameLength = 0;
        stream >> kind;
        stream.skipRawData(1);
        stream >> nameLength;
        const QByteArray name = takeText(stream, nameLength);
        stream.skipRawData(4); // the serial number of its last change
        quint32 value = 0;
        stream >> value;
        switch (kind) {
        case Kind::number:
            settings[name] = static_cast<qint32>(value);
            break;
        case Kind::text:
            settings[name] = QString::fromUtf8(takeText(stream, value));
            break;
        case Kind::colour:
            stream.skipRawData(4); // the other two of its four components
            break;
        default:
            return std::nullopt; // of unknown length
        }
    }
    return stream.status() == QDataStream::Ok ? std::optional(std::move(settings)) : std::nullopt;
}

} // namespace tidewell
