#pragma once

#include "Hosts/Simulated/Model/World.h"

#include <deque>
#include <map>
#include <set>
#include <string>

/// What slows a machine down that is known to the last figure, reckoned without any of the
/// program's own rules: whoever changes one of them has two places to tell.
namespace pacelet::torture {

/// What every process uses, in percent of one core, by pid.
using Shares = std::map<std::int32_t, double>;

/// What the program remembers of the machine, and nobody else could know.
struct Memories {
    bool isStuck = false;          ///< an application could not be ended
    bool isSpotlightStuck = false; ///< it has been busy for hours
    bool isLinux = false;
};

class Reckoning {
public:
    /// One look at the machine.
    void add(const Simulated::World& world, const Shares& shares);

    /// The ids of what may come first when every process uses `scale` times as much: the first
    /// cause, and those that hardly differ from it. "" stands for none at all.
    std::set<std::string> firstCauses(const Simulated::World& world, const Shares& shares,
                                      const Memories& memories, double scale, double slack) const;

private:
    static constexpr std::size_t looksInMean = 3;
    std::deque<std::map<std::string, double>> looks_; ///< percent by application or pid
};

} // namespace pacelet::torture
