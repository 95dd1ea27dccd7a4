#pragma once

#include "platform/observable/ObservableObject.h"

namespace tidewell {

/// What the status item and the panel need of the model that looks for new versions. Main thread.
class UpdateModel : public ObservableObject {
public:
    virtual ~UpdateModel() = default;

    /// Published: true once a newer version was reported, false once none was.
    virtual bool isUpdateAvailable() const = 0;

    /// Starts the checks over, as the user's settings want them; returns at once. Called each time
    /// a view that shows the result appears.
    virtual void scheduleUpdateChecks() = 0;
};

} // namespace tidewell
