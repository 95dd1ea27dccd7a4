#include "app/lists/UsageText.h"

#include "base/text/ByteText.h"
#include "base/text/IntegerText.h"
#include "ui/TextDirection.h"

#include <QStringList>

namespace tidewell {

namespace {

QString size(std::uint64_t bytes) {
    return QString::fromStdString(sizeText(bytes));
}

} // namespace

QString UsageText::of(const ApplicationUsage& usage) {
    QStringList lines{
        tr("Processes: %1")
            .arg(QString::fromStdString(integerText(static_cast<std::int64_t>(usage.processes)))),
        // An identifier to be typed, so in no language's digits.
        tr("Largest process: %1").arg(usage.largest)};
    if (!usage.largestCommand.empty()) {
        lines << isolated(QString::fromStdString(usage.largestCommand));
    }
    lines << tr("Resident (RSS): %1").arg(size(usage.resident));
    if (usage.proportional) {
        lines << tr("Shared counted once (PSS): %1").arg(size(*usage.proportional));
    }
    lines << tr("In swap: %1").arg(size(usage.swapped));
    return lines.join(u'\n');
}

QString UsageText::inSwap(std::uint64_t bytes) {
    return tr("Swap %1").arg(size(bytes));
}

} // namespace tidewell
