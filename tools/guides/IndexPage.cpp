#include "tools/guides/GuideSite.h"
#include "tools/guides/Html.h"

#include <fmt/format.h>

namespace pacelet::guides {

namespace {

/// The letter under which a title stands; "#" when it begins with none.
char letterOf(std::string_view title) {
    const char first = title.empty() ? '\0' : title.front();
    if (first >= 'a' && first <= 'z') {
        return static_cast<char>(first - 'a' + 'A');
    }
    return first >= 'A' && first <= 'Z' ? first : '#';
}

std::string_view anchorOf(const char& letter) {
    return letter == '#' ? "other" : std::string_view{&letter, 1};
}

} // namespace

std::string indexPage(std::span<const CatalogEntry* const> entries) {
    // By letter, in the order in which the letters come; what begins with none comes first.
    std::map<char, std::string> lists;
    for (const CatalogEntry* const entry : entries) {
        lists[letterOf(entry->title)] +=
            fmt::format("<li><a href=\"process/{}/\">{}</a><span>{}</span></li>\n", entry->guide,
                        escaped(entry->title), escaped(entry->summary));
    }
    std::string letters;
    std::string sections;
    for (const auto& [letter, items] : lists) {
        letters += fmt::format("<a href=\"#{}\">{}</a>\n", anchorOf(letter), letter);
        sections += fmt::format("<h2 id=\"{}\">{}</h2>\n<ul class=\"guides\">\n{}</ul>\n",
                                anchorOf(letter), letter, items);
    }
    const std::string_view description = "What runs on your machine, in plain English: what it is "
                                         "for, why it gets busy, and what you can "
                                         "do about it.";
    const std::string body = textElement("h1", "What is running?") +
                             textElement("p class=\"summary\"", description) +
                             "<nav class=\"letters\">\n" + letters + "</nav>\n" + sections;
    return document("Guides – Pacelet", description, "", body);
}

} // namespace pacelet::guides
