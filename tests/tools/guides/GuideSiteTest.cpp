#include "tools/guides/GuideSite.h"
#include "Core/Knowledge/CatalogFile.h"
#include "Hosts/Posix/Shell.h"
#include "tests/Support/TemporaryFolder.h"

#include <QByteArray>
#include <QXmlStreamReader>

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace pacelet::guides {
namespace {

namespace fs = std::filesystem;
using Site = std::map<std::string, std::string>;

const fs::path source = PACELET_SOURCE_DIR;
const fs::path catalog = source / "resources/processes.json";

/// What a browser makes of a document.
struct Seen {
    std::string problem; ///< why it is not well formed; empty when it is
    std::string text;    ///< all that is read, blanks as they stand
    std::set<std::string> ids;
    std::vector<std::string> links; ///< of every kind, as written
    std::set<std::string> elements;
};

Seen look(const std::string& html) {
    Seen seen;
    QXmlStreamReader reader{QByteArray::fromStdString(html)};
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isCharacters()) {
            seen.text += reader.text().toString().toStdString();
        } else if (reader.isStartElement()) {
            seen.elements.insert(reader.name().toString().toStdString());
            for (const auto& attribute : reader.attributes()) {
                const std::string value = attribute.value().toString().toStdString();
                if (attribute.name() == QLatin1String{"id"}) {
                    EXPECT_TRUE(seen.ids.insert(value).second) << value;
                } else if (attribute.name() == QLatin1String{"href"} ||
                           attribute.name() == QLatin1String{"src"}) {
                    seen.links.push_back(value);
                }
            }
        }
    }
    seen.problem = reader.hasError() ? reader.errorString().toStdString() : "";
    return seen;
}

/// The file that a web server gives out for a link on a page.
std::string target(const std::string& page, const std::string& link) {
    const fs::path path = (fs::path{page}.parent_path() / link).lexically_normal();
    return path.has_filename() ? path.string() : (path / "index.html").string();
}

/// Looks at every page, and that all links lead to what is there.
std::map<std::string, Seen> lookAll(const Site& site) {
    std::map<std::string, Seen> pages;
    for (const auto& [name, html] : site) {
        EXPECT_TRUE(html.starts_with("<!DOCTYPE html>\n")) << name;
        const Seen& seen = pages[name] = look(html);
        EXPECT_EQ(seen.problem, "") << name;
        EXPECT_EQ(seen.elements.count("script"), 0U) << name;
        for (const std::string& link : seen.links) {
            EXPECT_TRUE(link.starts_with('#') ? seen.ids.contains(link.substr(1))
                                              : site.contains(target(name, link)) ||
                                                    target(name, link) == "guides.css" ||
                                                    target(name, link) == "logo.svg")
                << name << " links to " << link;
        }
    }
    return pages;
}

TEST(GuideSite, EveryGuideOfTheCatalogHasItsPage) {
    const auto entries = CatalogFile::read(catalog);
    const Site site = guideSite(entries);
    EXPECT_EQ(site.size(), entries.size() + 1);
    EXPECT_EQ(site, guideSite(entries));
    const auto pages = lookAll(site);
    std::set<std::string> listed;
    for (const std::string& link : pages.at("index.html").links) {
        listed.insert(target("index.html", link));
    }
    for (const CatalogEntry& entry : entries) {
        const std::string name = "process/" + entry.guide + "/index.html";
        ASSERT_TRUE(pages.contains(name)) << entry.id;
        EXPECT_TRUE(listed.contains(name)) << entry.id;
        const std::string& text = pages.at(name).text;
        std::vector<std::string> said = entry.match.names;
        said.insert(said.end(), {entry.title, entry.summary, entry.whyHigh});
        said.emplace_back(label(entry.verdict));
        for (const FixID fix : entry.fixes) {
            said.push_back(fix == FixID::explain ? "" : title(fix, nullptr));
        }
        for (const std::string& words : said) {
            EXPECT_NE(text.find(words), std::string::npos) << entry.id << ": " << words;
        }
    }
}

CatalogEntry entryCalled(const std::string& title, const std::string& guide) {
    CatalogEntry entry;
    entry.id = guide;
    entry.title = title;
    entry.guide = guide;
    return entry;
}

TEST(GuideSite, TextIsNeverTakenForMarkup) {
    const std::string hostile = "</p><script>alert('x')</script> \"a\" & &amp; <!-- é 文";
    CatalogEntry entry = entryCalled(hostile, "x");
    entry.summary = entry.whyHigh = hostile;
    entry.match = {{hostile}, {hostile}, {hostile}};
    const Site site = guideSite(std::vector{entry, entryCalled("b\x01\x1b[0m\xff\n", "y")});
    const auto pages = lookAll(site);
    const std::string& text = pages.at("process/x/index.html").text;
    std::size_t count = 0;
    for (std::size_t at = text.find(hostile); at != text.npos; at = text.find(hostile, at + 1)) {
        ++count;
    }
    // Title twice, summary, reason and one name of each kind.
    EXPECT_EQ(count, 7U);
    EXPECT_NE(pages.at("process/y/index.html").text.find("b  [0m\xEF\xBF\xBD "), text.npos);
}

TEST(GuideSite, TheListIsAlphabeticalAndPagesFollowIt) {
    const Site site = guideSite(std::vector{
        entryCalled("mail", "a"), entryCalled("Zoom", "b"), entryCalled("1Password", "c"),
        entryCalled("Mail", "e"), entryCalled("No page", ""), entryCalled("\xC3\x89tude", "d")});
    const auto pages = lookAll(site);
    EXPECT_EQ(site.size(), 6U);
    std::vector<std::string> order;
    for (const std::string& link : pages.at("index.html").links) {
        if (link.starts_with("process/")) {
            order.push_back(link.substr(8, 1));
        }
    }
    EXPECT_THAT(order, ::testing::ElementsAre("c", "d", "e", "a", "b"));
    EXPECT_THAT(pages.at("process/e/index.html").links,
                ::testing::IsSupersetOf({"../c/", "../a/"}));
    EXPECT_THAT(pages.at("index.html").links, ::testing::IsSupersetOf({"#other", "#M", "#Z"}));
}

TEST(GuideSite, NoPageLeavesItsFolder) {
    for (const char* guide :
         {"..", ".hidden", "a/b", "../../x", "a b", "%2e", "a\\b", "\xC3\xA4"}) {
        EXPECT_THROW(guideSite(std::vector{entryCalled("a", guide)}), GuideError) << guide;
    }
    EXPECT_THROW(guideSite(std::vector{entryCalled("a", "x"), entryCalled("b", "x")}), GuideError);
    EXPECT_EQ(lookAll(guideSite({})).size(), 1U);
}

TEST(GuideSite, TheStyleHasTheColoursOfTheProgramAndNothingFromElsewhere) {
    const auto fileText = [](const fs::path& path) {
        std::ostringstream text;
        text << std::ifstream{path}.rdbuf();
        return text.str();
    };
    const std::string style = fileText(source / "tools/guides/guides.css");
    const std::string theme = fileText(source / "PaceletApp/Components/Theme.qml");
    EXPECT_EQ(style.find("url("), style.npos);
    EXPECT_EQ(style.find("@import"), style.npos);
    const std::regex colour{"#[0-9A-Fa-f]{3,8}\\b"};
    for (std::sregex_iterator at{style.begin(), style.end(), colour}, end; at != end; ++at) {
        EXPECT_NE(theme.find('"' + at->str() + '"'), theme.npos) << at->str();
    }
}

TEST(GuideTool, WritesTheSiteOrSaysWhyNot) {
    const testing::TemporaryFolder folder;
    const std::string tool = PACELET_BIN_DIR "/pacelet-guides";
    const std::string style = source / "tools/guides/guides.css";
    const std::string logo = source / "resources/icons/pacelet.svg";
    const std::string out = folder.path() / "site";
    EXPECT_EQ(Shell::run(tool, {catalog, style, logo, out}).status, 0);
    EXPECT_EQ(folder.read("site/index.html"),
              guideSite(CatalogFile::read(catalog)).at("index.html"));
    EXPECT_TRUE(fs::exists(out + "/process/kernel-task/index.html"));
    EXPECT_TRUE(fs::exists(out + "/guides.css") && fs::exists(out + "/logo.svg"));

    EXPECT_EQ(Shell::run(tool, {catalog, out}).status, 2);
    const std::string broken = folder.write("broken.json", "[{}]");
    const auto refused = Shell::run(tool, {broken, style, logo, out});
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.stderr.find("entry 0"), std::string::npos) << refused.stderr;
    EXPECT_EQ(Shell::run(tool, {catalog, style, logo, broken + "/site"}).status, 1);
}

} // namespace
} // namespace pacelet::guides
