#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace tidewell {

inline void writeText(const std::filesystem::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

inline std::string readText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// A folder of its own for each test, gone with it.
class TemporaryFolder final {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "tidewell-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file of this name and, where they are missing, the folders that it is in.
    std::filesystem::path write(const std::filesystem::path& name, const std::string& text) const {
        const auto file = path_ / name;
        create_directories(file.parent_path());
        writeText(file, text);
        return file;
    }

private:
    std::filesystem::path path_;
};

} // namespace tidewell
