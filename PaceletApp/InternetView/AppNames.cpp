#include "PaceletApp/InternetView/AppNames.h"

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace pacelet {

namespace {

struct Names {
    std::vector<std::string> names;
    std::unordered_map<std::int32_t, std::size_t> placeOf; ///< in `names`, by pid
};

} // namespace

AppName appNames(std::span<const ProcessGroup> groups) {
    const auto known = std::make_shared<Names>();
    for (const ProcessGroup& group : groups) {
        for (const ProcessUsage& member : group.members) {
            known->placeOf.try_emplace(member.pid, known->names.size());
        }
        known->names.push_back(group.displayName);
    }
    return [known](std::int32_t pid) -> std::optional<std::string> {
        const auto place = known->placeOf.find(pid);
        if (place == known->placeOf.end()) {
            return std::nullopt;
        }
        return known->names[place->second];
    };
}

} // namespace pacelet
