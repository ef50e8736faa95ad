// Somebody tries everything, on machines on which everything happens, and what must hold is looked
// at after each step.
//
//     pacelet-torture SEEDS [FIRST]       so many seeds, from the first on; makes a fault short
//     pacelet-torture --play SEED [STEPS] one of them in this process, or just these of its steps

#include "Core/Support/StandardStreams.h"
#include "Core/Support/Text.h"
#include "PaceletApp/Components/Typography.h"
#include "tools/torture/Trial.h"
#include "tools/torture/Watch.h"

#include <QApplication>
#include <QStyleHints>

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <span>
#include <string_view>
#include <sys/resource.h>
#include <thread>
#include <vector>

namespace {

using namespace pacelet;
using namespace pacelet::torture;

constexpr int statusUsage = 2;

/// What takes longer than this turns in a circle.
constexpr rlim_t mostSeconds = 600;

int playHere(int argc, char** argv, std::uint64_t seed, const Places& places) {
    const rlimit limit{mostSeconds, mostSeconds};
    ::setrlimit(RLIMIT_CPU, &limit);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::styleHints()->setCursorFlashTime(0);
    installFonts();
    Watch::hearWarnings();
    return play(seed, places);
}

/// One after the other, as many at a time as there are processors.
class Work {
public:
    Work(std::uint64_t first, std::uint64_t count)
        : next_{first},
          end_{first + count} {}

    int run() {
        std::vector<std::thread> workers(std::max(1U, std::thread::hardware_concurrency()));
        for (std::thread& worker : workers) {
            worker = std::thread{[this] { work(); }};
        }
        for (std::thread& worker : workers) {
            worker.join();
        }
        for (const auto& [kind, times] : presses_) {
            if (times == 0) {
                fmt::print("never pressed:{}\n", kind);
            }
        }
        fmt::print("{} kinds of controls seen; {} seeds failed\n", presses_.size(), failed_.load());
        return failed_ == 0 ? 0 : 1;
    }

private:
    void work() {
        for (std::uint64_t seed = next_++; seed < end_; seed = next_++) {
            const Trial trial = tryOut(program_, seed, allPlaces(seed));
            if (trial.fault.empty()) {
                tell(fmt::format("seed {}: {}", seed, lastLine(trial.told)));
                add(trial.presses);
                continue;
            }
            ++failed_;
            tell(fmt::format("seed {}: {}, made short now", seed, trial.fault));
            const Trial least = shortest(program_, trial);
            tell(fmt::format("seed {} FAILS in {} steps: pacelet-torture --play {} {}\n{}", seed,
                             least.places.size(), seed, textOf(least.places), least.told));
        }
    }

    static std::string_view lastLine(std::string_view text) {
        text.remove_suffix(text.ends_with('\n') ? 1 : 0);
        return text.substr(text.rfind('\n') + 1);
    }

    void add(const Presses& presses) {
        const std::lock_guard lock{mutex_};
        for (const auto& [kind, times] : presses) {
            presses_[kind] += times;
        }
    }

    void tell(const std::string& line) {
        const std::lock_guard lock{mutex_};
        fmt::print("{}\n", line);
        std::fflush(stdout);
    }

    const std::string program_ = std::filesystem::read_symlink("/proc/self/exe").string();
    std::atomic<std::uint64_t> next_;
    std::uint64_t end_;
    std::atomic<int> failed_ = 0;
    std::mutex mutex_;
    Presses presses_;
};

} // namespace

int main(int argc, char** argv) {
    StandardStreams::secure();
    std::vector<std::string_view> words(argv + 1, argv + argc);
    const bool plays = !words.empty() && words.front() == "--play";
    if (plays) {
        words.erase(words.begin());
    }
    const auto number = words.empty() ? std::nullopt : parseInteger<std::uint64_t>(words[0]);
    if (!number || words.size() > 2) {
        StandardStreams::complain(
            "usage: pacelet-torture SEEDS [FIRST] | --play SEED [STEP,STEP…]");
        return statusUsage;
    }
    if (plays) {
        return playHere(argc, argv, *number,
                        words.size() == 2 ? placesFrom(words[1]) : allPlaces(*number));
    }
    const auto first = words.size() == 2 ? parseInteger<std::uint64_t>(words[1]) : std::nullopt;
    return Work{first.value_or(1), *number}.run();
}
