#pragma once

#include "base/ports/Bundle.h"
#include "base/ports/Log.h"
#include "base/ports/UserDefaults.h"
#include "base/runtime/Executor.h"
#include "desktop/appearance/DesktopAppearance.h"
#include "model/updates/SparkleModel.h"

#include <QString>

#include <functional>
#include <memory>

namespace tidewell {

/// What the updater of this program stands on. What is referred to must outlive it.
struct ProgramUpdaterEnvironment {
    const Bundle& bundle;
    UserDefaults& defaults;
    Executor& mainThread;
    Log& log;
    DesktopAppearance& appearance;
    std::function<bool()> animationsAreWanted;
    /// Ends the program, and starts the given file in its place.
    std::function<void(const QString& program)> restart;
};

/// The updater of this build; empty in a build that a distribution keeps up to date, which of the
/// two files has it being the build's choice, and where the bundle does not say where updates come
/// from and how they are signed. After the application object.
MakeUpdater programUpdater(ProgramUpdaterEnvironment environment);

} // namespace tidewell
