#include "Hosts/Linux/Speed/SpeedMeasurement.h"

#include "Hosts/Linux/Speed/Load.h"
#include "Hosts/Linux/Speed/Probes.h"
#include "Hosts/Linux/Speed/SpeedFailure.h"
#include "Hosts/Linux/Speed/TestFiles.h"
#include "Hosts/Linux/Speed/TransferLoop.h"

#include <algorithm>
#include <deque>

namespace pacelet::Linux {

namespace {

constexpr Seconds interval{1};
constexpr Seconds betweenProbes{0.2};
constexpr Seconds idlePeriod{1};
/// A test of little time takes less than that.
constexpr double mostIdleShare = 0.1;
constexpr std::size_t fewestIdleProbes = 3;
/// How long the server may keep silent before anything is loaded.
constexpr Seconds patience{8};
/// After so many intervals in which nothing got through, the line is broken.
constexpr int mostEmptyIntervals = 3;
/// Connections need some time to get up to speed.
constexpr int intervalsOfRise = 2;
/// For closing connections before the limit.
constexpr Seconds timeToClose{0.3};
constexpr std::int64_t mostDownloaded = 600'000'000;
constexpr std::int64_t mostUploaded = 350'000'000;

/// What all parts of one test share.
struct Test {
    const SpeedServer& server;
    const std::atomic<bool>& stopped;
    Seconds limit;
    MonotonicTime deadline;
    TestFiles files{};
};

TestFiles fetchFiles(const Test& test) {
    constexpr std::int64_t longestConfiguration = std::int64_t{64} * 1024;
    TransferLoop loop{test.server, "", std::min(test.deadline, steadyNow() + patience),
                      test.stopped};
    Transfer configuration{loop, test.server.configuration, ConnectionUse::separate};
    configuration.limitTo(longestConfiguration);
    configuration.keepText();
    while (!configuration.hasEnded() && steadyNow() < loop.deadline()) {
        loop.turn(loop.deadline());
    }
    configuration.requireSuccess();
    const auto files = parseTestFiles(configuration.text());
    if (!files) {
        throw SpeedFailure{"the server's configuration does not read"};
    }
    return *files;
}

Seconds measureIdle(const Test& test) {
    const MonotonicTime begin = steadyNow();
    TransferLoop loop{test.server, test.files.endpoint, std::min(test.deadline, begin + patience),
                      test.stopped};
    Probes probes{loop, test.files.small};
    RoundTrips trips;
    const MonotonicTime enough = begin + std::min(idlePeriod, test.limit * mostIdleShare);
    while (steadyNow() < enough || trips.requests.size() < fewestIdleProbes) {
        if (steadyNow() >= loop.deadline()) {
            throw SpeedFailure{"the server does not answer"};
        }
        if (probes.underWay() == 0) {
            probes.sendSeparate();
        }
        loop.turn(loop.deadline());
        probes.collect();
        trips.append(probes.takeTrips());
    }
    // A TLS handshake takes time for more than the way.
    std::vector<Seconds> bare = trips.connects;
    bare.insert(bare.end(), trips.requests.begin(), trips.requests.end());
    return *lowerMedian(std::move(bare));
}

/// One direction, from its first connection to its last interval.
class LoadedLine {
public:
    LoadedLine(const Test& test, Load::Direction direction, MonotonicTime deadline)
        : loop_{test.server, test.files.endpoint, deadline, test.stopped},
          load_{loop_, direction == Load::Direction::upload ? test.files.upload : test.files.large,
                direction, sent_},
          probes_{loop_, test.files.small},
          mostBytes_{direction == Load::Direction::upload ? mostUploaded : mostDownloaded} {}

    DirectionFigures measure() {
        load_.add();
        while (!isOver()) {
            sendProbes();
            loop_.turn(std::min(nextProbe_, intervalBegin_ + interval));
            load_.keepUp();
            probes_.collect();
        }
        const bool neverStable = !goodput_.isStable() && whole_.duration > Seconds{};
        return {neverStable ? whole_.bitsPerSecond() : goodput_.bitsPerSecond(), responsiveness(),
                load_.connections()};
    }

private:
    /// Ends an interval when it is time to.
    bool isOver() {
        const MonotonicTime now = steadyNow();
        const bool isLast = now >= loop_.deadline() || load_.bytesUsed() >= mostBytes_;
        if (!isLast && now < intervalBegin_ + interval) {
            return false;
        }
        endInterval(now);
        if (isLast || goodput_.isStable()) {
            requireAny();
            return true;
        }
        load_.add();
        return false;
    }

    void endInterval(MonotonicTime now) {
        const std::int64_t bytes = load_.bytes();
        emptyIntervals_ = bytes > bytesBefore_ ? 0 : emptyIntervals_ + 1;
        if (emptyIntervals_ == mostEmptyIntervals) {
            throw SpeedFailure{"nothing gets through any more"};
        }
        goodput_.add(bytes - bytesBefore_, now - intervalBegin_);
        if (++intervals_ > intervalsOfRise) {
            whole_.add(bytes - bytesBefore_, now - intervalBegin_);
        }
        trips_.push_back(probes_.takeTrips());
        if (trips_.size() > intervalsThatCount) {
            trips_.pop_front();
        }
        intervalBegin_ = now;
        bytesBefore_ = bytes;
    }

    void requireAny() const {
        if (bytesBefore_ == 0) {
            throw SpeedFailure{"nothing gets through"};
        }
    }

    void sendProbes() {
        const MonotonicTime now = steadyNow();
        if (now >= nextProbe_) {
            probes_.sendSeparate();
            probes_.sendLoaded();
            nextProbe_ = now + betweenProbes;
        }
    }

    std::optional<double> responsiveness() const {
        RoundTrips trips;
        for (const RoundTrips& some : trips_) {
            trips.append(some);
        }
        if (trips.requests.empty()) {
            trips.append(probes_.unanswered());
        }
        return roundTripsPerMinute(trips);
    }

    SentBytes sent_;
    TransferLoop loop_;
    Load load_;
    Probes probes_;
    std::int64_t mostBytes_;
    Goodput goodput_;
    Throughput whole_; ///< all but the rise, for a line that never gets stable
    int intervals_ = 0;
    std::deque<RoundTrips> trips_; ///< those of the last intervals
    MonotonicTime intervalBegin_ = steadyNow();
    MonotonicTime nextProbe_ = steadyNow() + betweenProbes;
    std::int64_t bytesBefore_ = 0;
    int emptyIntervals_ = 0;
};

} // namespace

SpeedFigures measureSpeed(const SpeedServer& server, Seconds limit,
                          const std::atomic<bool>& stopped) {
    Test test{server, stopped, limit, steadyNow() + limit - timeToClose};
    test.files = fetchFiles(test);
    SpeedFigures figures;
    figures.idleRoundTrip = measureIdle(test);
    const MonotonicTime now = steadyNow();
    figures.download =
        LoadedLine{test, Load::Direction::download, now + (test.deadline - now) / 2}.measure();
    figures.upload = LoadedLine{test, Load::Direction::upload, test.deadline}.measure();
    return figures;
}

} // namespace pacelet::Linux
