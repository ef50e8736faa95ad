#include "Core/Usage/CauseLines.h"

#include "Core/Support/JsonWriter.h"
#include "Core/Usage/JsonLines.h"
#include "Core/Usage/MinuteRecord.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace pacelet::CauseLines {

namespace {

/// The calendar ends with the year 9999, and began as long before 1970.
constexpr std::int64_t outermostMinute = 4'223'371'680;

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

/// The keys of a cause, in the order in which they are written.
enum class Key { kind, severity, id, name, seconds, mean, highest };
constexpr std::array<std::string_view, 7> keys{"kind",    "severity", "id", "name",
                                               "seconds", "mean",     "max"};

/// The place of `key` among the keys, which is most often the likely one; their number when it is
/// none of them.
std::size_t placeOf(std::string_view key, std::size_t likely) {
    if (keys[likely] == key) {
        return likely;
    }
    return static_cast<std::size_t>(std::ranges::find(keys, key) - keys.begin());
}

/// Reads the value of the key at this place; false when it is none that such a key has.
bool decodeValue(const simdjson::dom::element& value, std::size_t place, ReadNote& note) {
    const auto read = [&](auto& field) { return value.get(field) == simdjson::SUCCESS; };
    std::string_view word;
    switch (static_cast<Key>(place)) {
    case Key::kind:
        return read(word) && (note.kind = kindFromRawValue(word));
    case Key::severity:
        return read(word) && (note.severity = severityFromRawValue(word));
    case Key::id:
        return read(note.id);
    case Key::name:
        return read(note.name);
    case Key::seconds:
        return read(note.seconds) && note.seconds > 0 && note.seconds <= secondsPerMinute;
    case Key::mean:
        return read(note.mean);
    case Key::highest:
        return read(note.highest);
    }
    return true;
}

bool decodeNotes(const simdjson::dom::array& list, std::vector<ReadNote>& notes) {
    constexpr unsigned allKeys = (1U << keys.size()) - 1;
    for (const simdjson::dom::element each : list) {
        simdjson::dom::object members;
        if (each.get(members) != simdjson::SUCCESS) {
            return false;
        }
        ReadNote note;
        unsigned met = 0;
        std::size_t likely = 0;
        for (const simdjson::dom::key_value_pair member : members) {
            const std::size_t place = placeOf(member.key, likely++ % keys.size());
            if (!decodeValue(member.value, place, note)) {
                return false;
            }
            met |= 1U << place;
        }
        if ((met & allKeys) != allKeys) {
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
        if (line["t"].get(t) != simdjson::SUCCESS || t < std::max(earliest, -outermostMinute) ||
            t >= outermostMinute || line["causes"].get(list) != simdjson::SUCCESS ||
            !decodeNotes(list, notes)) {
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
