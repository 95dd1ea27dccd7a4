#include "base/values/ReadFile.h"
#include "tests/fakes/TemporaryFolder.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tidewell {
namespace {

TEST(ReadFile, GivesWholeRegularFilesOrWhyNot) {
    const TemporaryFolder folder;
    const std::string text(10'000, 'x');
    const std::string file = folder.write("file", text);
    EXPECT_EQ(readFile(AT_FDCWD, file.c_str(), text.size()), text);
    EXPECT_GT(readFile(AT_FDCWD, "/proc/self/status", 1 << 20)->size(), 100U) << "its size says 0";
    EXPECT_EQ(readFile(AT_FDCWD, folder.write("empty", "").c_str(), 0), "");
    std::array<char, 4> buffer{};
    EXPECT_EQ(readStart(AT_FDCWD, file.c_str(), buffer), "xxxx");

    const std::string fifo = folder.path() / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    for (const auto& [path, cause] : {std::pair{file, std::errc::file_too_large},
                                      {folder.path().string(), std::errc::is_a_directory},
                                      {fifo, std::errc::not_supported},
                                      {file + "s", std::errc::no_such_file_or_directory}}) {
        const auto content = readFile(AT_FDCWD, path.c_str(), text.size() - 1);
        ASSERT_FALSE(content) << path;
        EXPECT_EQ(content.error().cause, cause) << path;
    }
    EXPECT_FALSE(readStart(AT_FDCWD, "/nowhere", buffer));
}

} // namespace
} // namespace tidewell
