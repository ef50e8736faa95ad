#include "Core/Sampling/LaunchctlList.h"

#include "Core/Support/Text.h"

#include <algorithm>

namespace pacelet {

namespace {

/// Cuts the next column off a line; empty at its end.
std::string_view takeColumn(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of('\t'), line.size()));
    const std::string_view column = line.substr(0, line.find('\t'));
    line.remove_prefix(column.size());
    return column;
}

} // namespace

RunningJobs parseLaunchctlList(std::string_view text) {
    RunningJobs jobs;
    bool isHeader = true;
    forEachLine(text, [&](std::string_view line) {
        if (isHeader) {
            isHeader = false;
            return;
        }
        const auto pid = parseInteger<std::int32_t>(takeColumn(line));
        takeColumn(line);
        const std::string_view label = takeColumn(line);
        if (pid && !label.empty()) {
            jobs.insert_or_assign(std::string{label}, *pid);
        }
    });
    return jobs;
}

} // namespace pacelet
