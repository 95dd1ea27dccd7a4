#include "app/updates/ProgramUpdater.h"

namespace tidewell {

MakeUpdater programUpdater(ProgramUpdaterEnvironment /*environment*/) {
    return nullptr;
}

} // namespace tidewell
