#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Components/SymbolProvider.h"

#include "Core/Knowledge/CatalogFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

namespace pacelet {
namespace {

const std::filesystem::path source{PACELET_SOURCE_DIR};

std::string contents(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream{file}.rdbuf();
    return text.str();
}

/// Every glyph that a .qml file or a C++ table of the application names.
std::set<std::string> namedInSources() {
    const std::regex inQml{
        R"re((?:symbol|name)\w*:[^"\n]*"([a-z0-9.]+)"(?:[^"\n]*"([a-z0-9.]+)")?)re"};
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{source / "PaceletApp"}) {
        if (entry.path().extension() != ".qml") {
            continue;
        }
        const std::string text = contents(entry.path());
        for (std::sregex_iterator match{text.begin(), text.end(), inQml}, end; match != end;
             ++match) {
            for (const std::size_t part : {1, 2}) {
                if ((*match)[part].length() > 0) {
                    names.insert((*match)[part]);
                }
            }
        }
    }
    return names;
}

TEST(Symbols, haveAGlyphForEveryNameInUse) {
    std::set<std::string> names = namedInSources();
    EXPECT_GT(names.size(), 4U);
    for (int fix = 0; fix <= static_cast<int>(FixID::restartMac); ++fix) {
        names.emplace(symbol(static_cast<FixID>(fix)));
    }
    for (int kind = 0; kind <= static_cast<int>(FindingKind::bandwidthHog); ++kind) {
        names.emplace(symbol(static_cast<FindingKind>(kind)));
    }
    for (const Verdict verdict : {Verdict::safe, Verdict::review, Verdict::leave}) {
        names.insert(lookOf(verdict).symbol.toStdString());
    }
    for (const CatalogEntry& entry : CatalogFile::read(source / "resources" / "processes.json")) {
        if (entry.symbol) {
            names.insert(*entry.symbol);
        }
    }
    for (const std::string& name : names) {
        EXPECT_TRUE(Symbols::isKnown(QString::fromStdString(name))) << name;
    }
}

TEST(Symbols, fallBackOnTheNeutralGlyph) {
    EXPECT_FALSE(Symbols::isKnown({}));
    for (const char* name : {"", "no.such.glyph", "../icons/pacelet"}) {
        EXPECT_EQ(Symbols::image(QString::fromLatin1(name), {16, 16}, Qt::white),
                  Symbols::image(QStringLiteral("gearshape"), {16, 16}, Qt::white));
    }
}

TEST(SymbolProvider, drawsInOneColourAtTheSizeAskedFor) {
    struct Case {
        QString id;
        QSize asked;
        QSize given;
        QRgb color;
    };
    const Case cases[] = {
        {QStringLiteral("circle.fill?f87171"), {24, 24}, {24, 24}, qRgb(0xf8, 0x71, 0x71)},
        {QStringLiteral("circle.fill"), {}, {16, 16}, qRgb(255, 255, 255)},
        {QStringLiteral("circle.fill?nonsense"), {40, 20}, {40, 20}, qRgb(255, 255, 255)},
    };
    for (const Case& each : cases) {
        QSize size;
        const QImage image = SymbolProvider{}.requestImage(each.id, &size, each.asked);
        EXPECT_EQ(image.size(), each.given);
        EXPECT_EQ(size, each.given);
        int opaque = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 255) {
                    ++opaque;
                    EXPECT_EQ(image.pixel(x, y), each.color);
                }
            }
        }
        EXPECT_GT(opaque, 10);
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    }
}

} // namespace
} // namespace pacelet
