#include "Hosts/Linux/Knowledge/ManualPage.h"

#include "Core/Support/Text.h"

#include <array>
#include <memory>
#include <optional>
#include <zlib.h>

namespace pacelet::Linux::ManualPage {

namespace {

/// The first section stands at the beginning, behind remarks and definitions.
constexpr unsigned mostRead = 64 * 1024;

struct CloseGzip {
    void operator()(gzFile file) const { ::gzclose(file); }
};

/// The beginning of a compressed file; empty when it cannot be read.
std::string beginning(const std::string& path) {
    const std::unique_ptr<gzFile_s, CloseGzip> file{::gzopen(path.c_str(), "rbe")};
    if (!file) {
        return {};
    }
    std::string text(mostRead, '\0');
    const int count = ::gzread(file.get(), text.data(), mostRead);
    text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
    return text;
}

/// Without the typesetter's marks: `\fB` and its like, `\-`, `\&`, `\(en`, `\s-1`, `\/`.
std::string plain(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            result += text[at];
            continue;
        }
        const char code = ++at < text.size() ? text[at] : '\0';
        if (code == '-' || code == '\\' || code == 'e') {
            result += code == '-' ? '-' : '\\';
        } else if (code == ' ' || code == '~') {
            result += ' ';
        } else if (code == 'f') {
            at += at + 1 < text.size() && text[at + 1] == '(' ? 3 : 1;
        } else if (code == 's') {
            at += at + 1 < text.size() && (text[at + 1] == '-' || text[at + 1] == '+') ? 2 : 1;
        } else if (code == '(') {
            const std::string_view glyph = text.substr(at + 1, 2);
            result += glyph == "aq" || glyph == "cq" || glyph == "oq" ? "'" : "-";
            at += 2;
        } else if (code == '*') {
            // A text that the page has defined: mostly an apostrophe or a quotation mark.
            const bool isLong = at + 1 < text.size() && text[at + 1] == '(';
            at += isLong ? 3 : 1;
            result += "'";
        } else if (code == '"') {
            break; // a remark
        }
        // What is left takes no room: "\&", "\/", "\|", "\^".
    }
    return result;
}

std::string_view macroArgument(std::string_view line, std::string_view macro) {
    return line.starts_with(macro) && line.size() > macro.size() && line[macro.size()] == ' '
               ? trimmed(line.substr(macro.size()), " \t\"")
               : std::string_view{};
}

bool isSection(std::string_view line) {
    return line.starts_with(".SH") || line.starts_with(".Sh") || line.starts_with(".SS") ||
           line.starts_with(".Ss");
}

/// The lines of the first section, in one, and what the structured macros say.
struct NameSection {
    std::string text;
    std::string described; ///< argument of ".Nd"
    bool hasName = false;  ///< ".Nm" gives `name`
};

NameSection firstSection(std::string_view source, std::string_view name) {
    NameSection section;
    bool isInside = false;
    bool isOver = false;
    bool isDefinition = false; // of a macro, whose lines are no text of the page
    forEachLine(source, [&](std::string_view line) {
        if (isDefinition || line.starts_with(".de")) {
            isDefinition = !line.starts_with("..");
        } else if (isSection(line)) {
            isOver = isOver || isInside;
            isInside = true;
        } else if (const auto nd = macroArgument(line, ".Nd"); isInside && !isOver && !nd.empty()) {
            section.described = plain(nd);
        } else if (const auto nm = macroArgument(line, ".Nm"); isInside && !isOver && !nm.empty()) {
            section.hasName = section.hasName || plain(nm).find(name) != std::string::npos;
        } else if (isInside && !isOver && !line.starts_with('.') && !line.starts_with('\'')) {
            section.text += plain(line) + ' ';
        } else if (isInside && !isOver) {
            // ".B name" and its like carry text, too.
            const std::size_t blank = line.find(' ');
            constexpr std::array<std::string_view, 6> fonts{".B", ".I", ".BR", ".IR", ".RB", ".BI"};
            for (const std::string_view font : fonts) {
                if (line.substr(0, blank) == font && blank != line.npos) {
                    section.text += plain(line.substr(blank + 1)) + ' ';
                }
            }
        }
    });
    return section;
}

/// Whether `names`, a list between commas, holds `name`.
bool isAmong(std::string_view names, std::string_view name) {
    for (const std::string_view piece : splitDroppingEmpty(names, ',')) {
        if (trimmed(piece, " \t\"") == name) {
            return true;
        }
    }
    return false;
}

/// The page that this one stands for, "man1/other.1", or nothing (empty).
std::string_view redirection(std::string_view source) {
    std::string_view target;
    forEachLine(source, [&](std::string_view line) {
        if (target.empty()) {
            target = macroArgument(line, ".so");
        }
    });
    return target;
}

} // namespace

std::string line(std::string_view source, std::string_view name) {
    const NameSection section = firstSection(source, name);
    if (!section.described.empty()) {
        return section.hasName ? repairedUTF8(section.described) : std::string{};
    }
    for (const std::string_view dash : {" - ", " -- ", " --- "}) {
        const std::size_t at = section.text.find(dash);
        if (at != std::string::npos && isAmong(section.text.substr(0, at), name)) {
            return repairedUTF8(
                std::string{trimmed(std::string_view{section.text}.substr(at + dash.size()))});
        }
    }
    return {};
}

std::string line(const std::string& folder, char section, const std::string& name) {
    std::string source = beginning(file(folder, section, name));
    // A page of several names is stored once; the others point to it.
    if (const std::string_view target = redirection(source); !target.empty()) {
        source = beginning(folder + '/' + std::string{target} + ".gz");
    }
    return line(source, name);
}

std::string file(const std::string& folder, char section, std::string_view name) {
    return (folder + "/man" + section + '/').append(name) + '.' + section + ".gz";
}

} // namespace pacelet::Linux::ManualPage
