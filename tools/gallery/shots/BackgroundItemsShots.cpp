#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

std::vector<Shot> backgroundItemsShots() {
    return {
        {"background-items", "quiet", watching(Screen::backgroundItems)},
        {"background-items-narrow",
         "virtual-machine",
         watching(Screen::backgroundItems),
         {1000, 700}},
        {"background-items-none", "fresh-install", watching(Screen::backgroundItems)},
    };
}

} // namespace pacelet::gallery
