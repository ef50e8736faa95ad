#pragma once

#include <array>
#include <fmt/format.h>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Tables of examples, tests/fixtures/tables/*.txt. A table starts with "== name", a remark with
/// "# "; every other line is a row of fields between bars, blanks around a field dropped.
/// \n, \r, \t, \\, \| and \xNN stand for what they say, \_ for a blank, \- for nothing.
namespace pacelet::testing {

template<std::size_t count>
std::array<std::string, count> fieldsOf(const std::string& line) {
    std::array<std::string, count> fields;
    std::array<std::size_t, count> ends{}; ///< behind the last character that is no plain blank
    std::size_t field = 0;
    for (std::size_t at = 0; at < line.size(); ++at) {
        char character = line[at];
        if (character == '|' && ++field < count) {
            continue;
        }
        if (field >= count) {
            throw std::invalid_argument{"too many fields: " + line};
        }
        const bool isEscape = character == '\\';
        if (isEscape && line.at(++at) == 'x') {
            character = static_cast<char>(std::stoi(line.substr(at + 1, 2), nullptr, 16));
            at += 2;
        } else if (isEscape && line[at] == '-') {
            continue;
        } else if (isEscape) {
            constexpr std::string_view letters = "nrt_";
            const std::size_t letter = letters.find(line[at]);
            character = letter < letters.size() ? "\n\r\t "[letter] : line[at];
        }
        const bool isBlank = character == ' ' && !isEscape;
        if (!isBlank || !fields[field].empty()) {
            fields[field] += character;
        }
        ends[field] = isBlank ? ends[field] : fields[field].size();
    }
    for (std::size_t each = 0; each < count; ++each) {
        fields[each].resize(ends[each]);
    }
    if (field + 1 != count) {
        throw std::invalid_argument{"too few fields: " + line};
    }
    return fields;
}

/// The rows of one table of tests/fixtures/tables/`file`.txt; never none.
template<std::size_t count>
std::vector<std::array<std::string, count>> rows(const std::string& file,
                                                 const std::string& table) {
    std::ifstream stream{PACELET_FIXTURES "/tables/" + file + ".txt", std::ios::binary};
    std::vector<std::array<std::string, count>> found;
    bool isInside = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.starts_with("== ")) {
            isInside = line == "== " + table;
        } else if (isInside && !line.empty() && !line.starts_with("# ")) {
            found.push_back(fieldsOf<count>(line));
        }
    }
    if (found.empty()) {
        throw std::invalid_argument{"no rows of " + table + " in " + file};
    }
    return found;
}

/// The value as tables write it, "none" when there is none.
template<typename Value>
std::string shown(const std::optional<Value>& value) {
    return value ? fmt::format("{}", *value) : "none";
}

} // namespace pacelet::testing
