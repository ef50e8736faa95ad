#include "tools/gallery/Shot.h"

#include <fmt/format.h>

#include <iterator>

namespace pacelet::gallery {

namespace {

// clang-format off
constexpr std::vector<Shot> (*shotsOfScreens[])() = {
    overviewShots,
    processesShots,
    backgroundItemsShots,
    internetShots,
    usageShots,
    browserShots,
    settingsShots,
    panelShots,
};
// clang-format on

} // namespace

std::function<void(Session&)> watching(Screen screen, double seconds) {
    return [screen, seconds](Session& session) {
        session.open(screen);
        session.pass(seconds);
    };
}

std::vector<Shot> allShots() {
    std::vector<Shot> shots;
    for (const auto set : shotsOfScreens) {
        std::vector<Shot> more = set();
        shots.insert(shots.end(), std::make_move_iterator(more.begin()),
                     std::make_move_iterator(more.end()));
    }
    return shots;
}

std::vector<Shot> tour(const std::string& scenario) {
    std::vector<Shot> shots;
    for (const ScreenRow& screen : screens) {
        shots.push_back({.name = fmt::format("{}-{}", screen.rawValue, scenario),
                         .scenario = scenario,
                         .drive = watching(screen.value)});
    }
    return shots;
}

} // namespace pacelet::gallery
