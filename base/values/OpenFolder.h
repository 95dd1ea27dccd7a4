#pragma once

#include <dirent.h>
#include <memory>

namespace tidewell {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// Owns a folder that is open for being listed, or none.
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

} // namespace tidewell
