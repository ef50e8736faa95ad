#pragma once

#include "Hosts/Simulated/Model/Random.h"
#include "tools/session/Session.h"
#include "tools/torture/Ledger.h"
#include "tools/torture/Person.h"
#include "tools/torture/Step.h"

#include <QAnimationDriver>

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>

namespace pacelet::torture {

/// What moves is told that it has arrived, so that nothing depends on how fast this machine is.
class ArrivingMotion : public QAnimationDriver {
public:
    ArrivingMotion() { install(); }
    ~ArrivingMotion() override { uninstall(); }

    void arrive() {
        elapsed_ += 10'000;
        advanceAnimation();
    }
    qint64 elapsed() const override { return elapsed_; }

private:
    qint64 elapsed_ = 0;
};

/// What the program holds on to while nothing of it can be seen.
struct Remains {
    std::size_t waits = 0;
    std::size_t jobs = 0;
    std::size_t observers = 0; ///< of the machine's sleep
    std::size_t objects = 0;
    std::multiset<std::string> descriptors{}; ///< what they lead to
    std::size_t heap = 0;                     ///< bytes

    static Remains of(Session& session);
};

/// One machine, one program and one person, drawn from a seed.
class Torture {
public:
    explicit Torture(std::uint64_t seed);

    /// Does the step and lets its time pass, and says in a few words what it was. Throws `Broken`
    /// when something does not hold then.
    std::string play(const Step& step);

    /// Everybody goes, and nothing may stay behind. Throws `Broken`.
    void finish();

    const std::map<std::string, int>& presses() const { return person_.presses(); }

    /// What was seen, in one line.
    std::string figures();

private:
    std::string act(const Step& step);
    void settle();
    void check();
    void leave(Simulated::Random& random, Seconds span);
    void sleepMachine(Simulated::Random& random, Seconds span);
    void closeAll();

    ArrivingMotion motion_;
    Session session_;
    Person person_{session_};
    Ledger ledger_{session_};
    Remains before_; ///< once the window had been open
};

} // namespace pacelet::torture
