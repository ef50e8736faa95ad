#include "tools/guides/GuideSite.h"
#include "tools/guides/GuideTexts.h"
#include "tools/guides/Html.h"

#include <algorithm>
#include <fmt/format.h>

namespace pacelet::guides {

namespace {

constexpr std::string_view root = "../../";

std::string verdict(const CatalogEntry& entry) {
    return fmt::format("<p class=\"verdict\"><span class=\"pill {}\">{}</span> {}</p>\n",
                       rawValue(entry.verdict), escaped(label(entry.verdict)),
                       escaped(advice(entry.verdict)));
}

std::string whatYouCanDo(const CatalogEntry& entry) {
    std::string items;
    for (const FixID fix : entry.fixes) {
        // Whoever reads this has had it explained.
        if (fix != FixID::explain) {
            items += fmt::format("<li><strong>{}</strong> {}</li>\n", escaped(title(fix, nullptr)),
                                 escaped(advice(fix)));
        }
    }
    return "<h2>What you can do</h2>\n" +
           (items.empty() ? textElement("p", "There is nothing that you have to do.")
                          : "<ul class=\"fixes\">\n" + items + "</ul>\n");
}

std::string codeList(std::string_view heading, const std::vector<std::string>& words) {
    if (words.empty()) {
        return {};
    }
    std::string html = textElement("h2", heading) + "<ul class=\"names\">\n";
    for (const std::string& word : words) {
        html += fmt::format("<li><code>{}</code></li>\n", escaped(word));
    }
    return html + "</ul>\n";
}

std::string neighbour(const CatalogEntry* entry, std::string_view relation) {
    return entry == nullptr ? "<span></span>\n"
                            : fmt::format("<a rel=\"{}\" href=\"../{}/\">{}</a>\n", relation,
                                          entry->guide, escaped(entry->title));
}

} // namespace

std::string guidePage(const CatalogEntry& entry, const GuideNeighbours& neighbours) {
    std::string body = fmt::format("<p class=\"back\"><a href=\"{}index.html\">All guides</a></p>\n"
                                   "<article>\n",
                                   root);
    body += textElement("h1", entry.title);
    body += textElement("p class=\"summary\"", entry.summary);
    body += verdict(entry);
    body += "<h2>Why it gets busy</h2>\n" + textElement("p", entry.whyHigh);
    body += whatYouCanDo(entry);
    body += codeList("Names it runs under", entry.match.names);
    body += codeList("Where it lives", entry.match.pathPrefixes);
    body += codeList("Background items", entry.match.launchdLabels);
    body += "</article>\n<nav class=\"neighbours\">\n" + neighbour(neighbours.previous, "prev") +
            neighbour(neighbours.next, "next") + "</nav>\n";
    return document(entry.title + " – Pacelet", entry.summary, root, body);
}

} // namespace pacelet::guides
