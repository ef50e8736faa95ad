#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/UsageView/UsageModel.h"
#include "tools/gallery/shots/Shot.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace pacelet::gallery {

namespace {

constexpr QSize wholePage{1200, 1040};

/// How an owner treats a machine.
struct Habits {
    double load = 30;         ///< percent on a working day at its busiest
    double pressureShare = 0; ///< of the minutes of work
    double swapGB = 0;        ///< at the end of a working day
    std::int64_t days = 30;
    double diskFreeShare = 0.5;
};

/// From 0 to 1, the same each time.
double noise(std::int64_t number) {
    return std::fmod(std::abs(std::sin(static_cast<double>(number) * 12.9898) * 43758.5453), 1.0);
}

/// Work begins at 8, has its height at noon, and ends at 20 o'clock.
double workAt(std::int64_t minute) {
    const double hour = static_cast<double>(minute % minutesPerDay) / 60;
    const std::int64_t weekday = (minute / minutesPerDay + 3) % 7; // Monday is 0
    const double share = std::max(0.0, std::sin((hour - 7.5) / 13.5 * 3.14159265));
    return share * (weekday >= 5 ? 0.35 : 1) * (0.75 + 0.5 * noise(minute / 97));
}

MinuteRecord record(std::int64_t minute, const Habits& habits) {
    const double work = workAt(minute);
    const double cpu = std::min(100.0, 3 + habits.load * work * (0.6 + 0.8 * noise(minute)));
    const bool pressed = noise(minute * 7) < habits.pressureShare * work;
    return {.t = minute,
            .cpu = cpu,
            .cpuMax = std::min(100.0, cpu * 1.4),
            .pressure = pressed ? 1 : 0,
            .swap = static_cast<std::int64_t>(habits.swapGB * work * 1073741824),
            .memUsed = std::int64_t{9} << 30,
            .n = 20};
}

/// What slows the machine down: an index in the morning, the browser at work, and what is heavy.
CauseMinute causes(std::int64_t minute, const Habits& habits) {
    const std::int64_t ofDay = minute % minutesPerDay;
    const double work = workAt(minute);
    CauseMinute made{.t = minute, .causes = {}};
    const auto add = [&](bool stands, Cause cause, Severity severity) {
        if (stands) {
            made.causes.push_back({std::move(cause), severity, 60, 120, 180});
        }
    };
    add(ofDay > 480 && static_cast<double>(ofDay) < 480 + 70 * noise(minute / minutesPerDay),
        {FindingKind::spotlight, "", ""}, Severity::low);
    add(noise(minute / 23) < 0.4 * work,
        {FindingKind::browser, "/Applications/Google Chrome.app", "Google Chrome"},
        Severity::medium);
    add(noise(minute / 41) < 0.004 * habits.load * work,
        {FindingKind::cpuHog, "/Applications/Xcode.app", "Xcode"}, Severity::high);
    add(noise(minute / 31) < 0.06 * work, {FindingKind::windowServer, "", "WindowServer"},
        Severity::medium);
    add(noise(minute / 37) < habits.pressureShare * work,
        {FindingKind::memory, "/Applications/Safari.app", "Safari"}, Severity::medium);
    add(noise(minute / 300) > 0.93, {FindingKind::photos, "", ""}, Severity::low);
    return made;
}

void live(Session& session, const Habits& habits) {
    const UsageStore& store = session.application().monitor().usageStore();
    const CauseStore& journal = session.application().monitor().causeStore();
    const auto now =
        static_cast<std::int64_t>(unixTime(session.scheduler().now()) / secondsPerMinute);
    for (std::int64_t minute = now - habits.days * minutesPerDay; minute < now; ++minute) {
        const std::int64_t hour = minute % minutesPerDay / 60;
        if (hour >= 7 && hour < 23) {
            store.append(record(minute, habits));
            if (const CauseMinute made = causes(minute, habits); !made.causes.empty()) {
                journal.append(made);
            }
        }
    }
    const auto world = session.mac().machine.lock();
    world->vitals.diskFree = static_cast<std::int64_t>(
        static_cast<double>(world->hardware.diskBytes) * habits.diskFreeShare);
}

void choose(Session& session, int range) {
    const auto* root = session.application().window()->property("model").value<RootModel*>();
    auto* model = root->property("screenModel").value<UsageModel*>();
    model->chooseRange(range);
    session.pass(0);
}

/// The screen after ten minutes of an owner's life with it.
Shot month(std::string name, std::string scenario, const Habits& habits, int range,
           QSize size = wholePage) {
    return {.name = std::move(name),
            .scenario = std::move(scenario),
            .drive =
                [habits, range](Session& session) {
                    live(session, habits);
                    watching(Screen::usage, 600)(session);
                    choose(session, range);
                },
            .size = size};
}

/// A machine beyond all measure, with a name to match.
void runMonster(Session& session) {
    {
        const auto world = session.mac().machine.lock();
        world->hardware.machineName =
            "Mac Pro 🖥 of the department of מחשבים, on the third "
            "floor, behind the coffee machine, "
            "not to be switched off by anyone without asking first";
        world->hardware.memoryBytes = std::int64_t{1536} << 30;
        world->vitals.swapUsed = std::int64_t{1111} << 30;
    }
    live(session, {.load = 300, .pressureShare = 1, .swapGB = 1234});
    watching(Screen::usage, 90)(session);
}

/// The same, scrolled to the causes.
Shot atTheCauses(Shot shot) {
    shot.drive = [drive = std::move(shot.drive)](Session& session) {
        drive(session);
        session.application().router().setScreen(Screen::overview);
        session.application().router().showCauses();
        session.pass(0);
    };
    return shot;
}

/// The same with the pointer at a place in the window.
Shot pointingAt(Shot shot, QPointF place) {
    shot.drive = [drive = std::move(shot.drive), place](Session& session) {
        drive(session);
        QQuickWindow* window = session.application().window();
        QMouseEvent move{QEvent::MouseMove, place, window->mapToGlobal(place),
                         Qt::NoButton,      {},    {}};
        QCoreApplication::sendEvent(window, &move);
        session.pass(0);
    };
    return shot;
}

} // namespace

std::vector<Shot> usageShots() {
    const Habits calm{};
    const Habits driven{.load = 150, .pressureShare = 0.6, .swapGB = 7, .diskFreeShare = 0.08};
    return {
        {"usage-fresh", "fresh-install", watching(Screen::usage, 90)},
        month("usage-day", "quiet", calm, 0),
        month("usage-week", "quiet", calm, 1),
        month("usage-month", "quiet", calm, 2),
        month("usage-bottlenecks", "out-of-memory", driven, 2),
        month("usage-narrow", "chrome-tabs", driven, 1, leastSize),
        month("usage-narrow-page", "virtual-machine", driven, 2, {1000, 1180}),
        atTheCauses(month("usage-causes", "quiet", calm, 0)),
        month("usage-causes-page", "quiet", driven, 2, {1600, 1500}),
        month("usage-causes-narrow", "chrome-tabs", driven, 0, {1000, 1500}),
        pointingAt(month("usage-causes-bar", "chrome-tabs", driven, 1, {1200, 1500}), {400, 930}),
        pointingAt(month("usage-tip", "chrome-tabs", calm, 1), {380, 800}),
        {"usage-long-narrow", "virtual-machine", runMonster, {1000, 1180}, {}, true},
        {"usage-intel", "intel-history", watching(Screen::usage, 600), wholePage},
        {"usage-off", "quiet",
         [](Session& session) {
             session.application().monitor().setKeepHistory(false);
             watching(Screen::usage, 60)(session);
         }},
    };
}

} // namespace pacelet::gallery
