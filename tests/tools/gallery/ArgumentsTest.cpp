#include "tools/gallery/Arguments.h"
#include "Core/Support/Text.h"
#include "tests/Support/Table.h"

#include <gtest/gtest.h>

#include <vector>

namespace pacelet::gallery {
namespace {

TEST(GalleryArguments, takeAFolderAndOptionsInAnyOrder) {
    const std::vector<std::string_view> words{"--scale",  "1.5",        "out", "--only",
                                              "overview", "--scenario", "hot"};
    const auto arguments = std::get<Arguments>(parse(words));
    EXPECT_EQ(arguments.folder, "out");
    EXPECT_EQ(arguments.scale, 1.5);
    EXPECT_EQ(arguments.only, "overview");
    EXPECT_EQ(arguments.scenario, "hot");
}

TEST(GalleryArguments, anythingElseIsOneLineOfComplaint) {
    for (const auto& [line] : testing::rows<1>("Tools", "arguments that no gallery takes")) {
        const auto result = parse(splitDroppingEmpty(line, ' '));
        ASSERT_TRUE(std::holds_alternative<Complaint>(result));
        const std::string& text = std::get<Complaint>(result).text;
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(text.find('\n'), std::string::npos);
    }
}

} // namespace
} // namespace pacelet::gallery
