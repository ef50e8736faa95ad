#include "Hosts/Linux/LinuxSettings.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace pacelet::Linux {

namespace {

/// A folder out of the environment; only an absolute one counts.
std::string folderVariable(const char* name, std::string standard) {
    const char* value = std::getenv(name);
    return value != nullptr && *value == '/' ? std::string{value} : std::move(standard);
}

} // namespace

std::string LinuxSettings::standardConfigFolder(const std::string& home) {
    return folderVariable("XDG_CONFIG_HOME", home + "/.config");
}

std::string LinuxSettings::standardDataFolder(const std::string& home) {
    return folderVariable("XDG_DATA_HOME", home + "/.local/share");
}

std::string LinuxSettings::standardDisplay() {
    const char* display = std::getenv("DISPLAY");
    return display != nullptr ? display : "";
}

std::string LinuxSettings::ownProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).string();
}

std::string LinuxSettings::besideProgram(const std::string& program,
                                         const std::vector<std::string>& places) {
    const auto folder = std::filesystem::path{program}.parent_path();
    const auto found = std::find_if(places.begin(), places.end(), [&](const std::string& place) {
        std::error_code error;
        return std::filesystem::exists(folder / place, error);
    });
    return (folder / (found == places.end() ? places.front() : *found)).lexically_normal().string();
}

} // namespace pacelet::Linux
