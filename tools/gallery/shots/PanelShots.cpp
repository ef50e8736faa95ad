#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

namespace {

Shot panelShot(std::string name, std::string scenario, double seconds) {
    return {.name = std::move(name),
            .scenario = std::move(scenario),
            .drive =
                [seconds](Session& session) {
                    session.pass(seconds);
                    session.application().openPanel({});
                    session.pass(seconds > 0 ? 2 : 0);
                },
            .size = {},
            .window = &Application::panel};
}

} // namespace

std::vector<Shot> panelShots() {
    return {
        panelShot("panel-quiet", "quiet", 30),
        panelShot("panel-struggling", "virtual-machine", 90),
        panelShot("panel-spotlight", "spotlight-after-update", 60),
    };
}

} // namespace pacelet::gallery
