#include "PaceletApp/SettingsView/SettingsModel.h"
#include "tools/gallery/shots/Shot.h"

namespace pacelet::gallery {

namespace {

void firstRun(Session& session) {
    session.application().preferences().setOnboarded(false);
    watching(Screen::overview)(session);
}

void openMenu(Session& session) {
    watching(Screen::overview)(session);
    auto* const button = session.application().window()->findChild<QObject*>("menu button");
    QMetaObject::invokeMethod(button, "clicked");
    session.pass(0);
}

Shot settings(std::string name, const std::function<void(SettingsModel&)>& act = {}) {
    return {.name = std::move(name),
            .scenario = "quiet",
            .drive =
                [act](Session& session) {
                    session.application().showSettings();
                    session.pass(0);
                    if (act) {
                        auto* const window = session.application().settings();
                        act(*window->property("model").value<SettingsModel*>());
                        session.pass(0);
                    }
                },
            .size = {},
            .window = &Application::settings};
}

} // namespace

std::vector<Shot> settingsShots() {
    return {
        {"onboarding", "quiet", firstRun},
        {"menu", "quiet", openMenu},
        settings("settings"),
        settings("settings-question", [](SettingsModel& model) { model.askClear(); }),
        settings("settings-cleared", [](SettingsModel& model) { model.clearHistory(); }),
        settings("settings-without-history",
                 [](SettingsModel& model) { model.setKeepHistory(false); }),
    };
}

} // namespace pacelet::gallery
