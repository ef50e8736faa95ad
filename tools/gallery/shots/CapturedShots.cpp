#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

namespace {

Shot captured(std::string name, Screen screen, const std::string& file) {
    return {.name = std::move(name),
            .scenario = {},
            .drive = watching(screen, 20),
            .capture = PACELET_CAPTURES "/" + file};
}

} // namespace

std::vector<Shot> capturedShots() {
    return {
        captured("captured-runaway", Screen::overview, "runaway"),
        captured("captured-quiet", Screen::overview, "quiet"),
        captured("captured-processes", Screen::processes, "compiling"),
        captured("captured-items", Screen::backgroundItems, "compiling"),
    };
}

} // namespace pacelet::gallery
