#pragma once

#include "model/processes/ApplicationUsage.h"

#include <QCoreApplication>
#include <QString>

namespace tidewell {

/// What an application's processes use, in the user's words.
struct UsageText {
    Q_DECLARE_TR_FUNCTIONS(UsageText)

public:
    /// Some lines of plain text.
    static QString of(const ApplicationUsage& usage);

    /// The remark that so many bytes lie in swap.
    static QString inSwap(std::uint64_t bytes);
};

} // namespace tidewell
