#pragma once

#include "app/ApplicationEnvironment.h"

#include <QString>

#include <functional>

namespace tidewell {

/// What makes the program's updater, out of `environment`. Empty where the bundle does not say
/// where updates come from and how they are signed, and in builds without the updater, which have
/// NoProgramUpdater.cpp in place of ProgramUpdater.cpp. `restart` ends the program, and starts the
/// given file in its place. After the application object.
MakeUpdater programUpdater(const ApplicationEnvironment& environment,
                           std::function<void(const QString& program)> restart);

} // namespace tidewell
