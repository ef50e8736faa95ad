#pragma once

#include "Hosts/Linux/LinuxHost.h"
#include "PaceletApp/AppPreferences/AppPreferences.h"
#include "PaceletApp/Application/Application.h"
#include "PaceletApp/BrowserPanel/BrowserPanelModel.h"
#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/Router/Router.h"
#include "PaceletApp/Scheduler/RealScheduler.h"
#include "tests/PaceletApp/Support/WindowProbe.h"
#include "tests/browser/RealBrowser.h"
#include "tools/session/Session.h"

#include <QQuickWindow>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace pacelet::testing {

constexpr auto chromium = ChromiumBrowser::chromium;

/// The program as the user has it, on this machine, with its window.
class Running {
public:
    explicit Running(const Linux::LinuxSettings& settings)
        : host{settings},
          scheduler{host.clock()},
          application{host.platform(), scheduler, Session::bundledCatalog()} {
        application.preferences().setOnboarded(true);
        application.setWishes({.reducedMotion = true});
        application.start();
        application.showWindow();
        probe.emplace(*application.window());
        host.platform().preferences.setBoolean(
            "primer.automation." + std::string{rawValue(chromium)}, true);
        application.router().setBrowser(chromium);
    }

    BrowserPanelModel* panel() {
        auto* const root = application.window()->property("model").value<RootModel*>();
        return qobject_cast<BrowserPanelModel*>(root->sheet()->content());
    }

    QuestionModel* question() {
        return application.window()->property("model").value<RootModel*>()->question();
    }

    bool comesUp(const std::string& text) {
        return comesTrue([&] { return probe->shows(text); });
    }

    /// Nothing is under way any more.
    bool rests() {
        return comesTrue([&] { return panel()->phaseName() != u"loading" && !panel()->working(); });
    }

    /// Presses the button once it is there, and laid out.
    bool press(const char* button) {
        const bool isThere = comesUp(button);
        if (isThere) {
            application.window()->grabWindow();
            probe->clickText(button);
        }
        return isThere;
    }

    /// Presses the button, agrees to what is asked, and waits for the end. A question that follows
    /// another one takes no answer at first.
    bool act(const char* button, const char* agreement) {
        return press(button) &&
               comesTrue([&] { return !question()->isOpen() || !press(agreement); }) && rests();
    }

    std::vector<OpenPage> listed() {
        std::vector<OpenPage> pages;
        for (const BrowserWindow& window : panel()->windows()) {
            for (const BrowserTab& tab : window.tabs) {
                if (tab.url.starts_with("http")) {
                    pages.emplace_back(tab.url, tab.title);
                }
            }
        }
        std::sort(pages.begin(), pages.end());
        return pages;
    }

    /// Reads the tabs until the list is what it should be: pages may still be on their way.
    template<typename Pages>
    bool lists(Pages pages) {
        return comesTrue([&] {
            if (panel()->phaseName() == u"loaded" && listed() == pages()) {
                return true;
            }
            if (panel()->phaseName() != u"loading" && !panel()->working()) {
                panel()->load();
            }
            return false;
        });
    }

    Linux::LinuxHost host;
    RealScheduler scheduler;
    Application application;
    std::optional<WindowProbe> probe;
};

} // namespace pacelet::testing
