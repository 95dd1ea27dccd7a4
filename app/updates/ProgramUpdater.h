#pragma once

#include "app/ApplicationEnvironment.h"

#include <QString>

#include <functional>

namespace tidewell {

/// The updater of this build; empty in a build that a distribution keeps up to date, which of the
/// two files has it being the build's choice, and where the bundle does not say where updates come
/// from and how they are signed. Of `environment` it takes what an updater stands on; `restart`
/// ends the program, and starts the given file in its place. After the application object.
MakeUpdater programUpdater(const ApplicationEnvironment& environment,
                           std::function<void(const QString& program)> restart);

} // namespace tidewell
