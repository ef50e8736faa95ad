#include "tools/torture/Torture.h"

#include "tools/torture/Nature.h"
#include "tools/torture/Watch.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <malloc.h>

namespace pacelet::torture {

namespace {

using Simulated::Random;

/// A window that nobody closes is open for so long at most.
constexpr Seconds longestOpen{900};

constexpr std::size_t keptForThreads = 4;

std::unique_ptr<Simulated::SimulatedMac> machineOf(std::uint64_t seed) {
    const auto names = Simulated::scenarioNames();
    return Simulated::makeScenario(names[seed % names.size()], seed);
}

} // namespace

Torture::Torture(std::uint64_t seed)
    : session_{machineOf(seed), Session::bundledCatalog(),
               seed % 4 == 3 ? OperatingSystem::linuxDesktop : OperatingSystem::macOS} {
    VirtualScheduler& scheduler = session_.scheduler();
    session_.mac().machine.setStandStill([&scheduler] { scheduler.standStill(); });
    session_.mac().tools.setTiming([&scheduler](Seconds span) { scheduler.standStill(span); });
    // What is made once is there from now on.
    session_.application().showWindow();
    settle();
    closeAll();
    session_.application().preferences().setOnboarded(seed % 3 != 0);
    before_ = Remains::of(session_);
}

std::string Torture::play(const Step& step) {
    if (step.verb == Verb::fault || step.verb == Verb::mend) {
        ledger_.setFailing(step.verb == Verb::fault);
    } else if (step.verb == Verb::sleep || step.verb == Verb::clock) {
        ledger_.disturb();
    }
    std::string what = act(step);
    try {
        settle();
        check();
        if (step.verb != Verb::leave && step.verb != Verb::sleep) {
            session_.scheduler().advance(step.lasts);
            settle();
            check();
        }
    } catch (const Broken& broken) {
        throw Broken{fmt::format("{}, after: {}", broken.what(), what)};
    }
    return what;
}

void Torture::check() {
    Watch::look(session_);
    ledger_.checkLooks();
    ledger_.checkDeeds(person_.agreed());
}

void Torture::settle() {
    session_.pass(0);
    motion_.arrive();
    session_.pass(0);
}

std::string Torture::act(const Step& step) {
    Random random{step.draw};
    Simulated::SimulatedMac& mac = session_.mac();
    switch (step.verb) {
    case Verb::machine:
        return Nature::change(mac, random);
    case Verb::clock:
        return Nature::setClock(mac, random);
    case Verb::fault:
        return Nature::fail(mac, session_.scheduler(),
                            session_.application().monitor().usageStore().directory, random);
    case Verb::mend:
        return Nature::mend(mac, session_.scheduler());
    case Verb::leave:
        leave(random, step.lasts);
        return fmt::format("goes away for {:.0f} s", step.lasts.count());
    case Verb::sleep:
        sleepMachine(random, step.lasts);
        return fmt::format("the machine sleeps for {:.0f} s", step.lasts.count());
    default:
        return person_.act(step.verb, random);
    }
}

void Torture::leave(Random& random, Seconds span) {
    const Seconds open = random.integer(0, 2) == 0 ? std::min(span, longestOpen) : Seconds{0};
    session_.scheduler().advance(open);
    settle();
    check();
    closeAll();
    // Now and then what was switched off comes on again.
    if (random.integer(0, 1) == 0) {
        Monitor& monitor = session_.application().monitor();
        monitor.setKeepHistory(true);
        if (monitor.isPaused()) {
            monitor.togglePause();
        }
    }
    session_.scheduler().advance(span - open);
    settle();
}

void Torture::sleepMachine(Random& random, Seconds span) {
    session_.mac().workspace.sleep();
    if (random.integer(0, 1) == 0) {
        settle();
    }
    session_.scheduler().suspend(span);
    // What fell due meanwhile may come before the news, or after it.
    if (random.integer(0, 1) == 0) {
        settle();
    }
    session_.mac().workspace.wake();
    settle();
}

void Torture::closeAll() {
    Application& application = session_.application();
    application.closePanel();
    if (application.settings() != nullptr) {
        application.settings()->close();
    }
    // The first time they may only be told what it means.
    for (int times = 0; times < 2; ++times) {
        application.closeWindow();
        settle();
    }
}

void Torture::finish() {
    ledger_.setFailing(false);
    Nature::mend(session_.mac(), session_.scheduler());
    closeAll();
    session_.scheduler().advance(Seconds{1200});
    settle();
    check();
    ledger_.checkHistory();
    const Remains after = Remains::of(session_);
    const auto same = [](const char* what, auto now, auto then) {
        hold(now == then, "left behind", fmt::format("{} {} instead of {}", now, what, then));
    };
    same("waits", after.waits, before_.waits);
    same("pieces of background work", after.jobs, before_.jobs);
    same("observers of sleep", after.observers, before_.observers);
    same("objects", after.objects, before_.objects);
    std::vector<std::string> opened;
    std::ranges::set_difference(after.descriptors, before_.descriptors, std::back_inserter(opened));
    // Qt keeps a thread or two, and what wakes them, for the next picture.
    hold(opened.size() <= keptForThreads, "left behind",
         fmt::format("descriptors of {}", fmt::join(opened, ", ")));
}

std::string Torture::figures() {
    const auto growth = static_cast<std::ptrdiff_t>(Remains::of(session_).heap) -
                        static_cast<std::ptrdiff_t>(before_.heap);
    return fmt::format("{} looks, {} of them judged; {} minutes; {} questions agreed to, {} deeds; "
                       "heap grew by {} KB",
                       ledger_.looks(), ledger_.judged(), ledger_.minutes(),
                       person_.agreed().size(), ledger_.deeds(), growth / 1024);
}

Remains Remains::of(Session& session) {
    const VirtualScheduler& scheduler = session.scheduler();
    Remains found{
        .waits = scheduler.pendingSleeps(),
        .jobs = scheduler.pendingJobs(),
        .observers = session.mac().workspace.observerCount(),
        .objects = static_cast<std::size_t>(session.application().findChildren<QObject*>().size()),
        .heap = ::mallinfo2().uordblks};
    for (const auto& entry : std::filesystem::directory_iterator{"/proc/self/fd"}) {
        // Their numbers are of no interest, nor is that of the folder just read.
        const std::string link = std::filesystem::read_symlink(entry.path());
        found.descriptors.insert(link.substr(0, link.find('[')));
    }
    return found;
}

} // namespace pacelet::torture
