#pragma once

#include "model/updates/SparkleModel.h"
#include "tests/fakes/FakeUpdater.h"
#include "tests/fakes/Surroundings.h"

namespace tidewell {

/// The model of updates on an updater in the hands of the test.
class UpdaterSurroundings : public Surroundings {
protected:
    std::shared_ptr<SparkleModel> makeUpdates(Result<> start = {}) {
        return std::make_shared<SparkleModel>(
            SparkleModel::Environment{.defaults = defaults,
                                      .mainThread = mainThread,
                                      .clock = clock,
                                      .log = log,
                                      .makeUpdater = [this, start](SPUUpdaterDelegate& delegate) {
                                          updater = std::make_shared<FakeUpdater>(delegate);
                                          updater->start = start;
                                          return updater;
                                      }});
    }

    std::shared_ptr<FakeUpdater> updater; ///< of the model made last
};

} // namespace tidewell
