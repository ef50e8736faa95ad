#include "Core/Sampling/PSParser.h"

#include "Core/Support/Checked.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <string>

namespace pacelet::PSParser {

namespace {

constexpr std::size_t numericColumns = 7;
constexpr std::size_t allColumns = numericColumns + 1;

/// Cuts a line into its columns. Runs of blanks stand between the first seven; the eighth is all
/// that follows the one blank behind the seventh. False when there are not eight.
bool splitColumns(std::string_view line, std::array<std::string_view, allColumns>& columns) {
    const char* at = line.data();
    const char* const end = at + line.size();
    for (std::size_t column = 0; column < numericColumns; ++column) {
        while (at != end && *at == ' ') {
            ++at;
        }
        const char* const begin = at;
        while (at != end && *at != ' ') {
            ++at;
        }
        if (at == end) {
            return false;
        }
        columns[column] = {begin, static_cast<std::size_t>(at - begin)};
        if (column + 1 < numericColumns) {
            continue;
        }
        ++at;
    }
    columns[numericColumns] = {at, static_cast<std::size_t>(end - at)};
    return at != end;
}

bool parseLine(std::string_view line, std::vector<ProcessSample>& samples) {
    std::array<std::string_view, allColumns> columns;
    if (!splitColumns(line, columns)) {
        return false;
    }
    const auto pid = parseInteger<std::int32_t>(columns[0]);
    const auto ppid = parseInteger<std::int32_t>(columns[1]);
    const auto uid = parseInteger<std::uint32_t>(columns[2]);
    const auto cpuTime = cpuSeconds(columns[4]);
    const auto rssKilobytes = parseInteger<std::int64_t>(columns[5]);
    const auto psCPU = parseFloat(columns[6]);
    if (!pid || !ppid || !uid || !cpuTime || !rssKilobytes || !psCPU) {
        return false;
    }
    ProcessSample& sample = samples.emplace_back();
    sample.pid = *pid;
    sample.ppid = *ppid;
    sample.uid = *uid;
    sample.user.assign(columns[3]);
    sample.cpuTime = *cpuTime;
    sample.rssBytes =
        checkedMultiply<std::int64_t>(*rssKilobytes, 1024, "a resident size exceeds 64 bits");
    sample.psCPU = *psCPU;
    sample.path.assign(columns[7]);
    return true;
}

} // namespace

std::vector<ProcessSample> parse(std::string_view text) {
    std::vector<ProcessSample> samples;
    samples.reserve(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1);
    forEachLine(text, [&](std::string_view line) { parseLine(line, samples); });
    return samples;
}

std::optional<double> cpuSeconds(std::string_view text) {
    constexpr int fewestPieces = 2;
    constexpr int mostPieces = 3;
    double seconds = 0;
    int pieces = 0;
    while (!text.empty()) {
        const std::size_t end = text.find(':');
        const std::string_view piece = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (piece.empty()) {
            continue;
        }
        const auto value = parseFloat(piece);
        if (!value || ++pieces > mostPieces) {
            return std::nullopt;
        }
        seconds = seconds * 60 + *value;
    }
    return pieces >= fewestPieces ? std::optional{seconds} : std::nullopt;
}

} // namespace pacelet::PSParser
