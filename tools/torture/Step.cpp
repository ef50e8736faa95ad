#include "tools/torture/Step.h"

#include "Hosts/Simulated/Model/Random.h"
#include "Hosts/Simulated/Model/VirtualTime.h"

#include <array>
#include <utility>

namespace pacelet::torture {

namespace {

using Simulated::hours;
using Simulated::Random;

/// How often each comes, in a hundred or so.
constexpr std::array<std::pair<Verb, int>, 12> shares{{{Verb::press, 36},
                                                       {Verb::speak, 12},
                                                       {Verb::key, 14},
                                                       {Verb::type, 3},
                                                       {Verb::point, 6},
                                                       {Verb::window, 14},
                                                       {Verb::leave, 9},
                                                       {Verb::machine, 14},
                                                       {Verb::fault, 6},
                                                       {Verb::mend, 4},
                                                       {Verb::sleep, 2},
                                                       {Verb::clock, 2}}};

Verb anyVerb(Random& random) {
    std::int64_t sum = 0;
    for (const auto& [verb, share] : shares) {
        sum += share;
    }
    std::int64_t place = random.integer(0, sum - 1);
    for (const auto& [verb, share] : shares) {
        place -= share;
        if (place < 0) {
            return verb;
        }
    }
    return Verb::press;
}

Seconds anySpan(Verb verb, Random& random) {
    switch (verb) {
    case Verb::leave:
        return Seconds{random.uniform(60, 4 * 3600)};
    case Verb::sleep:
        return Seconds{random.uniform(5, 9 * 3600)};
    default:
        // Often faster than the program can follow.
        switch (random.integer(0, 3)) {
        case 0:
            return Seconds{0};
        case 1:
            return Seconds{random.uniform(0, 0.6)};
        case 2:
            return Seconds{random.uniform(0, 5)};
        default:
            return Seconds{random.uniform(5, 40)};
        }
    }
}

} // namespace

std::vector<Step> stepsOf(std::uint64_t seed) {
    Random random{seed};
    std::vector<Step> steps;
    for (Seconds time{0}; time < hours(48);) {
        const Verb verb = anyVerb(random);
        const Seconds lasts = anySpan(verb, random);
        steps.push_back({verb, random.next(), lasts});
        time += lasts;
    }
    return steps;
}

} // namespace pacelet::torture
