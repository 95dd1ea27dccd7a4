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
    const std::string session = folder.path();
    using Case = std::tuple<std::string, int, std::string>;
    for (const auto& [runtime, mode, expected] :
         {Case{session, 0700, session}, Case{session, 0755, own},
          Case{session + "/none", 0700, own}, Case{file.string(), 0700, own},
          Case{"tmp", 0700, own}}) {
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
