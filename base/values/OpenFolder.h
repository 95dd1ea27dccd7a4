#pragma once

#include <dirent.h>
#include <memory>

namespace tidewell {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// Owns a directory stream, as opendir(3) gives it, or none.
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

} // namespace tidewell
