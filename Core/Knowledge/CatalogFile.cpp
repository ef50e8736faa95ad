#include "Core/Knowledge/CatalogFile.h"

#include "Core/Support/Files.h"
#include "Core/Support/JsonDocument.h"

#include <fmt/format.h>
#include <system_error>

namespace pacelet::CatalogFile {

namespace {

using simdjson::dom::element;
using simdjson::dom::object;

/// The catalog has some 100 KB.
constexpr std::size_t largestFile = std::size_t{64} << 20;

[[noreturn]] void failDecoding(const std::string& message) {
    throw CatalogError{CatalogError::Kind::undecodable, message};
}

/// Reads the keys of one object and names the faulty one in its errors.
class Fields {
public:
    Fields(object fields, std::string where)
        : fields_{fields},
          where_{std::move(where)} {}

    std::string text(const char* key) const { return std::string{get<std::string_view>(key)}; }

    /// Absent, or null, is nothing.
    std::optional<std::string> optionalText(const char* key) const {
        element value;
        if (fields_.at_key(key).get(value) != simdjson::SUCCESS || value.is_null()) {
            return std::nullopt;
        }
        return text(key);
    }

    std::vector<std::string> texts(const char* key) const {
        std::vector<std::string> list;
        for (const element item : get<simdjson::dom::array>(key)) {
            std::string_view value;
            if (item.get(value) != simdjson::SUCCESS) {
                fail(key);
            }
            list.emplace_back(value);
        }
        return list;
    }

    Fields child(const char* key) const { return {get<object>(key), where_}; }

    [[noreturn]] void fail(const char* key) const {
        failDecoding(fmt::format("{}: \"{}\" is missing or no valid value", where_, key));
    }

private:
    template<typename Value>
    Value get(const char* key) const {
        Value value;
        if (fields_.at_key(key).get(value) != simdjson::SUCCESS) {
            fail(key);
        }
        return value;
    }

    object fields_;
    std::string where_;
};

CatalogEntry::Match decodeMatch(const Fields& fields) {
    return {fields.texts("names"), fields.texts("pathPrefixes"), fields.texts("launchdLabels")};
}

CatalogEntry decodeEntry(const Fields& fields) {
    CatalogEntry entry;
    entry.id = fields.text("id");
    entry.match = decodeMatch(fields.child("match"));
    entry.title = fields.text("title");
    entry.summary = fields.text("summary");
    entry.whyHigh = fields.text("whyHigh");
    const auto verdict = verdictFromRawValue(fields.text("verdict"));
    if (!verdict) {
        fields.fail("verdict");
    }
    entry.verdict = *verdict;
    entry.idleNote = fields.optionalText("idleNote");
    for (const std::string& name : fields.texts("fixes")) {
        const auto fix = fixIDFromRawValue(name);
        if (!fix) {
            fields.fail("fixes");
        }
        entry.fixes.push_back(*fix);
    }
    entry.guide = fields.text("guide");
    entry.symbol = fields.optionalText("symbol");
    if (const auto system = fields.optionalText("system")) {
        entry.system = operatingSystemFromRawValue(*system);
        if (!entry.system) {
            fields.fail("system");
        }
    }
    return entry;
}

} // namespace

std::vector<CatalogEntry> decode(std::string_view json) {
    simdjson::dom::parser parser;
    simdjson::dom::array list;
    if (const auto error = parseJson(parser, json).get(list)) {
        failDecoding(fmt::format("no JSON array of entries: {}", simdjson::error_message(error)));
    }
    std::vector<CatalogEntry> entries;
    entries.reserve(list.size());
    for (const element item : list) {
        const std::string where = fmt::format("entry {}", entries.size());
        object fields;
        if (item.get(fields) != simdjson::SUCCESS) {
            failDecoding(where + " is no object");
        }
        entries.push_back(decodeEntry({fields, where}));
    }
    return entries;
}

std::vector<CatalogEntry> read(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        throw CatalogError{CatalogError::Kind::notFound, "no such file: " + file.string()};
    }
    std::string text;
    if (const auto failure = readFile(file.string(), largestFile, text)) {
        throw CatalogError{CatalogError::Kind::unreadable,
                           fmt::format("couldn't read {}: {}", file.string(), failure.message())};
    }
    return decode(text);
}

} // namespace pacelet::CatalogFile
