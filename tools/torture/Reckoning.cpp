#include "tools/torture/Reckoning.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

namespace pacelet::torture {

namespace {

using Simulated::Process;
using Simulated::World;

constexpr std::int64_t gibibyte = std::int64_t{1} << 30;

/// "/Applications/A.app" of all that stands below it; the pid of what stands in no application.
std::string ownerOf(const Process& process) {
    const auto end = (process.path + '/').find(".app/");
    return end == std::string::npos ? "pid:" + std::to_string(process.pid)
                                    : process.path.substr(0, end + 4);
}

/// One application with its helpers, or one process.
struct Owner {
    std::string id;
    const Process* face = nullptr; ///< its main program, else the busiest process
    bool hasMain = false;
    double busiest = -1;
    double percent = 0;
    std::int64_t bytes = 0;
    bool isTold = false;

    bool isApp() const { return id.ends_with(".app"); }
    std::string_view name() const { return face->name(); }
    /// The user's own application, which may be quit.
    bool isOwn() const {
        return isApp() && face->user.uid == Simulated::ann.uid && !id.starts_with("/System/") &&
               !id.starts_with("/usr/") && id != "/Applications/Pacelet.app";
    }
    void add(const Process& process, double share) {
        const std::size_t slash = id.rfind('/');
        const bool isMain = isApp() && process.path == id + "/Contents/MacOS" +
                                                           id.substr(slash, id.size() - slash - 4);
        if (!hasMain && (isMain || share > busiest)) {
            face = &process;
            hasMain = isMain;
        }
        busiest = std::max(busiest, share);
        const bool isAnns = process.user.uid == Simulated::ann.uid;
        bytes += isAnns ? process.footprint : process.resident;
    }
};

struct Cause {
    int severity = 0; ///< 1 to 4
    double percent = 0;
    std::string id;
};

using Names = std::initializer_list<std::string_view>;

bool isOneOf(std::string_view name, Names names) {
    return std::ranges::find(names, name) != names.end();
}

/// A machine whose applications and processes are known, and what slows it down.
class Verdict {
public:
    Verdict(const World& world, std::vector<Owner> owners)
        : world_{world},
          owners_{std::move(owners)} {}

    std::vector<Cause> causes(const Memories& memories) {
        const Simulated::Vitals& vitals = world_.vitals;
        if (memories.isStuck) {
            add(3, 0, "stuckApp");
        }
        if (vitals.thermalState > 0) {
            constexpr std::array severities{0, 1, 3, 4};
            add(severities.at(static_cast<std::size_t>(vitals.thermalState)), 0, "heat");
        }
        if (vitals.pressureLevel != 1 || vitals.swapUsed > 4 * gibibyte) {
            const Owner& eater = *std::ranges::max_element(owners_, {}, [](const Owner& it) {
                return std::pair{it.isOwn(), it.bytes};
            });
            add(vitals.pressureLevel == 4 ? 3 : 2, eater.percent, "memory:" + eater.id);
        }
        family("spotlight", 50, memories.isSpotlightStuck ? 3 : 1,
               {"mds", "mds_stores", "mdworker_shared", "mdworker", "mdbulkimport",
                "corespotlightd", "spotlightknowledged"});
        family("photos", 30, 1, {"photoanalysisd", "mediaanalysisd"});
        family("windowServer", 40, 2, {"WindowServer"});
        browsers(memories.isLinux);
        hogs();
        disk();
        if (vitals.lowPower) {
            add(1, 0, "lowPower");
        }
        if (world_.uptime() >= Seconds{15 * 86400} && vitals.swapUsed > 2 * gibibyte) {
            add(1, 0, "longUptime");
        }
        return causes_;
    }

private:
    void add(int severity, double percent, std::string id) {
        causes_.push_back({severity, percent, std::move(id)});
    }

    /// Processes that are told as one cause, when together they use so much.
    void family(const std::string& kind, double least, int severity, Names names) {
        double percent = 0;
        const Owner* busiest = nullptr;
        for (const Owner& owner : owners_) {
            if (isOneOf(owner.name(), names)) {
                percent += owner.percent;
                busiest = busiest == nullptr || owner.percent > busiest->percent ? &owner : busiest;
            }
        }
        if (busiest == nullptr || percent < least) {
            return;
        }
        add(severity, percent, kind + ':' + busiest->id);
        for (Owner& owner : owners_) {
            owner.isTold = owner.isTold || isOneOf(owner.name(), names);
        }
    }

    void browsers(bool isLinux) {
        for (Owner& owner : owners_) {
            const std::string_view app = std::string_view{owner.id}.substr(owner.id.rfind('/') + 1);
            if (isOneOf(app, {"Google Chrome.app", "Brave Browser.app", "Microsoft Edge.app"}) ||
                (isLinux && isOneOf(app, {"Chromium.app", "Vivaldi.app", "Opera.app"}))) {
                owner.isTold = true;
                if (owner.bytes >= 1'500'000'000 || owner.percent >= 50) {
                    add(2, owner.percent, "browser:" + owner.id);
                }
            }
        }
    }

    void hogs() {
        const double grave = std::max(200.0, 25.0 * static_cast<double>(world_.hardware.cores));
        for (const Owner& owner : owners_) {
            if (owner.isTold || owner.percent < 80) {
                continue;
            }
            const Owner* told = &owner;
            if (owner.name() == "com.apple.Virtualization.VirtualMachine") {
                const auto host =
                    std::ranges::find(owners_, "/Applications/Docker.app", &Owner::id);
                told = host != owners_.end() ? &*host : told;
            }
            add(owner.percent >= grave ? 3 : 2, owner.percent, "cpuHog:" + told->id);
        }
    }

    void disk() {
        const auto free = static_cast<double>(world_.vitals.diskFree);
        if (free < 15e9) {
            add(3, 0, "lowDisk");
        } else if (free < 50e9 && free < static_cast<double>(world_.hardware.diskBytes) * 0.1) {
            add(2, 0, "lowDisk");
        }
    }

    const World& world_;
    std::vector<Owner> owners_;
    std::vector<Cause> causes_;
};

} // namespace

void Reckoning::add(const World& world, const Shares& shares) {
    std::map<std::string, double>& look = looks_.emplace_back();
    for (const Process& process : world.processes.all()) {
        look[ownerOf(process)] += shares.at(process.pid);
    }
    if (looks_.size() > looksInMean) {
        looks_.pop_front();
    }
}

std::set<std::string> Reckoning::firstCauses(const World& world, const Shares& shares,
                                             const Memories& memories, double scale,
                                             double slack) const {
    std::map<std::string, Owner> byID;
    for (const Process& process : world.processes.all()) {
        const std::string id = ownerOf(process);
        Owner& owner = byID[id];
        owner.id = id;
        owner.add(process, shares.at(process.pid));
    }
    std::vector<Owner> owners;
    for (auto& [id, owner] : byID) {
        for (const auto& look : looks_) {
            const auto found = look.find(id);
            owner.percent += found == look.end() ? 0 : found->second * scale;
        }
        owner.percent /= static_cast<double>(looks_.size());
        owners.push_back(std::move(owner));
    }
    const std::vector<Cause> causes = Verdict{world, std::move(owners)}.causes(memories);
    int gravest = 0;
    double most = 0;
    for (const Cause& cause : causes) {
        if (cause.severity >= gravest) {
            most = cause.severity > gravest ? cause.percent : std::max(most, cause.percent);
            gravest = cause.severity;
        }
    }
    std::set<std::string> first;
    for (const Cause& cause : causes) {
        if (cause.severity == gravest && cause.percent >= most * (1 - slack) - 1) {
            first.insert(cause.id);
        }
    }
    return first.empty() ? std::set<std::string>{""} : first;
}

} // namespace pacelet::torture
