#include "Hosts/Linux/ThermalZones.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>

namespace pacelet::Linux {

namespace {

std::optional<std::string> readWord(const FolderReader& folder, const std::string& path) {
    ReadBuffer buffer;
    const auto text = folder.read(path.c_str(), buffer);
    return text ? std::optional{std::string{trimmed(*text)}} : std::nullopt;
}

std::optional<std::int64_t> readNumber(const FolderReader& folder, const std::string& path) {
    const auto word = readWord(folder, path);
    return word ? parseInteger<std::int64_t>(*word) : std::nullopt;
}

void lower(std::optional<std::int64_t>& point, std::int64_t temperature) {
    if (temperature > 0) {
        point = std::min(point.value_or(temperature), temperature);
    }
}

TripPoints readTripPoints(const FolderReader& zone) {
    TripPoints points;
    for (int number = 0;; ++number) {
        const std::string point = "trip_point_" + std::to_string(number);
        const auto type = readWord(zone, point + "_type");
        if (!type) {
            return points;
        }
        const std::int64_t temperature = readNumber(zone, point + "_temp").value_or(0);
        if (*type == "passive") {
            lower(points.passive, temperature);
        } else if (*type == "hot") {
            lower(points.hot, temperature);
        } else if (*type == "critical") {
            lower(points.critical, temperature);
        }
    }
}

} // namespace

int thermalState(std::int64_t temperature, const TripPoints& points) {
    const auto reaches = [&](const std::optional<std::int64_t>& point, std::int64_t margin) {
        return point && *point > 0 && temperature >= *point - margin;
    };
    if (reaches(points.critical, criticalMargin)) {
        return 3;
    }
    if (reaches(points.hot, 0)) {
        return 2;
    }
    return reaches(points.passive, 0) ? 1 : 0;
}

bool isProcessorZone(const std::string& type) {
    constexpr std::array<std::string_view, 8> known{"x86_pkg", "cpu",     "soc",     "acpitz",
                                                    "core",    "package", "cluster", "tcpu"};
    const std::string name = asciiLowercased(type);
    return std::any_of(known.begin(), known.end(),
                       [&](std::string_view prefix) { return name.starts_with(prefix); });
}

ThermalZones::ThermalZones(const std::string& folder)
    : folder_{folder} {
    for (const std::string& name : folder_.namesWithPrefix("thermal_zone")) {
        const FolderReader zone{folder + '/' + name};
        const TripPoints points = readTripPoints(zone);
        if (isProcessorZone(readWord(zone, "type").value_or("")) && points != TripPoints{}) {
            zones_.push_back({name + "/temp", points});
        }
    }
}

int ThermalZones::state() const {
    int hottest = 0;
    for (const Zone& zone : zones_) {
        if (const auto temperature = readNumber(folder_, zone.temperatureFile)) {
            hottest = std::max(hottest, thermalState(*temperature, zone.points));
        }
    }
    return hottest;
}

} // namespace pacelet::Linux
