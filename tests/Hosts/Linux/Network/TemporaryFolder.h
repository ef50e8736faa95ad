#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace pacelet {

/// A folder of a test's own, gone with its end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "pacelet-XXXXXX").string();
        path_ = ::mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    const std::filesystem::path& path() const { return path_; }

    void write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::ofstream{path_ / name} << text;
    }
    void link(const std::string& name, const std::string& target) const {
        std::filesystem::create_directories((path_ / name).parent_path());
        std::filesystem::create_symlink(target, path_ / name);
    }

private:
    std::filesystem::path path_;
};

} // namespace pacelet
