#include "tools/gallery/Arguments.h"

#include "Core/Support/Text.h"

#include <fmt/format.h>

namespace pacelet::gallery {

namespace {

constexpr double leastScale = 0.5;
constexpr double mostScale = 4;
constexpr std::string_view usage =
    "usage: pacelet-gallery DIR [--scale N] [--only PREFIX] [--scenario NAME | --scenario FILE]";

} // namespace

std::variant<Arguments, Complaint> parse(std::span<const std::string_view> words) {
    Arguments arguments;
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::string_view word = words[index];
        if (word == "--scale" || word == "--only" || word == "--scenario") {
            if (index + 1 == words.size()) {
                return Complaint{fmt::format("{} needs a value; {}", word, usage)};
            }
            const std::string_view value = words[++index];
            if (word != "--scale") {
                (word == "--only" ? arguments.only : arguments.scenario) = value;
                continue;
            }
            const auto scale = parseFloat(value);
            if (!scale || !(*scale >= leastScale && *scale <= mostScale)) {
                return Complaint{
                    fmt::format("\"{}\" is no scale from {} to {}", value, leastScale, mostScale)};
            }
            arguments.scale = *scale;
        } else if (word.starts_with('-')) {
            return Complaint{fmt::format("unknown option \"{}\"; {}", word, usage)};
        } else if (!arguments.folder.empty()) {
            return Complaint{fmt::format("one folder is enough; {}", usage)};
        } else {
            arguments.folder = word;
        }
    }
    if (arguments.folder.empty()) {
        return Complaint{std::string{usage}};
    }
    return arguments;
}

} // namespace pacelet::gallery
