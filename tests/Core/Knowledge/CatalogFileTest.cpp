#include "Core/Knowledge/CatalogFile.h"
#include "Core/Knowledge/ProcessCatalog.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace pacelet {
namespace {

const std::string whole = R"({"id": "a", "match": {"names": ["n"], "pathPrefixes": ["/p"],
    "launchdLabels": ["l"], "more": 1}, "title": "T", "summary": "S.", "whyHigh": "W.",
    "verdict": "review", "idleNote": "I", "fixes": ["explain", "quitApp"], "guide": "g",
    "symbol": "cpu", "unknown": {"x": [18446744073709551616, -1e999]}})";

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(CatalogFile, ReadsEveryField) {
    const auto entries = CatalogFile::decode("[" + whole + "]");
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0], (CatalogEntry{"a",
                                        {{"n"}, {"/p"}, {"l"}},
                                        "T",
                                        "S.",
                                        "W.",
                                        Verdict::review,
                                        "I",
                                        {FixID::explain, FixID::quitApp},
                                        "g",
                                        "cpu"}));
    EXPECT_TRUE(CatalogFile::decode("\xEF\xBB\xBF[]").empty()) << "behind a byte order mark";
}

TEST(CatalogFile, TakesNullAndAbsenceOfOptionalKeysAlike) {
    for (const std::string& file :
         {replaced(replaced(whole, "\"idleNote\": \"I\",", ""), ",\n    \"symbol\": \"cpu\"", ""),
          replaced(replaced(whole, "\"I\"", "null"), "\"cpu\"", "null")}) {
        const auto entries = CatalogFile::decode("[" + file + "]");
        EXPECT_EQ(entries.at(0).idleNote, std::nullopt);
        EXPECT_EQ(entries.at(0).symbol, std::nullopt);
    }
}

TEST(CatalogFile, OneBadEntryFailsTheWholeFile) {
    std::vector<std::string> bad{"", "{}", "[", "[1]", "[" + whole + ",]"};
    for (const auto& [what, instead] : testing::rows<2>("Knowledge", "faults of a catalog entry")) {
        bad.push_back("[" + whole + "," + replaced(whole, what, instead) + "]");
    }
    for (const std::string& file : bad) {
        try {
            CatalogFile::decode(file);
            ADD_FAILURE() << "was accepted: " << file;
        } catch (const CatalogError& error) {
            EXPECT_EQ(error.kind(), CatalogError::Kind::undecodable);
        }
    }
}

class CatalogLocations : public ::testing::Test {
protected:
    CatalogLocations() {
        std::filesystem::create_directories(main);
        std::filesystem::create_directories(bundle);
    }

    CatalogError::Kind failure() const {
        try {
            ProcessCatalog::bundled(locations);
        } catch (const CatalogError& error) {
            return error.kind();
        }
        throw std::logic_error{"the catalog loaded"};
    }

    const testing::TemporaryFolder folder;
    const std::filesystem::path main = folder.path() / "share/pacelet";
    const std::filesystem::path bundle = folder.path() / "bin/Pacelet_Core.bundle";
    const ResourceLocations locations = ResourceLocations::beside(folder.path() / "bin");
};

TEST_F(CatalogLocations, TriesTheMainFolderFirst) {
    folder.write("bin/Pacelet_Core.bundle/processes.json", "[" + whole + "]");
    EXPECT_EQ(ProcessCatalog::bundled(locations).entries.size(), 1U);
    folder.write("share/pacelet/processes.json", "[]");
    EXPECT_TRUE(ProcessCatalog::bundled(locations).entries.empty());
    std::filesystem::remove_all(bundle);
    EXPECT_TRUE(ProcessCatalog::bundled(locations).entries.empty());
}

TEST_F(CatalogLocations, TellsWhyItCannotLoad) {
    EXPECT_EQ(failure(), CatalogError::Kind::notFound);
    folder.write("bin/Pacelet_Core.bundle/processes.json", "rubbish");
    EXPECT_EQ(failure(), CatalogError::Kind::undecodable);
    std::filesystem::create_directory(main / "processes.json"); // a folder cannot be read as a file
    EXPECT_EQ(failure(), CatalogError::Kind::unreadable);
    std::filesystem::remove_all(folder.path());
    EXPECT_DEATH(ProcessCatalog::bundled(locations), "unable to find bundle named Pacelet_Core");
}

} // namespace
} // namespace pacelet
