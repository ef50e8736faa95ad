#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace pacelet::testing {

/// An empty folder of its own, removed with all its content at the end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "pacelet-test-XXXXXX";
        if (::mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error{"no temporary folder"};
        }
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }

    /// Writes a file and the folders above it; answers its path.
    std::filesystem::path write(std::string_view name, std::string_view content) const {
        std::filesystem::path file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream{file, std::ios::binary} << content;
        return file;
    }

    /// Makes a symbolic link, its target there or not, and the folders above it.
    void link(std::string_view name, const std::filesystem::path& target) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::filesystem::create_symlink(target, path_ / name);
    }

    std::string read(std::string_view name) const {
        std::ostringstream text;
        text << std::ifstream{path_ / name, std::ios::binary}.rdbuf();
        return text.str();
    }

private:
    std::filesystem::path path_;
};

} // namespace pacelet::testing
