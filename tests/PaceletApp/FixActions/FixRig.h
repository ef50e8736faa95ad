#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "tests/PaceletApp/Monitor/MonitorRig.h"

#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace pacelet {

inline void PrintTo(const Question& question, std::ostream* stream) {
    *stream << '[' << question.title << "] [" << question.message << "] [" << question.confirm
            << (question.destructive ? "] destructive" : "]");
}

namespace testing {

/// Counts how often a signal came.
template<typename Sender, typename Signal>
class SignalCount : public QObject {
public:
    SignalCount(Sender& sender, Signal signal) {
        connect(&sender, signal, this, [this] { ++count_; });
    }
    int take() { return std::exchange(count_, 0); }

private:
    int count_ = 0;
};

/// The fixes on a simulated Mac. Its monitor has looked once and looks again only when asked to, so
/// that every sample counts.
class FixRig : public MonitorRig {
protected:
    FixRig() {
        make();
        detach(monitor->tick());
        scheduler.settle();
        actions = std::make_unique<FixActions>(mac.platform(), scheduler, *monitor, router,
                                               "https://tidyvault.example/");
    }

    /// As the monitor shows it now.
    ProcessGroup groupOf(const std::string& appPath) { return *monitor->group(appPath); }

    void perform(FixID fix) { actions->press(rawValue(fix)); }
    void perform(FixID fix, const ProcessGroup& group) { actions->perform(fix, &group); }

    std::optional<Question> question() const {
        const auto& confirmation = actions->confirmation();
        return confirmation ? std::optional{confirmation->question} : std::nullopt;
    }

    /// Presses the accepting button; what needs no time happens.
    void accept() {
        actions->acceptConfirmation();
        scheduler.settle();
    }

    void askToQuit(const ProcessGroup& group) {
        perform(FixID::quitApp, group);
        accept();
    }

    Simulated::RunningApp launch(const std::string& name, Simulated::QuitHabit habit,
                                 double quitDelay = 0) {
        const auto world = mac.machine.lock();
        Simulated::RunningApp& app = Simulated::launch(
            *world, {name, "com.example." + name, "/Applications/" + name + ".app"});
        app.habit = habit;
        app.quitDelay = Seconds{quitDelay};
        return app;
    }

    void setHabit(Simulated::QuitHabit habit, double quitDelay = 0) {
        const auto world = mac.machine.lock();
        world->running.front().habit = habit;
        world->running.front().quitDelay = Seconds{quitDelay};
    }

    /// The outcomes in the log since the last call.
    std::vector<std::string> takeOutcomes() {
        constexpr std::string_view prefix = "quit outcome: ";
        std::vector<std::string> outcomes;
        for (const auto& line : std::exchange(mac.machine.lock()->records.log, {})) {
            EXPECT_EQ(line.level, LogLevel::information);
            EXPECT_EQ(line.subsystem, "app.pacelet.Pacelet");
            EXPECT_EQ(line.category, "fixes");
            EXPECT_TRUE(line.message.starts_with(prefix)) << line.message;
            outcomes.push_back(line.message.substr(prefix.size()));
        }
        return outcomes;
    }

    Router router;
    std::unique_ptr<FixActions> actions;
};

} // namespace testing
} // namespace pacelet
