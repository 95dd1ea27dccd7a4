#pragma once

#include <QDBusArgument>

#include <tuple>

namespace tidewell {

/// A type that goes over D-Bus as a structure of its fields. `fields(record)` gives references to
/// them, in the order of the signature.
template <typename Record>
concept BusStructure = requires(Record& record) { Record::fields(record); };

template <BusStructure Record>
QDBusArgument& operator<<(QDBusArgument& out, const Record& record) {
    out.beginStructure();
    std::apply([&out](const auto&... field) { (out << ... << field); }, Record::fields(record));
    out.endStructure();
    return out;
}

template <BusStructure Record>
const QDBusArgument& operator>>(const QDBusArgument& in, Record& record) {
    in.beginStructure();
    std::apply([&in](auto&... field) { (in >> ... >> field); }, Record::fields(record));
    in.endStructure();
    return in; // NOLINT(bugprone-return-const-ref-from-parameter): the signature that Qt wants
}

} // namespace tidewell
