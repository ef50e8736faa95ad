#include "Core/Knowledge/CatalogFile.h"
#include "PaceletApp/Components/AppIconProvider.h"
#include "PaceletApp/Components/Look.h"
#include "PaceletApp/Components/SymbolProvider.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/Support/FakeWorkspace.h"

#include <QBuffer>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

#include <gmock/gmock.h>

#include <atomic>
#include <set>

namespace pacelet {
namespace {

/// Every glyph that a .qml file of the application names.
std::set<std::string> namedInSources() {
    const QRegularExpression property{R"re((?:symbol|name)\w*:[^\n]*)re"};
    const QRegularExpression quoted{R"re("([a-z0-9.]+)")re"};
    std::set<std::string> names;
    QDirIterator files{
        PACELET_SOURCE_DIR "/PaceletApp", {"*.qml"}, QDir::Files, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        QFile file{files.next()};
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        auto lines = property.globalMatch(QString::fromUtf8(file.readAll()));
        while (lines.hasNext()) {
            auto words = quoted.globalMatch(lines.next().captured());
            while (words.hasNext()) {
                names.insert(words.next().captured(1).toStdString());
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
    for (const CatalogEntry& entry :
         CatalogFile::read(PACELET_SOURCE_DIR "/resources/processes.json")) {
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
    const Table<QString, QSize, QSize, QRgb> cases = {
        {QStringLiteral("circle.fill?f87171"), {24, 24}, {24, 24}, qRgb(0xf8, 0x71, 0x71)},
        {QStringLiteral("circle.fill"), {}, {16, 16}, qRgb(255, 255, 255)},
        {QStringLiteral("circle.fill?nonsense"), {40, 20}, {40, 20}, qRgb(255, 255, 255)},
    };
    for (const auto& [id, asked, given, color] : cases) {
        QSize size;
        const QImage image = SymbolProvider{}.requestImage(id, &size, asked);
        EXPECT_EQ(image.size(), given);
        EXPECT_EQ(size, given);
        int opaque = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 255) {
                    ++opaque;
                    EXPECT_EQ(image.pixel(x, y), color);
                }
            }
        }
        EXPECT_GT(opaque, 10);
        EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    }
}

class IconsOnly final : public testing::FakeWorkspace {
public:
    std::optional<EncodedImage> icon(const std::string& path, int) override {
        ++asked;
        if (path == "/Applications/Plain.app") {
            return std::nullopt;
        }
        if (path == "/Applications/Broken.app") {
            return EncodedImage{{std::byte{1}, std::byte{2}}};
        }
        QImage image{64, 64, QImage::Format_RGB32};
        image.fill(Qt::red);
        QBuffer buffer;
        image.save(&buffer, "PNG");
        const auto* bytes = reinterpret_cast<const std::byte*>(buffer.data().constData());
        return EncodedImage{{bytes, bytes + buffer.size()}};
    }

    std::atomic<int> asked = 0;
};

TEST(ProcessIcon, showsTheIconOrElseATileAndAsksForNothingItDoesNotNeed) {
    const Table<const char*, bool, int> cases = {{"", false, 0},
                                                 {"/Applications/Plain.app", false, 1},
                                                 {"/Applications/Broken.app", false, 1},
                                                 {"/Applications/50% Ä & B?#.app", true, 1}};
    for (const auto& each : cases) {
        const auto& [path, hasIcon, asked] = each;
        IconsOnly workspace;
        Stage stage{"Loader { objectName: \"loader\"; sourceComponent: ProcessIcon {} }"};
        AppIconProvider::install(stage.engine(), workspace);
        auto* const icon = stage.property("loader", "item").value<QObject*>();
        icon->setProperty("appPath", QString::fromUtf8(path));
        const auto isAsExpected = [&, expected = hasIcon] {
            return (stage.view().grabWindow().pixel(3, 17) == qRgb(255, 0, 0)) == expected;
        };
        EXPECT_TRUE(QTest::qWaitFor(isAsExpected));
        QTest::qWait(50);
        EXPECT_TRUE(isAsExpected()) << path;
        EXPECT_EQ(workspace.asked, asked);
    }
}

} // namespace
} // namespace pacelet
