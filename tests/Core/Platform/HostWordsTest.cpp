#include "Core/Platform/HostWords.h"

#include <gtest/gtest.h>

#include <string_view>
#include <utility>

namespace pacelet {
namespace {

TEST(HostWords, AreTrueOfTheMachine) {
    constexpr std::pair<std::string_view, std::string_view> sentences[] = {
        {"Your Mac is warm, so macOS is slowing it slightly to cool down.",
         "Your computer is warm, so Linux is slowing it slightly to cool down."},
        {"kernel_task holds back other work to cool your Mac. Heavy apps and blocked vents make it "
         "worse.",
         "The processor runs slower to cool your computer. Heavy apps and blocked vents make it "
         "worse."},
        {"Choose Apple menu > Restart.", "Choose Restart in the menu of your desktop."},
        {"Show status in the menu bar", "Show status in the system tray"},
        {"Shared by all Macs, and your Mac's own",
         "Shared by all computers, and your computer's own"},
        {{"iMacs", 4}, ""}, // a view into a longer text
        {"Macaulay runs MacDown, iMac and Mac_OS on a MacBook. Macz MacA MacZ Mac0 Mac9", ""},
        {"L\u00c0Mac Mac\u00e9 my_kernel_task holds back", ""},
        {"", ""},
    };
    for (const auto& [written, onLinux] : sentences) {
        EXPECT_EQ(HostWords::on(OperatingSystem::macOS, written), written);
        EXPECT_EQ(HostWords::on(OperatingSystem::linuxDesktop, written),
                  onLinux.empty() ? written : onLinux);
    }
}

TEST(HostWords, LeaveDataAlone) {
    EXPECT_EQ(HostWords::say(OperatingSystem::linuxDesktop,
                             "{} won't quit. Restart your Mac to clear it.", "My Mac {macOS}"),
              "My Mac {macOS} won't quit. Restart your computer to clear it.");
}

} // namespace
} // namespace pacelet
