#include "desktop/files/UserFolders.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace tidewell {
namespace {

TEST(RuntimeFile, LiesInTheSessionsFolderOrAPrivateOneOfOurOwn) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "file";
    writeText(file, "");
    const std::string own = "/tmp/tidewell-" + std::to_string(::getuid());
    for (const auto& [runtime, mode, expected] : {
             std::tuple(folder.path().string(), 0700, folder.path().string()),
             std::tuple(folder.path().string(), 0755, own),
             std::tuple(folder.path().string() + "/none", 0700, own),
             std::tuple(file.string(), 0700, own),
             std::tuple(std::string("tmp"), 0700, own),
         }) {
        ASSERT_EQ(::chmod(folder.path().c_str(), static_cast<mode_t>(mode)), 0);
        const ScopedEnvironment environment({{"XDG_RUNTIME_DIR", runtime}});
        EXPECT_EQ(runtimeFile("lock"), expected + "/lock") << runtime << " " << mode;
    }
    struct stat status{};
    ASSERT_EQ(::stat(own.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & ALLPERMS, S_IRWXU);
}

} // namespace
} // namespace tidewell
