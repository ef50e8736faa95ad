#include "Core/Sampling/PSParser.h"

#include "Core/Support/Checked.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace pacelet::PSParser {

namespace {

/// Reads any line, in full generality. False, and nothing is to be kept, when it does not read.
bool readLine(std::string_view line, ProcessSample& sample) {
    std::array<std::string_view, 8> columns;
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

/// Reads the columns of an ordinary line in one pass, in place of cutting it up first and reading
/// the pieces then. Anything unusual (a sign, many digits, a third part of a time) is left to
/// `readLine`.
class PlainScanner {
public:
    explicit PlainScanner(std::string_view line)
        : at_{line.data()},
          end_{line.data() + line.size()} {}

    /// Digits and a blank, few enough of them that they fit any integer.
    template<typename Integer>
    bool integer(Integer& value) {
        skipBlanks();
        std::int64_t digits = 0;
        readDigits(digits);
        value = static_cast<Integer>(digits);
        return isAt(' '); // behind a digit, as it began at no blank
    }

    /// Digits, a point, two digits at the most and a blank: exact as one division.
    bool decimal(double& value) {
        constexpr std::array<double, 3> powers{1, 10, 100};
        skipBlanks();
        std::int64_t digits = 0;
        if (readDigits(digits) == 0 || !isAt('.')) {
            return false;
        }
        ++at_;
        const int fraction = readDigits(digits);
        if (fraction == 0 || fraction > 2) {
            return false;
        }
        value = static_cast<double>(digits) / powers[static_cast<std::size_t>(fraction)];
        return isAt(' ');
    }

    /// Minutes, a colon and seconds.
    bool minutesAndSeconds(double& value) {
        skipBlanks();
        std::int64_t minutes = 0;
        if (readDigits(minutes) == 0 || !isAt(':')) {
            return false;
        }
        ++at_;
        double beyond = 0;
        const bool reads = !isAt(' ') && decimal(beyond);
        value = static_cast<double>(minutes) * 60 + beyond;
        return reads;
    }

    std::string_view word() {
        skipBlanks();
        const char* const begin = at_;
        while (at_ != end_ && *at_ != ' ') {
            ++at_;
        }
        return {begin, static_cast<std::size_t>(at_ - begin)};
    }

    /// What follows the one blank at hand.
    std::string_view rest() { return {at_ + 1, static_cast<std::size_t>(end_ - at_ - 1)}; }

private:
    bool isAt(char character) const { return at_ != end_ && *at_ == character; }

    void skipBlanks() {
        while (isAt(' ')) {
            ++at_;
        }
    }

    /// Appends decimal digits to `value`, at most nine at a time: they fit every integer here, and
    /// two runs of them can't overflow. A tenth digit then stands where the caller expects an end.
    int readDigits(std::int64_t& value) {
        constexpr int mostDigits = 9;
        int count = 0;
        for (; at_ != end_ && *at_ >= '0' && *at_ <= '9' && count < mostDigits; ++at_, ++count) {
            value = value * 10 + (*at_ - '0');
        }
        return count;
    }

    const char* at_;
    const char* const end_;
};

bool scanPlainLine(std::string_view line, ProcessSample& sample) {
    PlainScanner scanner{line};
    if (!scanner.integer(sample.pid) || !scanner.integer(sample.ppid) ||
        !scanner.integer(sample.uid)) {
        return false;
    }
    const std::string_view user = scanner.word();
    std::int64_t rssKilobytes = 0;
    if (!scanner.minutesAndSeconds(sample.cpuTime) || !scanner.integer(rssKilobytes) ||
        !scanner.decimal(sample.psCPU)) {
        return false;
    }
    const std::string_view path = scanner.rest();
    sample.user.assign(user);
    sample.rssBytes = rssKilobytes * 1024;
    sample.path.assign(path);
    return !path.empty();
}

} // namespace

std::vector<ProcessSample> parse(std::string_view text) {
    std::size_t lines = 0;
    forEachLine(text, [&](std::string_view) { ++lines; });
    std::vector<ProcessSample> samples;
    samples.reserve(lines);
    forEachLine(text, [&](std::string_view line) {
        ProcessSample& sample = samples.emplace_back();
        if (!scanPlainLine(line, sample) && !readLine(line, sample)) {
            samples.pop_back();
        }
    });
    return samples;
}

std::optional<double> cpuSeconds(std::string_view text) {
    constexpr int fewestPieces = 2;
    constexpr int mostPieces = 3;
    double seconds = 0;
    int pieces = 0;
    for (const std::string_view piece : splitDroppingEmpty(text, ':')) {
        const auto value = parseFloat(piece);
        if (!value || ++pieces > mostPieces) {
            return std::nullopt;
        }
        seconds = seconds * 60 + *value;
    }
    return pieces >= fewestPieces ? std::optional{seconds} : std::nullopt;
}

} // namespace pacelet::PSParser
