#include "Hosts/Linux/Proc/ProcessMemory.h"

#include "Hosts/Linux/Proc/KeyedFigures.h"
#include "Hosts/Linux/Proc/ProcPath.h"

#include <array>
#include <limits>

namespace pacelet::Linux {

namespace {

/// More than any machine has, so that a few of them add up within 64 bits.
constexpr std::int64_t largestFigure = std::numeric_limits<std::int64_t>::max() / 16;

struct MemoryKeys {
    std::string_view anonymous;
    std::string_view shared;
    std::string_view swapped;
};

/// Nothing without the anonymous memory; what else is missing is 0.
std::optional<ProcessMemory> parseMemory(std::string_view text, const MemoryKeys& wanted) {
    struct Figure {
        std::string_view key;
        std::optional<std::int64_t> bytes{};
    };
    std::array figures{Figure{wanted.anonymous}, Figure{wanted.shared}, Figure{wanted.swapped}};
    forEachFigure(text, [&](std::string_view key, std::string_view value) {
        for (Figure& figure : figures) {
            if (figure.key == key) {
                figure.bytes = parseKilobytes(value);
            }
        }
    });
    for (const Figure& figure : figures) {
        if (figure.bytes.value_or(0) > largestFigure) {
            return std::nullopt;
        }
    }
    if (!figures[0].bytes) {
        return std::nullopt;
    }
    return ProcessMemory{*figures[0].bytes, figures[1].bytes.value_or(0),
                         figures[2].bytes.value_or(0)};
}

std::int32_t parentOf(std::string_view status) {
    std::int32_t parent = 0;
    forEachFigure(status, [&](std::string_view key, std::string_view value) {
        parent = key == "PPid" ? parseInteger<std::int32_t>(trimmed(value)).value_or(0) : parent;
    });
    return parent;
}

} // namespace

std::optional<ProcessMemory> parseStatusMemory(std::string_view status) {
    return parseMemory(status, {"RssAnon", "RssShmem", "VmSwap"});
}

std::optional<CountedMemory> parseCountedMemory(std::string_view status) {
    const auto memory = parseStatusMemory(status);
    return memory ? std::optional{CountedMemory{*memory, parentOf(status)}} : std::nullopt;
}

std::optional<CountedMemory> readCountedMemory(const FolderReader& proc, std::int32_t pid,
                                               ReadBuffer& buffer) {
    const auto status = proc.read(ProcPath{pid, "status"}.text(), buffer);
    return status ? parseCountedMemory(*status) : std::nullopt;
}

std::optional<ProcessMemory> parseSharedOut(std::string_view smapsRollup) {
    return parseMemory(smapsRollup, {"Pss_Anon", "Pss_Shmem", "SwapPss"});
}

} // namespace pacelet::Linux
