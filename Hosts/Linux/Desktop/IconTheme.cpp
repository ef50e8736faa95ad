#include "Hosts/Linux/Desktop/IconTheme.h"

#include "Hosts/Linux/Desktop/KeyFile.h"

#include <algorithm>
#include <optional>

namespace pacelet::Linux {

namespace {

/// No picture is wider; larger figures are taken for this one.
constexpr int mostPixels = 1 << 14;
constexpr int mostScale = 16;
constexpr int standardThreshold = 2;

/// A group of the file as it stands.
struct FolderGroup {
    std::string_view name;
    std::string_view type = "Threshold";
    std::optional<int> size;
    std::optional<int> smallest;
    std::optional<int> largest;
    int threshold = standardThreshold;
    int scale = 1;
};

int pixels(std::string_view value) {
    return std::clamp(parseInteger<int>(value).value_or(0), 0, mostPixels);
}

void assign(FolderGroup& group, std::string_view key, std::string_view value) {
    if (key == "Type") {
        group.type = value;
    } else if (key == "Size") {
        group.size = pixels(value);
    } else if (key == "MinSize") {
        group.smallest = pixels(value);
    } else if (key == "MaxSize") {
        group.largest = pixels(value);
    } else if (key == "Threshold") {
        group.threshold = pixels(value);
    } else if (key == "Scale") {
        group.scale = std::clamp(pixels(value), 1, mostScale);
    }
}

void addFolder(const FolderGroup& group, IconTheme& theme) {
    if (!group.size || *group.size == 0) {
        return;
    }
    int smallest = *group.size;
    int largest = *group.size;
    if (group.type == "Scalable") {
        smallest = std::min(group.smallest.value_or(smallest), smallest);
        largest = std::max(group.largest.value_or(largest), largest);
    } else if (group.type != "Fixed") {
        smallest -= group.threshold;
        largest += group.threshold;
    }
    smallest = std::max(1, smallest);
    theme.folders.push_back(
        {std::string{group.name}, smallest * group.scale, largest * group.scale});
}

} // namespace

int IconFolder::distance(int size) const {
    return std::max({0, smallest - size, size - largest});
}

IconTheme parseIconTheme(std::string_view text) {
    IconTheme theme;
    FolderGroup current;
    forEachKey(text, [&](std::string_view group, std::string_view key, std::string_view value) {
        if (group == "Icon Theme") {
            if (key == "Inherits") {
                const auto names = splitDroppingEmpty(value, ',');
                theme.inherits.assign(names.begin(), names.end());
            }
            return;
        }
        if (group != current.name) {
            addFolder(current, theme);
            current = {group};
        }
        assign(current, key, value);
    });
    addFolder(current, theme);
    return theme;
}

} // namespace pacelet::Linux
