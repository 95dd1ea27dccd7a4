#pragma once

#include <functional>

namespace tidewell {

/// Saves the history once on the program's way out, in whatever order and number the signs of it
/// come: the machine announces its power-off and then ends the program, or the program is simply
/// ended. Main thread.
class HistorySaving {
public:
    /// `save` is called once for each way out that is taken.
    explicit HistorySaving(std::function<void()> save)
        : save_(std::move(save)) {}

    /// The machine is about to power off or restart.
    void willPowerOff() { saveOnce(); }
    /// It is not, after all: what is sampled from now on is to be saved again.
    void powerOffWasCancelled() { saved_ = false; }
    /// The program ends.
    void willTerminate() { saveOnce(); }

private:
    void saveOnce() {
        if (!saved_) {
            saved_ = true; // first: saving must not be entered again, whatever happens in it
            save_();
        }
    }

    std::function<void()> save_;
    bool saved_ = false;
};

} // namespace tidewell
