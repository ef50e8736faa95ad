#include "Hosts/Recorded/Disguise.h"

#include "Core/Support/JsonDocument.h"
#include "Core/Support/JsonWriter.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <utility>

namespace pacelet::Recorded {

namespace {

constexpr std::array<std::string_view, 3> personalFolders{"/home/", "/Users/", "/media/"};

/// What ends a name within a path, or the path itself.
constexpr std::string_view nameEnds = "/ \t\n\r\"':;,()";

/// Accounts of people begin here on some systems, and later on others.
bool isPerson(std::uint32_t uid) {
    constexpr std::uint32_t firstPerson = 500;
    constexpr std::uint32_t nobody = 65534;
    return uid >= firstPerson && uid < nobody;
}

/// The program of a command line: the one at `path`, or else what stands before the first blank.
std::string_view programOf(std::string_view commandLine, std::string_view path) {
    const bool isWhole = commandLine.size() <= path.size() || commandLine[path.size()] == ' ';
    return commandLine.starts_with(path) && isWhole ? path
                                                    : commandLine.substr(0, commandLine.find(' '));
}

/// `text` with `to` in the place of the path `from`, where that stands whole.
std::string withPath(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    for (;;) {
        const std::size_t at = from.empty() ? text.npos : text.find(from);
        result += text.substr(0, at);
        if (at == text.npos) {
            return result;
        }
        const char before = result.empty() ? ' ' : result.back();
        text.remove_prefix(at + from.size());
        const bool ends = text.empty() || nameEnds.find(text.front()) != nameEnds.npos;
        const bool begins = nameEnds.find(before) != nameEnds.npos || before == '=';
        result += begins && before != '/' && ends ? to : from;
    }
}

} // namespace

Disguise::Disguise(std::string home, std::uint32_t uid, OperatingSystem system)
    : home_{std::move(home)},
      homeAlias_{system == OperatingSystem::macOS ? "/Users/user" : "/home/user"},
      uid_{uid} {
    if (home_ == "/") {
        home_.clear();
    }
    const std::string name{lastPathComponent(home_)};
    aliases_[name] = "user";
    names_["user"] = name;
}

std::string Disguise::aliasOf(const std::string& name) {
    const auto [place, isNew] = aliases_.try_emplace(name);
    if (isNew) {
        place->second = fmt::format("user-{}", aliases_.size());
        names_[place->second] = name;
    }
    return place->second;
}

std::string Disguise::renamed(std::string_view text, const Rename& rename) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t slash = text.find('/');
        result += text.substr(0, slash);
        text.remove_prefix(std::min(slash, text.size()));
        std::string_view folder = text.substr(0, 1);
        for (const std::string_view each : personalFolders) {
            folder = text.starts_with(each) ? each : folder;
        }
        result += folder;
        text.remove_prefix(folder.size());
        if (folder.size() > 1) {
            const std::string_view name = text.substr(0, text.find_first_of(nameEnds));
            result += name.empty() ? std::string{} : rename(folder, name);
            text.remove_prefix(name.size());
        }
    }
    return result;
}

std::string Disguise::hideLocked(std::string_view text) {
    return renamed(withPath(text, home_, homeAlias_),
                   [this](std::string_view folder, std::string_view name) {
                       const std::string whose{name};
                       const bool isKnown = aliases_.contains(whose);
                       // Below the media stand disks, too.
                       const bool stays = names_.contains(whose) || name == "Shared" ||
                                          (folder == "/media/" && !isKnown);
                       return stays ? whose : aliasOf(whose);
                   });
}

std::string Disguise::hide(std::string_view text) {
    const std::lock_guard lock{mutex_};
    return hideLocked(repairedUTF8(plainText(text)));
}

std::string Disguise::reveal(std::string_view text) {
    const std::lock_guard lock{mutex_};
    return renamed(home_.empty() ? std::string{text} : withPath(text, homeAlias_, home_),
                   [this](std::string_view, std::string_view name) {
                       const auto known = names_.find(std::string{name});
                       return known == names_.end() ? std::string{name} : known->second;
                   });
}

std::string Disguise::hideTable(std::string_view table) {
    const std::lock_guard lock{mutex_};
    own_.clear();
    std::string hidden;
    forEachLine(table, [&](std::string_view line) {
        std::array<std::string_view, 8> columns;
        const auto uid =
            splitColumns(line, columns) ? parseInteger<std::uint32_t>(columns[2]) : std::nullopt;
        if (!uid) {
            return;
        }
        if (*uid == uid_) {
            own_.emplace(columns[0], columns[7]);
        }
        const std::string name{columns[3]};
        const auto offset = static_cast<std::size_t>(columns[3].data() - line.data());
        if (isPerson(*uid) && *uid == uid_) {
            aliases_.try_emplace(name, "user");
        }
        const std::string shown = isPerson(*uid) ? aliasOf(name) : name;
        std::string_view rest = line.substr(offset + name.size());
        rest.remove_prefix(rest.find_first_not_of(' '));
        hidden += fmt::format("{}{:<8} {}\n", line.substr(0, offset), shown, hideLocked(rest));
    });
    return hidden;
}

std::string Disguise::hideCommandLines(std::string_view lines) {
    const std::lock_guard lock{mutex_};
    constexpr std::string_view extension = " --extension-process";
    std::string hidden;
    forEachLine(lines, [&](std::string_view line) {
        std::array<std::string_view, 3> columns;
        if (!splitColumns(line, columns)) {
            return;
        }
        const auto own = own_.find(columns[0]);
        if (own == own_.end()) {
            return;
        }
        const std::string_view program = programOf(columns[2], own->second);
        const bool isExtension = columns[2].find(extension) != std::string_view::npos;
        hidden += fmt::format("{:>5} {:>6} {}{}\n", columns[0], columns[1], hideLocked(program),
                              isExtension ? extension : "");
    });
    return hidden;
}

std::string Disguise::hideHardware(std::string_view report) {
    constexpr std::string_view list = "SPHardwareDataType";
    constexpr std::array<std::string_view, 4> harmless{"machine_name", "chip_type", "cpu_type",
                                                       "physical_memory"};
    simdjson::dom::parser parser;
    simdjson::dom::array items;
    if (parseJson(parser, report).at_key(list).get(items) != simdjson::SUCCESS) {
        return {};
    }
    JsonWriter json;
    json.beginObject().key(list).beginArray();
    for (const simdjson::dom::element item : items) {
        simdjson::dom::object fields;
        if (item.get(fields) != simdjson::SUCCESS) {
            return {};
        }
        json.beginObject();
        for (const auto& [key, value] : fields) {
            std::string_view text;
            if (std::ranges::find(harmless, key) != harmless.end() &&
                value.get(text) == simdjson::SUCCESS) {
                json.key(key).value(text);
            }
        }
        json.endObject();
    }
    json.endArray().endObject();
    return json.take() + '\n';
}

} // namespace pacelet::Recorded
