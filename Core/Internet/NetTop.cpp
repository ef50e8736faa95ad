#include "Core/Internet/NetTop.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pacelet::NetTop {

namespace {

constexpr std::string_view header = ",bytes_in";
constexpr std::size_t columns = 3;

/// What stands behind the last header line; the whole text without one.
std::string_view lastBlock(std::string_view text) {
    for (std::size_t at = text.rfind(header); at != std::string_view::npos;
         at = text.rfind(header, at - 1)) {
        if (at == 0 || text[at - 1] == '\n') {
            const std::size_t end = text.find('\n', at);
            return end == std::string_view::npos ? std::string_view{} : text.substr(end);
        }
    }
    return text;
}

/// The first three fields of a line; false when it has fewer.
bool splitColumns(std::string_view line, std::array<std::string_view, columns>& fields) {
    for (std::size_t field = 0; field < columns; ++field) {
        const std::size_t end = line.find(',');
        fields[field] = line.substr(0, end);
        if (end == std::string_view::npos) {
            return field + 1 == columns;
        }
        line.remove_prefix(end + 1);
    }
    return true;
}

bool believable(double rate) {
    return std::abs(rate) <= mostBytesPerSecond;
}

void parseLine(std::string_view line, std::vector<NetUsage>& usage) {
    std::array<std::string_view, columns> fields;
    if (!splitColumns(line, fields)) {
        return;
    }
    const std::size_t dot = fields[0].rfind('.');
    if (dot == std::string_view::npos) {
        return;
    }
    const auto pid = parseInteger<std::int32_t>(fields[0].substr(dot + 1));
    const auto bytesIn = parseFloat(fields[1]);
    const auto bytesOut = parseFloat(fields[2]);
    if (!pid || !bytesIn || !bytesOut || !believable(*bytesIn) || !believable(*bytesOut) ||
        !(*bytesIn + *bytesOut > 0)) {
        return;
    }
    NetUsage& entry = usage.emplace_back();
    entry.pid = *pid;
    entry.name.assign(fields[0].substr(0, dot));
    entry.bytesInPerSec = *bytesIn;
    entry.bytesOutPerSec = *bytesOut;
}

} // namespace

const std::vector<std::string>& arguments() {
    static const std::vector<std::string> list{
        "-P", "-d", "-L", "2", "-s", "1", "-x", "-J", "bytes_in,bytes_out"};
    return list;
}

std::vector<NetUsage> parse(std::string_view text) {
    std::vector<NetUsage> usage;
    forEachLine(lastBlock(text), [&](std::string_view line) { parseLine(line, usage); });
    std::ranges::stable_sort(usage, std::greater{}, &NetUsage::total);
    return usage;
}

std::vector<NetUsage> sample(ToolRunner& tools) {
    return parse(tools.run("/usr/bin/nettop", arguments()).stdout);
}

} // namespace pacelet::NetTop
