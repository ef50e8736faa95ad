#include "Hosts/Linux/Systemd/UnitGroups.h"

#include "Core/Support/Files.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ProcPath.h"
#include "Hosts/Linux/Proc/ProcStat.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>
#include <iterator>

namespace pacelet::Linux {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view serviceSuffix = ".service";
/// Slices within slices, and groups within a service, nest a few deep.
constexpr int deepest = 8;

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

/// The processes of a group and of the groups in it that are no services of their own.
void addProcesses(const std::string& group, std::vector<std::int32_t>& pids, int depth) {
    std::ifstream file{joinedPath(group, "cgroup.procs"), std::ios::binary};
    for (std::string line; std::getline(file, line);) {
        if (const auto pid = parseInteger<std::int32_t>(line); pid && *pid > 0) {
            pids.push_back(*pid);
        }
    }
    for (const std::string& name : sortedNames(group)) {
        const std::string inner = joinedPath(group, name);
        if (depth < deepest && !name.ends_with(serviceSuffix) && !name.ends_with(".slice") &&
            isFolder(inner)) {
            addProcesses(inner, pids, depth + 1);
        }
    }
}

class GroupTree {
public:
    explicit GroupTree(const std::string& procFolder)
        : proc_{procFolder} {}

    /// Adds the services in `slice` and in the slices in it.
    void addServices(const std::string& slice, int depth = 0) {
        for (const std::string& name : sortedNames(slice)) {
            const std::string group = joinedPath(slice, name);
            if (name.ends_with(serviceSuffix)) {
                addService(name, group);
            } else if (depth < deepest && name.ends_with(".slice")) {
                addServices(group, depth + 1);
            }
        }
    }

    std::vector<Unit> take() { return std::move(units_); }

private:
    void addService(const std::string& name, const std::string& group) {
        std::vector<std::int32_t> pids;
        addProcesses(group, pids, 0);
        const auto main = std::find_if(pids.begin(), pids.end(), [&](std::int32_t pid) {
            return std::find(pids.begin(), pids.end(), parentOf(pid)) == pids.end();
        });
        if (main != pids.end()) {
            units_.push_back({name, *main});
        }
    }

    std::int32_t parentOf(std::int32_t pid) {
        const auto text = proc_.read(ProcPath{pid, "stat"}.text(), buffer_);
        const auto stat = text ? parseProcStat(*text) : std::nullopt;
        return stat ? stat->ppid : 0;
    }

    FolderReader proc_;
    ReadBuffer buffer_;
    std::vector<Unit> units_;
};

} // namespace

std::vector<Unit> readUnitGroups(const std::string& cgroupFolder, const std::string& procFolder,
                                 std::uint32_t uid) {
    GroupTree tree{procFolder};
    // One tree for all controllers; else systemd's own among the others.
    for (const std::string_view root : std::array<std::string_view, 3>{"", "unified", "systemd"}) {
        const std::string folder = joinedPath(cgroupFolder, root);
        if (!isFolder(joinedPath(folder, "system.slice"))) {
            continue;
        }
        tree.addServices(joinedPath(folder, "system.slice"));
        tree.addServices(
            joinedPath(folder, fmt::format("user.slice/user-{0}.slice/user@{0}.service", uid)));
        break;
    }
    return tree.take();
}

} // namespace pacelet::Linux
