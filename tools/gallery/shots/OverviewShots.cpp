#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

namespace {

void pressQuit(Session& session) {
    watching(Screen::overview, 60)(session);
    const Finding& first = session.application().monitor().result().findings.front();
    session.application().actions().press(*first.primaryFix(), first.groupID());
    session.pass(0);
}

/// It has cooled down a while ago.
void coolDown(Session& session) {
    const auto setHeat = [&](int state) {
        session.mac().machine.lock()->vitals.thermalState = state;
    };
    setHeat(2);
    watching(Screen::overview, 720)(session);
    setHeat(0);
    session.pass(300);
}

/// A command that someone named without mercy.
void burnWithALongName(Session& session) {
    {
        const auto world = session.mac().machine.lock();
        Simulated::Process process = *world->processes.find("WindowServer");
        process.pid = 0;
        process.path = "/usr/local/bin/a-tool-with-" + std::string(200, 'm') + "-in-its-name";
        process.load.percent = 640;
        process.footprint = std::int64_t{700} << 30;
        world->processes.spawn(process);
    }
    watching(Screen::overview, 60)(session);
}

} // namespace

std::vector<Shot> overviewShots() {
    return {
        {"overview-checking", "quiet",
         [](Session& session) { session.application().showWindow(); }},
        {"overview-quiet", "quiet", watching(Screen::overview)},
        {"overview-spotlight", "spotlight-after-update", watching(Screen::overview, 60)},
        {"overview-memory", "out-of-memory", watching(Screen::overview, 60)},
        {"overview-hot", "hot", watching(Screen::overview, 60)},
        {"overview-tabs", "chrome-tabs", watching(Screen::overview, 60)},
        {"overview-disk", "full-disk", watching(Screen::overview)},
        {"overview-earlier", "quiet", coolDown},
        {"overview-earlier-narrow", "quiet", coolDown, leastSize},
        {"overview-paused", "quiet",
         [](Session& session) {
             watching(Screen::overview)(session);
             session.application().monitor().togglePause();
             session.pass(0);
         }},
        {"overview-question", "virtual-machine", pressQuit},
        {"overview-long-narrow", "virtual-machine", burnWithALongName, leastSize, {}, true},
        {"overview-names", "quiet",
         [](Session& session) {
             runLongUsualNames(session);
             watching(Screen::overview, 60)(session);
         },
         leastSize},
        {"overview-contrast", "chrome-tabs",
         [](Session& session) {
             session.application().setWishes({.reducedMotion = true, .highContrast = true});
             watching(Screen::overview, 60)(session);
         }},
        {"overview-wide", "virtual-machine", watching(Screen::overview, 60), {2560, 1440}},
    };
}

} // namespace pacelet::gallery
