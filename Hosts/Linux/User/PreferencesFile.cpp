#include "Hosts/Linux/User/PreferencesFile.h"

#include "Core/Support/Files.h"
#include "Core/Support/JsonWriter.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/User/AtomicFile.h"
#include "Hosts/Linux/User/Base64.h"

#include <fmt/format.h>
#include <simdjson.h>
#include <utility>
#include <vector>

namespace pacelet::Linux {

namespace {

/// The program's own file has a few hundred bytes.
constexpr std::size_t mostPreferenceBytes = 1 << 20;

template<typename Value>
const Value* find(const PreferenceValues& values, std::string_view key) {
    const auto found = values.find(key);
    return found == values.end() ? nullptr : std::get_if<Value>(&found->second);
}

} // namespace

ParsedPreferences parsePreferences(std::string_view json) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (json.starts_with(byteOrderMark)) {
        json.remove_prefix(byteOrderMark.size());
    }
    ParsedPreferences parsed;
    simdjson::dom::parser parser;
    simdjson::dom::object object;
    if (parser.parse(simdjson::padded_string{json}).get(object) != simdjson::SUCCESS) {
        return parsed;
    }
    parsed.isWhole = true;
    for (const auto& [key, value] : object) {
        bool truth = false;
        std::string_view text;
        std::optional<std::string> bytes;
        if (value.get(truth) == simdjson::SUCCESS) {
            parsed.values.insert_or_assign(std::string{key}, truth);
        } else if (value.get(text) == simdjson::SUCCESS && (bytes = base64Decoded(text))) {
            parsed.values.insert_or_assign(std::string{key}, PreferenceData{*std::move(bytes)});
        } else {
            parsed.isWhole = false;
        }
    }
    return parsed;
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

/// Of the UI thread.
struct PreferencesFile::Observers {
    std::vector<std::weak_ptr<std::function<void()>>> all;
};

PreferencesFile::PreferencesFile(std::string path, Log& log, PostToUI postToUI)
    : path_{std::move(path)},
      log_{log},
      postToUI_{std::move(postToUI)},
      observers_{std::make_shared<Observers>()},
      writer_{[this](const std::string& contents) { stored(store(contents)); }} {
    read();
}

void PreferencesFile::read() {
    std::string text;
    std::error_code error = readFile(path_, mostPreferenceBytes, text);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory) {
        return;
    }
    if (!error) {
        ParsedPreferences parsed = parsePreferences(text);
        values_ = std::move(parsed.values);
        if (parsed.isWhole) {
            return;
        }
        error = std::make_error_code(std::errc::illegal_byte_sequence);
    }
    trouble_ = PreferencesTrouble::flawed;
    mustSetAside_ = true;
    complain("preferences could not be read", error);
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
    writer_.put(writePreferences(values_));
}

std::error_code PreferencesFile::store(const std::string& contents) {
    if (mustSetAside_) {
        if (const auto error = setFileAside(path_)) {
            return error;
        }
        mustSetAside_ = false;
    }
    return replaceFile(path_, contents, Outlives::powerCut);
}

void PreferencesFile::stored(const std::error_code& error) {
    const auto now = error ? PreferencesTrouble::unwritable : PreferencesTrouble::none;
    // A flaw in what was read is no better for a file that can be written.
    if (trouble_ == now || (!error && trouble_ == PreferencesTrouble::flawed)) {
        return;
    }
    trouble_ = now;
    if (error) {
        complain("preferences could not be written", error);
    }
    if (postToUI_) {
        postToUI_([posted = std::weak_ptr{observers_}] {
            if (const auto observers = posted.lock()) {
                for (const auto& observer : std::vector{observers->all}) {
                    if (const auto changed = observer.lock()) {
                        (*changed)();
                    }
                }
            }
        });
    }
}

ObserverHandle PreferencesFile::observeTrouble(std::function<void()> changed) {
    const auto observer = std::make_shared<std::function<void()>>(std::move(changed));
    std::erase_if(observers_->all, [](const auto& each) { return each.expired(); });
    observers_->all.push_back(observer);
    return observer;
}

void PreferencesFile::complain(std::string_view what, const std::error_code& error) {
    log_.write(LogLevel::error, logSubsystem, "preferences",
               fmt::format("{}: {}: {}", what, path_, error.message()));
}

} // namespace pacelet::Linux
