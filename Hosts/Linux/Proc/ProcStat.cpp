#include "Hosts/Linux/Proc/ProcStat.h"

#include "Core/Support/Text.h"

namespace pacelet::Linux {

namespace {

/// The kernel's own mark of a kernel thread among the flags.
constexpr std::uint32_t kernelThreadFlag = 0x00200000;

/// The fields behind the name, one after the other. The first bad one spoils all that follow.
class Fields {
public:
    explicit Fields(std::string_view text)
        : at_{text.data()},
          end_{text.data() + text.size()} {}

    std::string_view next() {
        while (at_ != end_ && isSpace(*at_)) {
            ++at_;
        }
        const char* const begin = at_;
        while (at_ != end_ && !isSpace(*at_)) {
            ++at_;
        }
        return {begin, static_cast<std::size_t>(at_ - begin)};
    }

    template<typename T>
    bool read(T& value) {
        const auto number = parseInteger<T>(next());
        if (number) {
            value = *number;
        }
        return number.has_value();
    }

    bool skip(int count) {
        std::string_view field{"-"};
        for (; count > 0 && !field.empty(); --count) {
            field = next();
        }
        return !field.empty();
    }

private:
    static bool isSpace(char character) { return character == ' ' || character == '\n'; }

    const char* at_;
    const char* end_;
};

bool readFields(Fields fields, ProcStat& stat) {
    const std::string_view state = fields.next();
    if (state.size() != 1) {
        return false;
    }
    stat.state = state.front();
    std::uint32_t flags = 0;
    // Passed over: process group and session; terminal's group; page faults of children; priority,
    // niceness, threads, timer; virtual size.
    const bool isWhole = fields.read(stat.ppid) && fields.skip(2) && fields.read(stat.terminal) &&
                         fields.skip(1) && fields.read(flags) && fields.read(stat.minorFaults) &&
                         fields.skip(1) && fields.read(stat.majorFaults) && fields.skip(1) &&
                         fields.read(stat.userTime) && fields.read(stat.systemTime) &&
                         fields.read(stat.reapedUserTime) && fields.read(stat.reapedSystemTime) &&
                         fields.skip(4) && fields.read(stat.startTime) && fields.skip(1) &&
                         fields.read(stat.residentPages);
    stat.isKernelThread = (flags & kernelThreadFlag) != 0;
    // Not every kernel tells where the program lies.
    if (isWhole && fields.skip(1) && fields.read(stat.startCode) && fields.skip(1)) {
        fields.read(stat.startStack);
    }
    return isWhole;
}

} // namespace

std::optional<ProcStat> parseProcStat(std::string_view text) {
    const std::size_t open = text.find('(');
    const std::size_t close = text.rfind(')');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) {
        return std::nullopt;
    }
    const auto pid = parseInteger<std::int32_t>(trimmed(text.substr(0, open)));
    ProcStat stat;
    if (!pid || !readFields(Fields{text.substr(close + 1)}, stat)) {
        return std::nullopt;
    }
    stat.pid = *pid;
    stat.comm = text.substr(open + 1, close - open - 1);
    return stat;
}

} // namespace pacelet::Linux
