#include "PaceletApp/InternetView/InternetModel.h"
#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

namespace {

using Step = std::function<void(Session&)>;

InternetModel& screen(Session& session) {
    auto* const root = session.application().window()->property("model").value<QObject*>();
    return *qobject_cast<InternetModel*>(root->property("screenModel").value<QObject*>());
}

/// Opens the screen on a machine that was changed first, and does one more thing there.
Step internet(const Step& change, const Step& act = {}) {
    return [change, act](Session& session) {
        if (change) {
            change(session);
        }
        watching(Screen::internet, 6)(session);
        if (act) {
            act(session);
        }
    };
}

void runTest(Session& session) {
    screen(session).runTest();
    session.pass(60);
}

void useCable(Session& session) {
    const auto world = session.mac().machine.lock();
    world->network.wifi.reset();
    world->network.path = {true, false, true};
}

/// Seen from the far end of the garden.
void walkAway(Session& session) {
    const auto world = session.mac().machine.lock();
    world->network.wifi = Simulated::WiFi{-84, -91, 13, 1};
}

void neverAnswer(Session& session) {
    session.mac().network.setDelivery(Simulated::PathDelivery::onDemand);
}

void breakTest(Session& session) {
    session.mac().machine.inject(Simulated::ToolMissing{"/usr/bin/networkQuality"});
}

void startTest(Session& session) {
    session.scheduler().setBackgroundDuration(Seconds{25});
    screen(session).runTest();
    session.pass(0);
}

/// A tool that someone named without mercy pulls a disk image.
void trafficOfALongName(Session& session) {
    const auto world = session.mac().machine.lock();
    Simulated::Process process = *world->processes.find("WindowServer");
    process.pid = 0;
    process.path = "/usr/local/bin/a-tool-with-" + std::string(200, 'm') + "-in-its-name";
    const std::int32_t pid = world->processes.spawn(process).pid;
    world->network.traffic.push_back({pid, 812'000'000, 96'000'000});
}

} // namespace

std::vector<Shot> internetShots() {
    return {
        {"internet-checking", "quiet", internet(neverAnswer)},
        {"internet-healthy", "quiet", internet({})},
        {"internet-tested", "quiet", internet({}, runTest)},
        {"internet-slow", "slow-line", internet({}, runTest)},
        {"internet-weak", "slow-line", internet(walkAway)},
        {"internet-wired", "quiet", internet(useCable, runTest)},
        {"internet-offline", "offline", internet({})},
        {"internet-testing", "quiet", internet({}, startTest)},
        {"internet-failed", "quiet", internet(breakTest, runTest)},
        {"internet-question", "slow-line",
         internet({},
                  [](Session& session) {
                      screen(session).askTest();
                      session.pass(0);
                  })},
        {"internet-long-narrow",
         "slow-line",
         internet(trafficOfALongName, runTest),
         leastSize,
         {},
         true},
        {"internet-names", "slow-line", internet(runLongUsualNames, runTest), leastSize},
        {"internet-wide", "slow-line", internet({}, runTest), {2560, 1440}},
    };
}

} // namespace pacelet::gallery
