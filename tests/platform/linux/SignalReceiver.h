#pragma once

#include <QDBusMessage>
#include <QObject>

#include <string>
#include <vector>

namespace tidewell {

/// Remembers the names of the bus signals that it is connected to.
class SignalReceiver final : public QObject {
    Q_OBJECT

public:
    std::vector<std::string> members;

public Q_SLOTS:
    void take(const QDBusMessage& signal) { members.push_back(signal.member().toStdString()); }
};

} // namespace tidewell
