#include "Hosts/Recorded/Limits.h"

#include "Core/Platform/WindowServer.h"
#include "Core/Support/JsonDocument.h"
#include "Core/Support/Text.h"
#include "Hosts/Recorded/Wire.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace pacelet::Recorded {

namespace {

constexpr double endOfCalendar = 253402300800; // the year 10000
constexpr double mostSeconds = 1e12;
constexpr std::int64_t mostBytes = std::int64_t{1} << 60;

// A sum over all processes stays within 64 bits.
constexpr std::size_t mostProcesses = std::size_t{1} << 17;
constexpr std::int64_t largestProcess = std::int64_t{1} << 44;
constexpr double mostPercent = 1e9;
constexpr double mostKilobytes = 1e15;

/// Looks closer together than this would make an unheard-of load of any time.
constexpr double shortestStep = 1e-4;

bool isBetween(double least, double value, double most) {
    return value >= least && value <= most;
}

bool areMoments(const std::vector<Moment>& looks) {
    std::vector<double> walls;
    for (const Moment& look : looks) {
        walls.push_back(look.wall);
        if (!isBetween(0, look.wall, endOfCalendar) || std::abs(look.monotonic) > mostSeconds) {
            return false;
        }
    }
    std::ranges::sort(walls);
    return std::ranges::adjacent_find(walls, [](double left, double right) {
               return left != right && right - left < shortestStep;
           }) == walls.end();
}

/// The table of `ps` with the users and programs of processes.
bool isTable(std::string_view text) {
    std::size_t processes = 0;
    double seconds = 0;
    double kilobytes = 0;
    double percent = 0;
    bool isSound = true;
    forEachLine(text, [&](std::string_view line) {
        std::array<std::string_view, 8> columns;
        if (!splitColumns(line, columns)) {
            return;
        }
        ++processes;
        double time = 0;
        for (const std::string_view piece : splitDroppingEmpty(columns[4], ':')) {
            time = time * 60 + parseFloat(piece).value_or(0);
        }
        const double size = parseFloat(columns[5]).value_or(0);
        const double load = parseFloat(columns[6]).value_or(0);
        isSound = isSound && time >= 0 && size >= 0 && load >= 0;
        seconds += time;
        kilobytes += size;
        percent += load;
    });
    return isSound && processes <= mostProcesses && seconds <= mostSeconds &&
           kilobytes <= mostKilobytes && percent <= mostPercent;
}

/// What `system_profiler` says of the hardware, as `Disguise` leaves it.
bool isHardware(std::string_view text) {
    constexpr std::int64_t mostUnits = 100'000; // not even of the largest are there more
    simdjson::dom::parser parser;
    simdjson::dom::array items;
    if (parseJson(parser, text).at_key("SPHardwareDataType").get(items) != simdjson::SUCCESS) {
        return true;
    }
    return std::ranges::all_of(items, [](const simdjson::dom::element item) {
        simdjson::dom::object fields;
        if (item.get(fields) != simdjson::SUCCESS) {
            return true;
        }
        return std::ranges::all_of(fields, [](const simdjson::dom::key_value_pair& field) {
            std::string_view size;
            if (field.key != "physical_memory" || field.value.get(size) != simdjson::SUCCESS) {
                return true;
            }
            const auto units = parseInteger<std::int64_t>(size.substr(0, size.find(' ')));
            return !units || (*units >= 0 && *units <= mostUnits);
        });
    });
}

template<typename RecordOfBytes>
std::optional<RecordOfBytes> recordIn(const std::vector<std::uint8_t>& bytes) {
    RecordOfBytes record{};
    if (bytes.size() != sizeof record) {
        return std::nullopt;
    }
    std::memcpy(&record, bytes.data(), sizeof record);
    return record;
}

using KernelRecord = std::optional<std::vector<std::uint8_t>>;
using Number = std::optional<std::int64_t>;

bool isRecord(const std::string& call, const KernelRecord& bytes) {
    if (bytes && call.ends_with("vm.swapusage")) {
        const auto swap = recordIn<SwapUsageRecord>(*bytes);
        return !swap || swap->xsu_used <= std::uint64_t{mostBytes};
    }
    if (bytes && call.ends_with("kern.boottime")) {
        const auto boot = recordIn<BootTimeRecord>(*bytes);
        return !boot || isBetween(0, static_cast<double>(boot->tv_sec), endOfCalendar);
    }
    return true;
}

bool isOutput(const std::string& call, const ToolAnswer& answer) {
    if (call.starts_with("run /bin/ps") && call.ends_with("comm=")) {
        return isTable(answer.output.stdout);
    }
    return !call.starts_with("run /usr/sbin/system_profiler") || isHardware(answer.output.stdout);
}

template<std::int64_t least, std::int64_t most>
bool isWithin(const std::string&, const Number& number) {
    return !number || (*number >= least && *number <= most);
}

bool isUptime(const std::string&, const double& seconds) {
    return isBetween(0, seconds, mostSeconds);
}

bool isVolume(const std::string& call, const std::optional<VolumeCapacities>& volume) {
    return !volume || (isWithin<0, mostBytes>(call, volume->availableForImportantUsage) &&
                       isWithin<0, mostBytes>(call, volume->total));
}

bool isSignal(const std::string&, const std::optional<WiFiAnswer>& wifi) {
    constexpr double mostDecibels = 1000;
    constexpr double mostMegabits = 1e9;
    return !wifi || (std::abs(static_cast<double>(wifi->rssi)) <= mostDecibels &&
                     std::abs(static_cast<double>(wifi->noise)) <= mostDecibels &&
                     isBetween(0, wifi->rate, mostMegabits));
}

/// Whether the bytes are one such value, with plain texts alone, that passes the check.
template<typename Value, auto check = nullptr>
bool is(const std::string& call, std::string_view bytes) {
    auto value = Wire::decode<Value>(bytes);
    bool isSound = value.has_value();
    if (isSound) {
        Wire::changeTexts(*value, [&](const std::string& text) {
            isSound = isSound && repairedUTF8(plainText(text)) == text;
            return text;
        });
        if constexpr (check != nullptr) {
            isSound = isSound && check(call, *value);
        }
    }
    return isSound;
}

/// As one that is always there is kept, and as one that may be absent.
template<std::int64_t least, std::int64_t most>
bool isNumber(const std::string& call, std::string_view bytes) {
    const auto number = Wire::decode<std::int64_t>(bytes);
    return number && isWithin<least, most>(call, *number);
}

struct CallRow {
    std::string_view call; ///< all of it, or how it begins when it ends in a blank
    bool (*isSound)(const std::string& call, std::string_view bytes);
};
constexpr std::array<CallRow, 26> calls{{
    {"about ", is<std::optional<ProgramFacts>>},
    {"abilities", is<HostAbilities>},
    {"activeDisplays", is<std::optional<std::vector<std::uint32_t>>>},
    {"activeProcessorCount", isNumber<0, 1 << 20>},
    {"applicationPath ", is<std::optional<std::string>>},
    {"availableMemory", is<Number, isWithin<0, mostBytes>>},
    {"backgroundItems", is<std::vector<BackgroundItem>>},
    {"currentModeWidth ", is<Number>},
    {"getuid", is<std::uint32_t>},
    {"hostStatistics64", is<std::optional<VMStatistics64>>},
    {"isExpensive", is<bool>},
    {"isLowPowerModeEnabled", is<bool>},
    {"isRunning ", is<bool>},
    {"modeWidths ", is<std::optional<std::vector<std::int64_t>>>},
    {"networkPath", is<NetworkPath>},
    {"pageSize", isNumber<1, 1 << 24>},
    {"physFootprint ", is<Number, isWithin<0, largestProcess>>},
    {"physicalMemory", isNumber<0, mostBytes>},
    {"run ", is<ToolAnswer, isOutput>},
    {"runningApplications", is<std::vector<AppAnswer>>},
    {"sysctlbyname ", is<KernelRecord, isRecord>},
    {"systemUptime", is<double, isUptime>},
    {"thermalState", is<int>},
    {"volumeCapacities ", is<std::optional<VolumeCapacities>, isVolume>},
    {"wifiInterface", is<std::optional<WiFiAnswer>, isSignal>},
    {"windowInfo", is<std::optional<std::vector<WindowDictionary>>>},
}};

} // namespace

bool isPossible(const Capture& capture) {
    const auto areSound = [](const std::string& call, const std::vector<Answer>& answers) {
        const auto row = std::ranges::find_if(calls, [&](const CallRow& it) {
            return it.call.ends_with(' ') ? call.starts_with(it.call) : call == it.call;
        });
        // What nobody asks does no harm.
        return row == calls.end() || std::ranges::all_of(answers, [&](const Answer& answer) {
                   return row->isSound(call, answer.value);
               });
    };
    return areMoments(capture.looks) && std::ranges::all_of(capture.answers, [&](const auto& each) {
               return areSound(each.first, each.second);
           });
}

} // namespace pacelet::Recorded
