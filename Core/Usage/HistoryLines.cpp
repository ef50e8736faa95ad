#include "Core/Usage/HistoryLines.h"

#include "Core/Support/JsonWriter.h"
#include "Core/Usage/JsonLines.h"

#include <string_view>

namespace pacelet::HistoryLines {

namespace {

/// Reads the value of one known key; false when it is of another type. Each key that was met sets
/// its bit in `met`.
bool decodeMember(const simdjson::dom::key_value_pair& member, MinuteRecord& record,
                  unsigned& met) {
    const auto read = [&](auto& field, unsigned bit) {
        met |= 1U << bit;
        return member.value.get(field) == simdjson::SUCCESS;
    };
    const std::string_view key = member.key;
    if (key == "t") {
        return read(record.t, 0);
    }
    if (key == "cpu") {
        return read(record.cpu, 1);
    }
    if (key == "cpuMax") {
        return read(record.cpuMax, 2);
    }
    if (key == "pressure") {
        return read(record.pressure, 3);
    }
    if (key == "swap") {
        return read(record.swap, 4);
    }
    if (key == "memUsed") {
        return read(record.memUsed, 5);
    }
    if (key == "n") {
        return read(record.n, 6);
    }
    return true;
}

constexpr unsigned allKeys = 0b1111111;

bool decodeRecord(const simdjson::dom::object& members, MinuteRecord& record) {
    unsigned met = 0;
    for (const simdjson::dom::key_value_pair member : members) {
        if (!decodeMember(member, record, met)) {
            return false;
        }
    }
    return met == allKeys;
}

} // namespace

std::string encode(const MinuteRecord& record) {
    JsonWriter json;
    json.beginObject();
    json.key("t").value(record.t);
    json.key("cpu").value(record.cpu);
    json.key("cpuMax").value(record.cpuMax);
    json.key("pressure").value(record.pressure);
    json.key("swap").value(record.swap);
    json.key("memUsed").value(record.memUsed);
    json.key("n").value(record.n);
    json.endObject();
    return json.take() + '\n';
}

void decode(std::string& text, std::int64_t earliest, std::vector<MinuteRecord>& records) {
    JsonLines::forEachObject(text, [&](const simdjson::dom::object& line) {
        MinuteRecord record;
        if (decodeRecord(line, record) && record.t >= earliest) {
            records.push_back(record);
        }
    });
}

} // namespace pacelet::HistoryLines
