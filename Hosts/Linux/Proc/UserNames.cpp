#include "Hosts/Linux/Proc/UserNames.h"

#include "Hosts/Linux/Proc/ShownText.h"

#include <cerrno>
#include <pwd.h>
#include <vector>

namespace pacelet::Linux {

namespace {

constexpr std::size_t roomForOneUser = 1024;
constexpr std::size_t mostRoom = 1 << 20;

std::string lookUp(std::uint32_t uid) {
    std::vector<char> room(roomForOneUser);
    passwd record{};
    passwd* found = nullptr;
    while (::getpwuid_r(uid, &record, room.data(), room.size(), &found) == ERANGE &&
           room.size() < mostRoom) {
        room.resize(room.size() * 2);
    }
    const bool hasName = found != nullptr && found->pw_name != nullptr && *found->pw_name != '\0';
    return hasName ? shownWord(found->pw_name) : std::to_string(uid);
}

} // namespace

const std::string& UserNames::nameOf(std::uint32_t uid) {
    const auto known = names_.find(uid);
    return known != names_.end() ? known->second : names_.emplace(uid, lookUp(uid)).first->second;
}

} // namespace pacelet::Linux
