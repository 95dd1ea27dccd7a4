#pragma once

#include "base/values/WarningLevel.h"

#include <QString>

namespace tidewell {

/// A level in the user's language, for those whom its colour says nothing; empty for `none`.
QString levelWord(WarningLevel level);

/// `figure`, followed by the level in words if there is one.
QString withLevel(const QString& figure, WarningLevel level);

} // namespace tidewell
