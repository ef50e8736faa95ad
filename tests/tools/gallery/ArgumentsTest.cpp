#include "tools/gallery/Arguments.h"

#include <gtest/gtest.h>

#include <vector>

namespace pacelet::gallery {
namespace {

TEST(GalleryArguments, takeAFolderAndOptionsInAnyOrder) {
    const std::vector<std::string_view> words{"--scale", "1.5", "out", "--only", "overview",
                                              "--scenario", "hot"};
    const auto arguments = std::get<Arguments>(parse(words));
    EXPECT_EQ(arguments.folder, "out");
    EXPECT_EQ(arguments.scale, 1.5);
    EXPECT_EQ(arguments.only, "overview");
    EXPECT_EQ(arguments.scenario, "hot");
}

TEST(GalleryArguments, anythingElseIsOneLineOfComplaint) {
    const std::vector<std::vector<std::string_view>> bad{
        {},
        {"a", "b"},
        {"a", "--scale"},
        {"a", "--scale", "0"},
        {"a", "--scale", "nan"},
        {"a", "--scale", "2x"},
        {"a", "--fast"},
        {"--only", "x"},
    };
    for (const auto& words : bad) {
        const auto result = parse(words);
        ASSERT_TRUE(std::holds_alternative<Complaint>(result));
        const std::string& text = std::get<Complaint>(result).text;
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(text.find('\n'), std::string::npos);
    }
}

} // namespace
} // namespace pacelet::gallery
