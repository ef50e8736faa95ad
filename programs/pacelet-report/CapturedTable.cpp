#include "programs/pacelet-report/CapturedTable.h"

#include "Core/Sampling/PSParser.h"
#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <pwd.h>
#include <string>
#include <unordered_map>
#include <utility>

namespace pacelet::report {

namespace {

// What no process reaches. With these, no sum over a table leaves its range.
constexpr double mostSeconds = 1e12;
constexpr double mostPercent = 1e7;
constexpr std::int64_t mostKilobytes = std::int64_t{1} << 32;

enum class Column { other, pid, ppid, uid, user, time, rss, percent, share, path, commandLine };
using Layout = std::vector<Column>;

struct ColumnRow {
    std::string_view header;
    Column column;
};
constexpr std::array<ColumnRow, 13> columns{{
    {"PID", Column::pid},
    {"PPID", Column::ppid},
    {"UID", Column::uid}, // some tables have a name there
    {"USER", Column::user},
    {"TIME", Column::time},
    {"RSS", Column::rss},
    {"%CPU", Column::percent},
    {"C", Column::share},
    {"COMM", Column::path},
    {"UCOMM", Column::path},
    {"COMMAND", Column::commandLine},
    {"CMD", Column::commandLine},
    {"ARGS", Column::commandLine},
}};

Column columnOf(std::string_view header) {
    const auto row = std::ranges::find(columns, header, &ColumnRow::header);
    return row == columns.end() ? Column::other : row->column;
}

/// The columns that a header names; nothing when the line is none.
std::optional<Layout> layoutOf(std::string_view line) {
    Layout layout;
    for (const std::string_view header : splitDroppingEmpty(line, ' ')) {
        layout.push_back(columnOf(header));
    }
    const auto has = [&](Column column) { return std::ranges::count(layout, column) > 0; };
    const bool endsInProgram = !layout.empty() && layout.back() >= Column::path;
    return endsInProgram && has(Column::pid) && has(Column::time) ? std::optional{layout}
                                                                  : std::nullopt;
}

/// What lines without a header may be.
const std::array<std::string_view, 3> usualHeaders{
    "PID PPID UID USER TIME RSS %CPU COMM",
    "USER PID %CPU %MEM VSZ RSS TTY STAT START TIME COMMAND",
    "UID PID PPID C STIME TTY TIME CMD",
};

/// A number with a point or, as some languages have it, a comma.
std::optional<double> numberOf(std::string_view text, double most) {
    std::string plain{text};
    std::ranges::replace(plain, ',', '.');
    const auto number = parseFloat(plain);
    return number && *number >= 0 && *number <= most ? number : std::nullopt;
}

/// Minutes and seconds, or hours as well, or days as well: "1-02:03:04".
std::optional<double> secondsOf(std::string_view text) {
    constexpr double secondsPerDay = 86400;
    const std::size_t dash = text.find('-');
    const bool hasDays = dash != std::string_view::npos;
    const auto days = numberOf(hasDays ? text.substr(0, dash) : "0", mostSeconds);
    std::string time{hasDays ? text.substr(dash + 1) : text};
    std::ranges::replace(time, ',', '.');
    const auto seconds = PSParser::cpuSeconds(time);
    if (!days || !seconds || *seconds < 0) {
        return std::nullopt;
    }
    const double all = *days * secondsPerDay + *seconds;
    return all <= mostSeconds ? std::optional{all} : std::nullopt;
}

/// Threads of the kernel have slashes in their names that separate no folders.
std::string kernelThread(std::string_view name) {
    std::string shown{name};
    std::ranges::replace(shown, '/', ':');
    return shown;
}

/// The numbers of users, by name or in digits, each looked up once.
class Users {
public:
    std::uint32_t uidOf(std::string_view name) {
        constexpr auto nobodyHere = std::numeric_limits<std::uint32_t>::max();
        const auto [place, isNew] = uids_.try_emplace(std::string{name}, nobodyHere);
        if (!isNew) {
            return place->second;
        }
        if (const auto number = parseInteger<std::uint32_t>(name)) {
            place->second = *number;
        } else if (const passwd* const record = ::getpwnam(place->first.c_str())) {
            place->second = record->pw_uid;
        }
        return place->second;
    }

private:
    std::unordered_map<std::string, std::uint32_t> uids_;
};

/// Reads the lines of one table.
class LineReader {
public:
    explicit LineReader(Layout layout)
        : layout_{std::move(layout)} {}

    void read(std::string_view line) {
        words_.clear();
        if (!splitInto(line)) {
            return;
        }
        ProcessSample sample;
        const auto keep = [](const auto& value, auto& place) {
            place = value.value_or(place);
            return value.has_value();
        };
        std::int64_t kilobytes = 0;
        if (!keep(parseInteger<std::int32_t>(word(Column::pid)), sample.pid) ||
            !keep(parseInteger<std::int32_t>(word(Column::ppid)), sample.ppid) ||
            !keep(secondsOf(word(Column::time)), sample.cpuTime) ||
            !keep(numberOf(word(cpuColumn()), mostPercent), sample.psCPU) ||
            !keep(parseInteger<std::int64_t>(word(Column::rss)), kilobytes) || kilobytes < 0 ||
            kilobytes > mostKilobytes) {
            return;
        }
        sample.rssBytes = kilobytes * 1024;
        sample.user = word(has(Column::user) ? Column::user : Column::uid);
        sample.uid = users_.uidOf(word(has(Column::uid) ? Column::uid : Column::user));
        sample.path =
            layout_.back() == Column::path ? std::string{words_.back()} : programOf(words_.back());
        constexpr std::int32_t parentOfKernelThreads = 2;
        if (sample.ppid == parentOfKernelThreads && !sample.path.starts_with('/')) {
            sample.path = kernelThread(sample.path);
        }
        table_.isOfLinux |= sample.pid == 1 && lastPathComponent(sample.path) != "launchd";
        table_.tellsCPU |= has(cpuColumn());
        table_.processes.push_back(std::move(sample));
    }

    CapturedTable take() {
        table_.tellsMemory = has(Column::rss);
        return std::move(table_);
    }

private:
    /// The last word is all the rest. False when words are missing.
    bool splitInto(std::string_view line) {
        while (words_.size() + 1 < layout_.size()) {
            line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
            const std::size_t end = std::min(line.find(' '), line.size());
            words_.push_back(line.substr(0, end));
            line.remove_prefix(end);
        }
        line.remove_prefix(line.empty() ? 0 : 1);
        words_.push_back(line);
        return !line.empty();
    }

    bool has(Column column) const { return std::ranges::count(layout_, column) > 0; }

    /// The word in a column; "0" in one that the table does not have.
    std::string_view word(Column column) const {
        const auto place = std::ranges::find(layout_, column);
        return place == layout_.end() ? "0"
                                      : words_[static_cast<std::size_t>(place - layout_.begin())];
    }

    /// Of those who print shares, only a Mac writes fractions of seconds, and there a share is a
    /// mark for its scheduler, and no figure.
    Column cpuColumn() const {
        const bool isMac = word(Column::time).find_first_of(".,") != std::string_view::npos;
        return isMac || has(Column::percent) ? Column::percent : Column::share;
    }

    Layout layout_;
    std::vector<std::string_view> words_;
    CapturedTable table_;
    Users users_;
};

CapturedTable read(std::string_view text, Layout layout) {
    LineReader reader{std::move(layout)};
    forEachLine(text, [&](std::string_view line) { reader.read(line); });
    return reader.take();
}

/// Lines that end in line feeds alone, and no control character else but tabs.
std::string plainText(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byteAt = [&](std::size_t place) {
            return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
        };
        const int byte = byteAt(at);
        const int next = byteAt(at + 1);
        if (byte == '\r' && (next == '\n' || at + 1 == text.size())) {
            continue;
        }
        // The second set of control characters takes two bytes in UTF-8.
        const bool isLateControl = byte == 0xC2 && next >= 0x80 && next < 0xA0;
        const bool isControl = byte < 0x20 && byte != '\n' && byte != '\t';
        plain += isControl || isLateControl || byte == 0x7F ? '?' : text[at];
        at += isLateControl ? 1 : 0;
    }
    return plain;
}

} // namespace

std::string programOf(std::string_view commandLine) {
    const std::size_t bracket = commandLine.find(']');
    if (commandLine.starts_with('[') && bracket != std::string_view::npos) {
        return kernelThread(commandLine.substr(1, bracket - 1));
    }
    const std::size_t end = std::min(commandLine.find(" -", 1), commandLine.find(" /", 1));
    const std::string_view head = commandLine.substr(0, end);
    std::size_t inside = 0;
    for (const std::string_view folder :
         {".framework/", ".bundle/", ".appex/", ".xpc/", "/Application Support/"}) {
        const std::size_t at = head.rfind(folder);
        inside = at == std::string_view::npos ? inside : std::max(inside, at + folder.size());
    }
    // The program of an application often has the blanks of the application's name.
    const std::size_t app = head.rfind(".app/");
    if (app != std::string_view::npos && app >= inside) {
        return std::string{trimmed(head)};
    }
    std::string_view program = head.substr(0, head.find(' ', inside));
    // Some services write what they are at behind their names: "sshd: ann@pts/0".
    program.remove_suffix(program.ends_with(':') && !program.starts_with('/') ? 1 : 0);
    return std::string{program};
}

CapturedTable CapturedTable::parse(std::string_view text) {
    const std::string plain = plainText(text);
    std::optional<Layout> named;
    forEachLine(plain, [&](std::string_view line) {
        if (!named) {
            named = layoutOf(line);
        }
    });
    if (named) {
        return read(plain, *std::move(named));
    }
    CapturedTable best;
    for (const std::string_view header : usualHeaders) {
        CapturedTable table = read(plain, layoutOf(header).value());
        if (table.processes.size() > best.processes.size()) {
            best = std::move(table);
        }
    }
    return best;
}

} // namespace pacelet::report
