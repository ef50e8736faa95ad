#pragma once

#include "tools/session/Session.h"
#include "tools/torture/Reckoning.h"

#include <QObject>

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace pacelet::torture {

/// A minute as its looks found the machine.
struct Minute {
    std::int64_t t = 0; ///< as in `MinuteRecord`
    std::int64_t looks = 0;
    bool isKnown = true; ///< nothing failed in it
    double loads = 0;    ///< the sum over the looks, in percent of the machine
    double highest = 0;
    double rounding = 0; ///< by how much the tools may have rounded a load
    std::int32_t worstPressure = 1;
    std::int64_t swap = 0; ///< at the last look
};

/// Keeps the books on a machine that is known to the last figure, and holds the program to them:
/// its first cause, its figures, its history, and what it did to the machine.
class Ledger {
public:
    /// `session` outlives this.
    explicit Ledger(Session& session);

    /// Something fails from now on, or the clocks do not tell: nothing is expected of the figures
    /// until a few looks at the machine have gone well.
    void disturb() { calmLooks_ = 0; }
    void setFailing(bool failing);

    /// Throws `Broken` when something was done to the machine that nobody agreed to. `agreed` are
    /// the titles of all questions that were agreed to.
    void checkDeeds(const std::vector<std::string>& agreed);
    /// Throws `Broken` for a look at the machine since the last call that found something else than
    /// there was.
    void checkLooks();
    /// Throws `Broken` unless every minute stands in the history. To be called when nothing is
    /// under way.
    void checkHistory();

    std::int64_t looks() const { return looks_; }
    std::int64_t judged() const { return judged_; }
    std::int64_t deeds() const { return deeds_; }
    std::size_t minutes() const { return written_.size(); }

private:
    void lookEnded();
    Shares measure(const Simulated::World& world);
    void judge(const Simulated::World& world, const Shares& shares);
    void note(const std::string& fault);
    void keepMinute(const Simulated::World& world, double load);
    void sortMinutes(int cleared);

    Session& session_;
    QObject listener_;
    std::string fault_; ///< the first one since the last check
    bool failing_ = false;
    int calmLooks_ = 0;
    std::int64_t looks_ = 0;
    std::int64_t judged_ = 0;
    double rounding_ = 0;

    Seconds lastAwake_{0};
    std::map<std::int32_t, Seconds> lastTimes_;
    Reckoning reckoning_;

    std::optional<Minute> openMinute_;
    std::vector<Minute> writing_; ///< closed, and on their way to the disk
    std::vector<Minute> written_;
    int cleared_ = 0; ///< how often the user agreed to clear the history
    bool clearing_ = false;

    std::size_t seenQuits_ = 0;
    std::int64_t seenTabs_ = 0;
    std::int64_t deeds_ = 0;
    std::map<std::string, int> done_; ///< how often, by the words that a question begins with
};

} // namespace pacelet::torture
