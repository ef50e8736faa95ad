#include "Hosts/Linux/Desktop/QuitOverBus.h"
#include "tests/Hosts/Linux/Systemd/PlayedServices.h"
#include "tests/Hosts/Linux/Systemd/PrivateBus.h"
#include "tests/Support/Eventually.h"

#include <array>
#include <gtest/gtest.h>
#include <unistd.h>

namespace pacelet::Linux {
namespace {

constexpr std::chrono::seconds patience{20};

TEST(QuitOverBus, SendsTheRequestThatTheApplicationKnows) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    const pacelet::testing::TemporaryFolder folder;
    folder.write("org.example.Pad.desktop",
                 "[Desktop Entry]\nType=Application\nName=Pad\nExec=pad\nActions=new;quit;\n");
    DesktopPlaces places;
    places.entryFolders = {folder.path().string()};
    struct Application {
        const char* name;
        pacelet::testing::PlayedAnswers answers;
        bool canBeAsked;
        const char* sent; ///< empty: nothing
    };
    const std::string introspect = "org.freedesktop.DBus.Introspectable.Introspect";
    const Application applications[] = {
        {"org.example.Draw",
         {{"org.gtk.Actions.List", "as:quit"}},
         true,
         "org.gtk.Actions.Activate(quit) "},
        {"org.example.Draw", {{"org.gtk.Actions.List", "as:quit-later"}}, false, ""},
        {"", {{"org.gtk.Actions.List", "as:quit"}}, true, "org.gtk.Actions.Activate(quit) "},
        {"org.example.Pad", {}, true, "org.freedesktop.Application.ActivateAction(quit) "},
        {"org.kde.kate-4711",
         {{"org.kde.KMainWindow.actionIsEnabled", "true"}},
         true,
         "org.kde.KMainWindow.activateAction(file_quit) "},
        {"org.kde.kate-4711", {{"org.kde.KMainWindow.actionIsEnabled", "false"}}, false, ""},
        {"org.mpris.MediaPlayer2.tune",
         {{"org.freedesktop.DBus.Properties.Get", "v:true"}},
         true,
         "org.mpris.MediaPlayer2.Quit "},
        // It ends in good order, but may ask nobody.
        {"org.example.qt",
         {{introspect, "s:<interface name=\"org.qtproject.Qt.QCoreApplication\">"}},
         false,
         "org.qtproject.Qt.QCoreApplication.quit "},
    };
    for (const Application& application : applications) {
        const std::string name = application.name; // several copies of one have none
        pacelet::testing::PlayedServices services{
            name.empty() ? std::vector<std::string>{} : std::vector{name}, application.answers};
        const std::array nobody{1};
        const std::array ours{static_cast<std::int32_t>(::getpid())};
        EXPECT_FALSE(quitOverBus("org.example.Pad.Other", nobody, places, Asking::send, patience));
        EXPECT_EQ(services.calls(), "") << "of another application";
        EXPECT_EQ(quitOverBus("org.example.Pad", ours, places, Asking::look, patience),
                  application.canBeAsked)
            << application.name;
        const std::string looked = services.calls();
        const std::string_view sent = application.sent;
        EXPECT_EQ(quitOverBus("org.example.Pad", ours, places, Asking::send, patience),
                  !sent.empty());
        pacelet::testing::eventually(
            [&] { return services.calls() == looked + looked + std::string{sent}; });
        EXPECT_EQ(services.calls(), looked + looked + std::string{sent});
    }
}

TEST(QuitOverBus, LeavesAProgramThatHangsToItsUser) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    const Bus silent = openBus(BusKind::user, patience);
    const std::array ours{static_cast<std::int32_t>(::getpid())};
    for (const Asking asking : {Asking::look, Asking::send}) {
        EXPECT_TRUE(quitOverBus("org.example.Pad", ours, {}, asking, std::chrono::seconds{1}));
    }
    const pacelet::testing::PlayedServices beside{{}, {}};
    EXPECT_FALSE(quitOverBus("org.example.Pad", ours, {}, Asking::look, std::chrono::seconds{3}));
}

} // namespace
} // namespace pacelet::Linux
