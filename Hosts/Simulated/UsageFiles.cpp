#include "Hosts/Simulated/UsageFiles.h"

#include "Core/Support/JsonWriter.h"
#include "Hosts/Simulated/Model/Random.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fmt/format.h>
#include <fstream>
#include <system_error>

namespace pacelet::Simulated::UsageFiles {

namespace {

constexpr std::int64_t minutesADay = 1440;

// The Mac is used in these minutes of a day and sleeps in the others.
constexpr std::int64_t morning = std::int64_t{7} * 60 + 30;
constexpr std::int64_t evening = std::int64_t{21} * 60;

std::string fileName(std::int64_t day) {
    const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
    return fmt::format("usage-{:04}-{:02}-{:02}.jsonl", static_cast<int>(date.year()),
                       static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
}

double hundredths(double value) {
    return std::round(value * 100) / 100;
}

std::string line(std::int64_t minute, const PastUsage& usage, Random& random) {
    const bool busy = random.uniform(0, 1) < usage.busyShare;
    const double cpu =
        std::clamp((busy ? usage.busyLoad : usage.idleLoad) * random.uniform(0.9, 1.1), 0.0, 100.0);
    const bool pressed = random.uniform(0, 1) < usage.pressureShare;
    const auto around = [&random](std::int64_t bytes) {
        return static_cast<std::int64_t>(static_cast<double>(bytes) * random.uniform(0.9, 1.1));
    };
    JsonWriter json;
    json.beginObject().key("t").value(minute).key("cpu").value(hundredths(cpu));
    json.key("cpuMax").value(hundredths(std::min(cpu * random.uniform(1.05, 1.6), 100.0)));
    json.key("pressure").value(std::int64_t{pressed ? 1 : 0});
    json.key("swap").value(around(usage.swap)).key("memUsed").value(around(usage.memoryUsed));
    json.key("n").value(random.integer(2, 20)).endObject();
    return json.take();
}

std::string dayText(std::int64_t day, std::int64_t before, const PastUsage& usage, Random& random) {
    std::string text;
    for (std::int64_t minute = morning; minute < evening; ++minute) {
        const std::int64_t t = day * minutesADay + minute;
        if (t < before) {
            text += line(t, usage, random);
            text += '\n';
        }
    }
    return text;
}

} // namespace

void write(const World& world, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    const auto before = static_cast<std::int64_t>(unixTime(world.time.wall) / 60);
    const std::int64_t today = before / minutesADay;
    Random random{world.seed ^ stableHash("usage")};
    for (std::int64_t day = today - world.pastUsage->days; day <= today; ++day) {
        std::ofstream file{folder / fileName(day), std::ios::binary};
        file << dayText(day, before, *world.pastUsage, random);
        if (!file.flush()) {
            throw std::system_error{std::make_error_code(std::errc::io_error), folder.string()};
        }
    }
}

} // namespace pacelet::Simulated::UsageFiles
