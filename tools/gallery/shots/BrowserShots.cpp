#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"
#include "tools/gallery/shots/Shot.h"

#include <optional>

namespace pacelet::gallery {

namespace {

constexpr auto browser = ChromiumBrowser::chrome;

using Step = std::function<void(Session&)>;

/// Opens the sheet of a user who has accepted its explanation before; it reads the tabs then.
void openSheet(Session& session) {
    session.open(Screen::overview);
    session.pass(10);
    session.mac().preferences.setBoolean("primer.automation." + std::string{rawValue(browser)},
                                         true);
    session.application().router().setBrowser(browser);
}

void showTabs(Session& session) {
    openSheet(session);
    session.pass(0);
}

Step failing(const Simulated::Failure& failure) {
    return [failure](Session& session) {
        session.mac().machine.inject(failure);
        showTabs(session);
    };
}

/// What the user does with the tabs.
Step acting(const std::function<void(BrowserPanelModel&)>& act) {
    return [act](Session& session) {
        showTabs(session);
        auto* const root = session.application().window()->property("model").value<RootModel*>();
        act(*qobject_cast<BrowserPanelModel*>(root->sheet()->content()));
        session.pass(0);
    };
}

void selectSome(BrowserPanelModel& model) {
    for (const int row : {2, 3, 5}) {
        model.select(row, true);
    }
}

Simulated::Browser& chrome(Simulated::World& world) {
    return world.browsers.at(std::string{rawValue(browser)});
}

void closeAllWindows(Session& session) {
    chrome(*session.mac().machine.lock()).windows.clear();
    showTabs(session);
}

/// Titles and profiles that know no bounds, in several scripts.
void nameWithoutMercy(Session& session) {
    {
        const auto world = session.mac().machine.lock();
        auto& windows = chrome(*world).windows;
        windows.resize(3);
        windows[0].profile = windows[1].profile = "Work of " + std::string(120, 'w');
        windows[2].profile = "مشروع جانبي";
        windows[0].tabs.resize(5);
        windows[0].activeTab = 1;
        windows[0].tabs[0].title = std::string(300, 'M');
        windows[0].tabs[1].title = "تقرير الربع الأول - النسخة النهائية";
        windows[0].tabs[2].title = "🎉 Ideas 👩‍👩‍👧‍👦 and 🧪 experiments";
        windows[0].tabs[3].title = "四半期の数字";
        windows[0].tabs[4].title = "";
        windows[0].tabs[4].url = "https://" + std::string(200, 'a') + ".example.com/?q=1";
    }
    acting([](BrowserPanelModel& model) { model.select(1, true); })(session);
}

} // namespace

std::vector<Shot> browserShots() {
    const Simulated::ScriptFails scriptFails{
        -1728, "Google Chrome got an error: Can’t get window id 1000000017."};
    return {
        {"browser-primer", "chrome-tabs",
         [](Session& session) {
             watching(Screen::overview, 10)(session);
             session.application().router().setBrowser(browser);
             session.pass(0);
         }},
        {"browser-loading", "chrome-tabs", openSheet},
        {"browser-tabs", "chrome-tabs", showTabs},
        {"browser-tabs-narrow", "chrome-tabs", acting(selectSome), leastSize},
        {"browser-close", "chrome-tabs",
         acting([](BrowserPanelModel& model) { model.closeDuplicates(); })},
        {"browser-merge", "chrome-tabs", acting([](BrowserPanelModel& model) { model.merge(); })},
        {"browser-long", "chrome-tabs", nameWithoutMercy, leastSize, {}, true},
        {"browser-no-tabs", "chrome-tabs", closeAllWindows},
        {"browser-not-permitted", "chrome-tabs",
         failing(Simulated::AutomationRefused{std::string{rawValue(browser)}})},
        {"browser-not-running", "quiet", showTabs},
        {"browser-failed", "chrome-tabs", failing(scriptFails)},
    };
}

} // namespace pacelet::gallery
