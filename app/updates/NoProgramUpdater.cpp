#include "app/updates/ProgramUpdater.h"

namespace tidewell {

MakeUpdater programUpdater(const ApplicationEnvironment& /*environment*/,
                           std::function<void(const QString& program)> /*restart*/) {
    return nullptr;
}

} // namespace tidewell
