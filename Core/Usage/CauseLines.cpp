#include "Core/Usage/CauseLines.h"

#include "Core/Support/JsonWriter.h"
#include "Core/Usage/JsonLines.h"
#include "Core/Usage/MinuteRecord.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

namespace pacelet::CauseLines {

namespace {

/// A cause of a line; the views point into the parser.
struct ReadNote {
    std::optional<FindingKind> kind;
    std::optional<Severity> severity;
    std::string_view id;
    std::string_view name;
    double seconds = 0;
    double mean = 0;
    double highest = 0;
};

/// Reads the value of one known key; false when it is of another type.
bool decodeMember(const simdjson::dom::key_value_pair& member, ReadNote& note, unsigned& met) {
    std::string_view word;
    const auto read = [&](auto& field, unsigned bit) {
        met |= 1U << bit;
        return member.value.get(field) == simdjson::SUCCESS;
    };
    if (member.key == "kind") {
        const bool isText = read(word, 0);
        note.kind = kindFromRawValue(word);
        return isText && note.kind;
    }
    if (member.key == "severity") {
        const bool isText = read(word, 1);
        note.severity = severityFromRawValue(word);
        return isText && note.severity;
    }
    if (member.key == "id") {
        return read(note.id, 2);
    }
    if (member.key == "name") {
        return read(note.name, 3);
    }
    if (member.key == "seconds") {
        return read(note.seconds, 4) && note.seconds > 0 && note.seconds <= secondsPerMinute;
    }
    if (member.key == "mean") {
        return read(note.mean, 5);
    }
    if (member.key == "max") {
        return read(note.highest, 6);
    }
    return true;
}

bool decodeNotes(const simdjson::dom::array& list, std::vector<ReadNote>& notes) {
    constexpr unsigned allKeys = 0b1111111;
    for (const simdjson::dom::element each : list) {
        simdjson::dom::object members;
        if (each.get(members) != simdjson::SUCCESS) {
            return false;
        }
        ReadNote note;
        unsigned met = 0;
        for (const simdjson::dom::key_value_pair member : members) {
            if (!decodeMember(member, note, met)) {
                return false;
            }
        }
        if (met != allKeys) {
            return false;
        }
        notes.push_back(note);
    }
    return true;
}

} // namespace

std::string encode(const CauseMinute& minute) {
    JsonWriter json;
    json.beginObject();
    json.key("t").value(minute.t);
    json.key("causes").beginArray();
    for (const CauseNote& note : minute.causes) {
        json.beginObject();
        json.key("kind").value(rawValue(note.cause.kind));
        json.key("severity").value(rawValue(note.severity));
        json.key("id").value(note.cause.id);
        json.key("name").value(note.cause.name);
        json.key("seconds").value(note.seconds);
        json.key("mean").value(note.mean);
        json.key("max").value(note.highest);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    return json.take() + '\n';
}

void decode(std::string& text, std::int64_t earliest, CauseJournal& journal) {
    std::vector<ReadNote> notes;
    JsonLines::forEachObject(text, [&](const simdjson::dom::object& line) {
        std::int64_t t = 0;
        simdjson::dom::array list;
        notes.clear();
        if (line["t"].get(t) != simdjson::SUCCESS || t < earliest ||
            line["causes"].get(list) != simdjson::SUCCESS || !decodeNotes(list, notes)) {
            return;
        }
        for (const ReadNote& note : notes) {
            journal.add({t, journal.placeOf(*note.kind, note.id, note.name), *note.severity,
                         static_cast<float>(note.seconds), static_cast<float>(note.mean),
                         note.highest});
        }
    });
}

} // namespace pacelet::CauseLines
