#include "Core/Sampling/PSProcessSource.h"

#include "Core/Sampling/LaunchctlList.h"
#include "Core/Sampling/PSParser.h"

namespace pacelet {

namespace {

const std::string psPath = "/bin/ps";

} // namespace

SamplerError::SamplerError(std::int32_t status)
    : std::runtime_error{"ps failed with status " + std::to_string(status)},
      status_{status} {}

Snapshot PSProcessSource::sample() {
    const Shell::Output output =
        tools_.run(psPath, {"-axo", "pid=,ppid=,uid=,user=,time=,rss=,%cpu=,comm="});
    if (output.status != 0) {
        throw SamplerError::psFailed(output.status);
    }
    // The moment at which ps ended, so that two snapshots are as far apart as their CPU times.
    const TimePoint takenAt = clock_.now();
    return {takenAt, PSParser::parse(output.stdout)};
}

std::string PSProcessSource::argsListing(ToolRunner& tools) {
    return tools.run(psPath, {"-axo", "pid=,rss=,args="}).stdout;
}

std::unordered_map<std::string, std::int32_t> PSProcessSource::launchctlList(ToolRunner& tools) {
    return parseLaunchctlList(tools.run("/bin/launchctl", {"list"}).stdout);
}

} // namespace pacelet
