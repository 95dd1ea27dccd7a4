#pragma once

#include <QString>

namespace tidewell {

/// What an update can fail at, each with words of its own for the user.
enum class UpdateProblem {
    unreachable,    ///< no connection, or it broke off
    untrusted,      ///< the server could not prove to be ours
    refused,        ///< the server answered, but not with the file
    badRedirect,    ///< sent on too often, or to somewhere less safe
    timedOut,       ///< nothing came for too long
    badFeed,        ///< what came is no list of releases
    wrongLength,    ///< the file is not as long as the feed says
    wrongSignature, ///< the file is not what the developers signed
    cannotStore,    ///< no place to put the file
    cannotReplace,  ///< the program's own file could not be replaced
    noHandler,      ///< the desktop has nothing to open the file with
    notStarted,     ///< the updater is set up wrongly
    broken,         ///< a part of the program is missing or broke down
};

struct UpdateFailure {
    UpdateProblem problem;
    QString detail; ///< for the log
};

} // namespace tidewell
