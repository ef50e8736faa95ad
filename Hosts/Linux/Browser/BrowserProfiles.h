#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Which of a browser's profiles is which.
namespace pacelet::Linux::BrowserProfiles {

/// A browser's folder of user data: what its command line tells, which the kernel keeps with a NUL
/// behind each argument, or else `standard`.
std::string userDataFolder(std::string_view commandLine, std::string_view standard);

/// Names of all profiles by the folders they stand in, out of the text of "Local State"; empty when
/// it does not read.
std::map<std::string, std::string> namesIn(std::string_view localState);

/// The folder of the profile in which the settings of our extension hold `token`; nothing when none
/// does.
std::optional<std::string> folderWith(const std::string& userData, std::string_view token);

/// What is known of a profile that is connected.
struct Profile {
    std::string name;    ///< empty when it cannot be told
    bool isOnly = false; ///< its browser has no other
};

/// The profiles as their windows name them, no two alike; nothing for one that is all there is.
std::vector<std::optional<std::string>> shownNames(const std::vector<Profile>& profiles);

} // namespace pacelet::Linux::BrowserProfiles
