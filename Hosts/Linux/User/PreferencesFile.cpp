#include "Hosts/Linux/User/PreferencesFile.h"

#include "Core/Support/Files.h"
#include "Core/Support/JsonWriter.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/User/AtomicFile.h"
#include "Hosts/Linux/User/Base64.h"

#include <simdjson.h>
#include <utility>

namespace pacelet::Linux {

namespace {

/// The program's own file has a few hundred bytes.
constexpr std::size_t mostBytes = 1 << 20;

template<typename Value>
const Value* find(const PreferenceValues& values, std::string_view key) {
    const auto found = values.find(key);
    return found == values.end() ? nullptr : std::get_if<Value>(&found->second);
}

} // namespace

PreferenceValues parsePreferences(std::string_view json) {
    PreferenceValues values;
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(simdjson::padded_string{json}).get(object) != simdjson::SUCCESS) {
        return values;
    }
    for (const auto& [key, value] : object) {
        bool truth = false;
        std::string_view text;
        if (value.get(truth) == simdjson::SUCCESS) {
            values.insert_or_assign(std::string{key}, truth);
        } else if (value.get(text) == simdjson::SUCCESS) {
            if (auto bytes = base64Decoded(text)) {
                values.insert_or_assign(std::string{key}, PreferenceData{*std::move(bytes)});
            }
        }
    }
    return values;
}

std::string writePreferences(const PreferenceValues& values) {
    JsonWriter json;
    json.beginObject();
    for (const auto& [key, value] : values) {
        json.key(key);
        if (const bool* truth = std::get_if<bool>(&value)) {
            json.value(*truth);
        } else {
            json.value(base64Encoded(std::get<PreferenceData>(value).bytes));
        }
    }
    json.endObject();
    return json.take() + '\n';
}

PreferencesFile::PreferencesFile(std::string path) : path_{std::move(path)} {
    std::string text;
    if (!readFile(path_, mostBytes, text)) {
        values_ = parsePreferences(text);
    }
}

std::optional<bool> PreferencesFile::boolean(std::string_view key) {
    const bool* value = find<bool>(values_, key);
    return value != nullptr ? std::optional{*value} : std::nullopt;
}

void PreferencesFile::setBoolean(std::string_view key, bool value) {
    set(key, value);
}

std::optional<std::string> PreferencesFile::data(std::string_view key) {
    const auto* value = find<PreferenceData>(values_, key);
    return value != nullptr ? std::optional{value->bytes} : std::nullopt;
}

void PreferencesFile::setData(std::string_view key, std::string_view bytes) {
    set(key, PreferenceData{std::string{bytes}});
}

void PreferencesFile::set(std::string_view key, PreferenceValues::mapped_type value) {
    // What could not be written the last time gets another chance with every call.
    values_.insert_or_assign(repairedUTF8(std::string{key}), std::move(value));
    replaceFile(path_, writePreferences(values_));
}

} // namespace pacelet::Linux
