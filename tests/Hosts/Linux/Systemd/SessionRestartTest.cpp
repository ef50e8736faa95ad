#include "Hosts/Linux/Systemd/SessionRestart.h"
#include "tests/Hosts/Linux/Systemd/PlayedServices.h"
#include "tests/Hosts/Linux/Systemd/PrivateBus.h"

#include <gtest/gtest.h>

namespace pacelet::Linux {
namespace {

TEST(SessionRestart, AsksTheSessionElseTheLoginManager) {
    pacelet::testing::PrivateBus daemon;
    if (!daemon.runs()) {
        GTEST_SKIP() << "no bus daemon is installed";
    }
    struct Desktop {
        std::vector<std::string> names;
        pacelet::testing::PlayedAnswers answers;
        bool asks;
        RestartEnd end;
        std::string calls;
    };
    const std::string gnome = "org.gnome.SessionManager";
    const std::string plasma = "org.kde.ksmserver";
    const std::string xfce = "org.xfce.SessionManager";
    const std::string login = "org.freedesktop.login1";
    const std::string manager = "org.freedesktop.login1.Manager.";
    const std::string cancelled =
        "org.gtk.GDBus.UnmappedGError.Quark._g_2dio_2derror_2dquark.Code19";
    const Desktop desktops[] = {
        {{gnome, login},
         {{gnome + ".CanShutdown", "true"}, {gnome + ".Reboot", ""}},
         true,
         RestartEnd::begun,
         "org.gnome.SessionManager.CanShutdown org.gnome.SessionManager.Reboot "},
        {{gnome},
         {{gnome + ".Reboot", cancelled}},
         true,
         RestartEnd::cancelled,
         "org.gnome.SessionManager.CanShutdown org.gnome.SessionManager.Reboot "},
        // What the session forbids is not tried behind its back.
        {{gnome, login},
         {{gnome + ".CanShutdown", "false"}, {gnome + ".Reboot", ""}},
         true,
         RestartEnd::forbidden,
         "org.gnome.SessionManager.CanShutdown "},
        {{gnome}, // MATE's
         {{gnome + ".CanShutdown", "true"}, {gnome + ".Shutdown", ""}},
         true,
         RestartEnd::begun,
         "org.gnome.SessionManager.CanShutdown org.gnome.SessionManager.Reboot "
         "org.gnome.SessionManager.Shutdown "},
        {{plasma, "org.kde.LogoutPrompt"},
         {{"org.kde.LogoutPrompt.promptReboot", ""}},
         true,
         RestartEnd::begun,
         "org.kde.LogoutPrompt.promptReboot "},
        {{plasma}, // without a prompt of its own
         {{"org.kde.KSMServerInterface.logout", ""}},
         true,
         RestartEnd::begun,
         "org.kde.KSMServerInterface.logout "},
        {{xfce},
         {{"org.xfce.Session.Manager.CanRestart", "true"},
          {"org.xfce.Session.Manager.Restart", ""}},
         false,
         RestartEnd::begun,
         "org.xfce.Session.Manager.CanRestart org.xfce.Session.Manager.Restart "},
        {{login},
         {{manager + "CanReboot", "challenge"}, {manager + "Reboot", ""}},
         false,
         RestartEnd::begun,
         manager + "CanReboot " + manager + "Reboot "},
        {{login},
         {{manager + "CanReboot", "yes"},
          {manager + "Reboot", "org.freedesktop.DBus.Error.InteractiveAuthorizationRequired"}},
         false,
         RestartEnd::forbidden,
         manager + "CanReboot " + manager + "Reboot "},
        {{login},
         {{manager + "CanReboot", "no"}},
         false,
         RestartEnd::forbidden,
         manager + "CanReboot "},
        {{login},
         {{manager + "CanReboot", "na"}},
         false,
         RestartEnd::impossible,
         manager + "CanReboot "},
        {{}, {}, false, RestartEnd::impossible, ""},
    };
    for (const Desktop& desktop : desktops) {
        pacelet::testing::PlayedServices services{desktop.names, desktop.answers};
        EXPECT_EQ(SessionRestart::asksFirst(), desktop.asks) << desktop.calls;
        EXPECT_EQ(SessionRestart{}.run(), desktop.end) << desktop.calls;
        EXPECT_EQ(services.calls(), desktop.calls);
    }
}

} // namespace
} // namespace pacelet::Linux
