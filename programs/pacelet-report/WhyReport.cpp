#include "programs/pacelet-report/WhyReport.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>
#include <vector>

namespace pacelet::report {

namespace {

constexpr std::string_view unknown = "It has gone in the meantime.";

struct Line {
    std::string text;
    int count = 1;
};

std::vector<Line> linesOf(const ProcessGroup& group, const ReasonOf& reasonOf) {
    std::vector<Line> lines;
    for (const ProcessUsage& member : group.members) {
        std::string text = fmt::format("{}: {}", member.name, reasonOf(member).value_or(unknown));
        const auto same = std::ranges::find(lines, text, &Line::text);
        if (same != lines.end()) {
            ++same->count;
        } else {
            lines.push_back({std::move(text)});
        }
    }
    return lines;
}

} // namespace

std::string renderWhy(std::span<const ProcessGroup> groups, const ReasonOf& reasonOf) {
    std::string report;
    for (const ProcessGroup& group : groups) {
        report += group.displayName + '\n';
        for (const Line& line : linesOf(group, reasonOf)) {
            report += line.count > 1 ? fmt::format("  {} × {}\n", line.count, line.text)
                                     : fmt::format("  {}\n", line.text);
        }
    }
    return report;
}

} // namespace pacelet::report
