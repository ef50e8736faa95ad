#include "Core/Knowledge/CatalogFile.h"

#include "Core/Knowledge/ProcessCatalog.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace pacelet {
namespace {

const std::string whole = R"({"id": "a", "match": {"names": ["n"], "pathPrefixes": ["/p"],
    "launchdLabels": ["l"], "more": 1}, "title": "T", "summary": "S.", "whyHigh": "W.",
    "verdict": "review", "idleNote": "I", "fixes": ["explain", "quitApp"], "guide": "g",
    "symbol": "cpu", "unknown": {"x": []}})";

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
    EXPECT_TRUE(CatalogFile::decode("[]").empty());
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
    const std::vector<std::string> bad{
        "",
        "{}",
        "[",
        "[1]",
        "[" + whole + ",]",
        "[" + replaced(whole, "\"id\": \"a\",", "") + "]",
        "[" + replaced(whole, "\"review\"", "\"maybe\"") + "]",
        "[" + replaced(whole, "\"quitApp\"", "\"quitEverything\"") + "]",
        "[" + replaced(whole, "\"quitApp\"", "7") + "]",
        "[" + replaced(whole, "\"T\"", "7") + "]",
        "[" + replaced(whole, "\"T\"", "null") + "]",
        "[" + replaced(whole, "\"cpu\"", "[]") + "]",
        "[" + replaced(whole, "\"names\": [\"n\"],", "") + "]",
        "[" + replaced(whole, "[\"n\"]", "\"n\"") + "]",
        "[" + whole + "," + replaced(whole, "\"guide\": \"g\",", "") + "]",
        "[" + replaced(whole, "\"S.\"", "\"\xFF\"") + "]",
    };
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
    void SetUp() override {
        std::filesystem::create_directories(main);
        std::filesystem::create_directories(bundle);
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    static void write(const std::filesystem::path& place, const std::string& text) {
        std::ofstream{place / "processes.json"} << text;
    }
    CatalogError::Kind failure() const {
        try {
            ProcessCatalog::bundled({main, bundle});
        } catch (const CatalogError& error) {
            return error.kind();
        }
        throw std::logic_error{"the catalog loaded"};
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("pacelet-catalog-" + std::to_string(::getpid()));
    const std::filesystem::path main = folder / "main";
    const std::filesystem::path bundle = folder / "Pacelet_Core.bundle";
};

TEST_F(CatalogLocations, TriesTheMainFolderFirst) {
    write(bundle, "[" + whole + "]");
    EXPECT_EQ((ProcessCatalog::bundled({main, bundle}).entries.size()), 1U);
    write(main, "[]");
    EXPECT_TRUE((ProcessCatalog::bundled({main, bundle}).entries.empty()));
    std::filesystem::remove_all(bundle);
    EXPECT_TRUE((ProcessCatalog::bundled({main, bundle}).entries.empty()));
}

TEST_F(CatalogLocations, TellsWhyItCannotLoad) {
    EXPECT_EQ(failure(), CatalogError::Kind::notFound);
    write(bundle, "rubbish");
    EXPECT_EQ(failure(), CatalogError::Kind::undecodable);
    std::filesystem::create_directory(main / "processes.json"); // a folder cannot be read as a file
    EXPECT_EQ(failure(), CatalogError::Kind::unreadable);
    std::filesystem::remove_all(folder);
    EXPECT_DEATH(ProcessCatalog::bundled({main, bundle}),
                 "unable to find bundle named Pacelet_Core");
}

} // namespace
} // namespace pacelet
