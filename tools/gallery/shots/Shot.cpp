#include "tools/gallery/shots/Shot.h"

#include <fmt/format.h>

#include <filesystem>
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

void runLongUsualNames(Session& session) {
    const auto world = session.mac().machine.lock();
    double load = 120;
    for (const std::string name : {"Visual Studio Code", "Microsoft Teams", "Microsoft PowerPoint",
                                   "Adobe Photoshop 2026"}) {
        const Simulated::InstalledApp bundle{name, "com.example." + name,
                                             "/Applications/" + name + ".app"};
        world->installed.push_back(bundle);
        Simulated::RunningApp app;
        app.number = ++world->lastAppNumber;
        app.bundle = bundle;
        Simulated::Process process;
        process.user = Simulated::ann;
        process.path = bundle.executable();
        process.application = app.number;
        process.load.percent = load -= 20;
        process.footprint = std::int64_t{2} << 30;
        app.mainPid = world->processes.spawn(process).pid;
        world->network.traffic.push_back({app.mainPid, 8'120'000, 960'000});
        world->running.push_back(app);
    }
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
    const std::string name = std::filesystem::path{scenario}.stem().string();
    for (const ScreenRow& screen : screens) {
        shots.push_back({.name = fmt::format("{}-{}", screen.rawValue, name),
                         .scenario = scenario,
                         .drive = [screen = screen.value](Session& session) {
                             session.pass(6);
                             watching(screen, 18)(session);
                         }});
    }
    return shots;
}

} // namespace pacelet::gallery
