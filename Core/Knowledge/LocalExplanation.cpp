#include "Core/Knowledge/LocalExplanation.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>

namespace pacelet::LocalExplanation {

namespace {

using Names = std::initializer_list<std::string_view>;

constexpr std::string_view whitespace = " \t\r\n";

/// All runs of blanks as one.
std::string collapsed(std::string_view text) {
    std::string result;
    for (const char character : trimmed(text)) {
        const bool isBlank = whitespace.find(character) != std::string_view::npos;
        if (!isBlank) {
            result += character;
        } else if (!result.ends_with(' ')) {
            result += ' ';
        }
    }
    return result;
}

bool isLowercase(char character) {
    return character >= 'a' && character <= 'z';
}

/// Whether the first word may take a capital: "shell" may, "iSCSI", "xterm's" and "gpg2" may not.
bool beginsPlainly(std::string_view text, Names names) {
    const std::string_view word = text.substr(0, text.find_first_of(" ,:;()/"));
    return std::ranges::find(names, word) == names.end() &&
           std::ranges::all_of(word, [](char character) {
               return isLowercase(character) || character == '-' || character == '\'' ||
                      static_cast<unsigned char>(character) >= 0x80;
           });
}

/// Without the name in front that many such texts begin with, as in "xterm - X terminal".
std::string_view withoutName(std::string_view text, Names names) {
    for (const std::string_view name : names) {
        for (const std::string_view dash : {" - ", " -- ", ": "}) {
            if (!name.empty() &&
                asciiLowercased(text.substr(0, name.size())) == asciiLowercased(name) &&
                text.substr(name.size()).starts_with(dash)) {
                return text.substr(name.size() + dash.size());
            }
        }
    }
    return text;
}

std::string tidied(std::string_view text, Names names) {
    const std::string clean = collapsed(text);
    std::string result{trimmed(withoutName(clean, names), " .!:;,-")};
    // "etc." and "Inc." end with a point of their own, which the sentence's end stands for.
    if (!result.empty() && isLowercase(result.front()) && beginsPlainly(result, names)) {
        result.front() = static_cast<char>(result.front() - 'a' + 'A');
    }
    std::ranges::replace(result, '!', '.');
    return result;
}

/// Debian's packages share one source and tell their part behind a dash or in brackets.
std::string_view withoutRemarks(std::string_view text) {
    for (const std::string_view mark : {" - ", " -- ", " – ", ", ", "; ", ": ", " [", ". "}) {
        text = text.substr(0, text.find(mark));
    }
    if (text.ends_with(')')) {
        text = text.substr(0, text.rfind(" ("));
    }
    return text;
}

std::string sourceOf(const ProgramFacts& facts) {
    if (!facts.package.empty()) {
        return "From the package '" + facts.package + "'.";
    }
    return facts.entryComment.empty() ? "From its manual page." : "From its entry in the menu.";
}

std::string summaryOf(const ProgramFacts& facts, Names names) {
    const auto withSource = [&](const std::string& text) { return text + ' ' + sourceOf(facts); };
    if (const std::string text = sentence(facts.entryComment, names); !text.empty()) {
        return withSource(text);
    }
    if (const std::string text = sentence(facts.manualLine, names); !text.empty()) {
        return withSource(text);
    }
    if (const std::string text = sentence(facts.packageDescription, names); !text.empty()) {
        return "A part of the package '" + facts.package + "': " + text;
    }
    if (const std::string text = sentence(facts.unitDescription, names); !text.empty()) {
        return "Runs as the service '" + facts.unit + "': " + text;
    }
    return {};
}

std::string titleOf(const ProgramFacts& facts, std::string_view name, Names names) {
    const std::string_view unitDescription = facts.unitDescription;
    for (const std::string_view text :
         {std::string_view{facts.entryKind}, std::string_view{facts.entryName}, unitDescription,
          std::string_view{facts.packageDescription}}) {
        if (std::string title = shortTitle(text, names); !title.empty()) {
            return title;
        }
    }
    return facts.package.empty() ? std::string{name} : "Part of " + facts.package;
}

/// Careful: what nobody started by hand is left alone.
Verdict verdictOf(ProgramRole role) {
    switch (role) {
    case ProgramRole::kernel:
    case ProgramRole::system:
    case ProgramRole::session:
        return Verdict::leave;
    case ProgramRole::application:
    case ProgramRole::program:
        break;
    }
    return Verdict::review;
}

/// What can be said by the role alone.
struct RoleTexts {
    std::string_view title;
    std::string_view summary;
};

RoleTexts textsOf(ProgramRole role) {
    switch (role) {
    case ProgramRole::kernel:
        return {"Part of the kernel",
                "A thread of the kernel, the heart of the system. It works for all programs."};
    case ProgramRole::system:
        return {"System service", "A service that the system starts and looks after by itself."};
    case ProgramRole::session:
        return {"Part of the desktop", "A part of the desktop, or a service that it needs."};
    case ProgramRole::application:
    case ProgramRole::program:
        break;
    }
    return {};
}

} // namespace

std::string sentence(std::string_view text, Names names) {
    std::string result = tidied(text, names);
    if (!result.empty() && !result.ends_with('?')) {
        result += '.';
    }
    return result;
}

std::string shortTitle(std::string_view text, Names names) {
    constexpr std::size_t longest = 48;
    const std::string whole = tidied(text, names);
    std::string title{trimmed(withoutRemarks(whole))};
    return title.size() <= longest ? title : std::string{};
}

std::optional<Explanation> make(const ProgramFacts& facts, std::string_view name,
                                const std::optional<std::string>& appName) {
    const bool isApp = facts.role == ProgramRole::application && appName.has_value();
    const Names names{name, facts.package, facts.unit};
    const RoleTexts standing = textsOf(facts.role);
    Explanation explanation;
    explanation.summary = summaryOf(facts, names);
    explanation.title = titleOf(facts, name, names);
    if (explanation.summary.empty() && !facts.entryKind.empty() && standing.summary.empty()) {
        explanation.summary =
            sentence(facts.entryKind, names) + " Nothing on this computer tells more about it.";
    } else if (explanation.summary.empty()) {
        if (standing.summary.empty()) {
            return std::nullopt;
        }
        explanation.title = standing.title;
        explanation.summary = standing.summary;
    }
    explanation.verdict = isApp ? Verdict::safe : verdictOf(facts.role);
    if (isApp) {
        explanation.fixes = {FixID::quitApp};
    }
    explanation.symbol = defaultSymbol;
    explanation.isFallback = true;
    return explanation;
}

} // namespace pacelet::LocalExplanation
