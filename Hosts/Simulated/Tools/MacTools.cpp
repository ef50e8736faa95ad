#include "Hosts/Simulated/Tools/MacTools.h"

#include "Core/Support/Text.h"
#include "Hosts/Simulated/Tools/OSAScript.h"
#include "Hosts/Simulated/Tools/ToolTexts.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <string_view>
#include <system_error>
#include <utility>

namespace pacelet::Simulated {

namespace {

using Arguments = std::vector<std::string>;

constexpr std::int32_t usageStatus = 64;

Shell::Output success(std::string text) {
    return {0, std::move(text), {}};
}

Shell::Output usage(std::string_view tool) {
    return {usageStatus, {}, "usage: " + std::string{tool} + " [options]\n"};
}

bool equals(const Arguments& arguments, std::initializer_list<std::string_view> expected) {
    return std::equal(arguments.begin(), arguments.end(), expected.begin(), expected.end());
}

Shell::Output ps(World& world, const Arguments& arguments) {
    if (equals(arguments, {"-axo", "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="})) {
        return success(ToolTexts::processes(world));
    }
    if (equals(arguments, {"-axo", "pid=,rss=,args="})) {
        return success(ToolTexts::commandLines(world));
    }
    return usage("ps");
}

Shell::Output launchctl(World& world, const Arguments& arguments) {
    return equals(arguments, {"list"}) ? success(ToolTexts::launchJobs(world)) : usage("launchctl");
}

Shell::Output osascript(World& world, const Arguments& arguments) {
    if (arguments.size() != 2 || arguments.front() != "-e") {
        return usage("osascript");
    }
    return OSAScript::run(world, arguments.back());
}

Shell::Output networkQuality(World& world, const Arguments& arguments) {
    return equals(arguments, {"-c", "-M", "25"}) ? ToolTexts::networkQuality(world)
                                                 : usage("networkQuality");
}

Shell::Output nettop(World& world, const Arguments& arguments) {
    if (!equals(arguments, {"-P", "-d", "-L", "2", "-s", "1", "-x", "-J", "bytes_in,bytes_out"})) {
        return usage("nettop");
    }
    return success(ToolTexts::traffic(world));
}

Shell::Output systemProfiler(World& world, const Arguments& arguments) {
    return equals(arguments, {"SPHardwareDataType", "-json"}) ? success(ToolTexts::hardware(world))
                                                              : usage("system_profiler");
}

struct Tool {
    std::string_view path;
    Seconds duration;
    Shell::Output (*answer)(World&, const Arguments&);
};

const std::array<Tool, 6> tools{{
    {"/bin/ps", Seconds{0.06}, ps},
    {"/bin/launchctl", Seconds{0.03}, launchctl},
    {"/usr/bin/osascript", Seconds{0.4}, osascript},
    {"/usr/bin/networkQuality", Seconds{25}, networkQuality},
    {"/usr/bin/nettop", Seconds{1.2}, nettop},
    {"/usr/sbin/system_profiler", Seconds{0.7}, systemProfiler},
}};

const Tool& findTool(const std::string& executable) {
    const auto found = std::find_if(tools.begin(), tools.end(),
                                    [&](const Tool& tool) { return tool.path == executable; });
    if (found == tools.end()) {
        throw LaunchError{executable, std::make_error_code(std::errc::no_such_file_or_directory)};
    }
    return *found;
}

/// Notes the call and answers how long it takes. Throws when the tool cannot be started.
Seconds start(World& world, const Tool& tool, const std::string& executable,
              const Arguments& arguments) {
    if (world.failures.ofTool<ToolMissing>(executable) != nullptr) {
        throw LaunchError{executable, std::make_error_code(std::errc::no_such_file_or_directory)};
    }
    if (world.failures.ofTool<ToolNotPermitted>(executable) != nullptr) {
        throw LaunchError{executable, std::make_error_code(std::errc::permission_denied)};
    }
    ++world.records.toolCalls[executable];
    world.records.lastArguments = arguments;
    const auto* const slow = world.failures.ofTool<ToolTakes>(executable);
    world.records.lastCallDuration = slow != nullptr ? slow->duration : tool.duration;
    return world.records.lastCallDuration;
}

Shell::Output finish(World& world, const Tool& tool, const std::string& executable,
                     const Arguments& arguments) {
    if (const auto* failure = world.failures.ofTool<ToolFails>(executable)) {
        return {failure->status, {}, failure->stderr};
    }
    if (const auto* failure = world.failures.ofTool<ToolPrints>(executable)) {
        return success(failure->bytes);
    }
    return tool.answer(world, arguments);
}

} // namespace

Shell::Output MacTools::run(const std::string& executable, const Arguments& arguments) {
    const Tool& tool = findTool(executable);
    const Seconds duration = start(*machine_.lock(), tool, executable, arguments);
    machine_.waitWhileHanging(executable);
    if (timing_) {
        timing_(duration);
    }
    Shell::Output output = finish(*machine_.lock(), tool, executable, arguments);
    output.stdout = repairedUTF8(std::move(output.stdout));
    output.stderr = repairedUTF8(std::move(output.stderr));
    return output;
}

} // namespace pacelet::Simulated
