#include "ui/LevelWords.h"

#include <QCoreApplication>

namespace tidewell {

namespace {

struct LevelWords {
    Q_DECLARE_TR_FUNCTIONS(LevelWords)
};

} // namespace

QString levelWord(WarningLevel level) {
    switch (level) {
    case WarningLevel::none:
        break;
    case WarningLevel::low:
        return LevelWords::tr("Low");
    case WarningLevel::warn:
        return LevelWords::tr("Warning");
    case WarningLevel::high:
        return LevelWords::tr("High");
    }
    return {};
}

QString withLevel(const QString& figure, WarningLevel level) {
    return level == WarningLevel::none ? figure
                                       : LevelWords::tr("%1, %2").arg(figure, levelWord(level));
}

} // namespace tidewell
