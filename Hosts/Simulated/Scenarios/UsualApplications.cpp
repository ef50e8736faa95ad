#include "Hosts/Simulated/Scenarios/MacBuilder.h"

namespace pacelet::Simulated {

namespace {

constexpr std::string_view webContent =
    "/System/Library/Frameworks/WebKit.framework/Versions/A/XPCServices/"
    "com.apple.WebKit.WebContent.xpc/Contents/MacOS/com.apple.WebKit.WebContent";

constexpr std::string_view webNetworking =
    "/System/Library/Frameworks/WebKit.framework/Versions/A/XPCServices/"
    "com.apple.WebKit.Networking.xpc/Contents/MacOS/com.apple.WebKit.Networking";

void runMacApplications(MacBuilder& mac) {
    const std::string system = "/System/Applications/";
    mac.run({"Safari", "com.apple.Safari", 1.2, 240, 2});
    for (int page = 0; page < 5; ++page) {
        mac.process(ann, std::string{webContent}, 0.5, 130);
    }
    mac.process(ann, std::string{webNetworking}, 0.3, 40);
    mac.run({"Mail", "com.apple.mail", 0.5, 210, 1, system});
    mac.run({"Messages", "com.apple.MobileSMS", 0.2, 120, 1, system});
    mac.run({"Notes", "com.apple.Notes", 0.2, 110, 1, system});
    mac.run({"Calendar", "com.apple.iCal", 0.1, 90, 1, system});
}

void runOtherApplications(MacBuilder& mac) {
    const RunningApp slack = mac.run({"Slack", "com.tinyspeck.slackmacgap", 0.8, 190});
    mac.help(slack, {"Slack Helper", 0.3, 60, 2, "--type=utility"});
    mac.help(slack, {"Slack Helper (GPU)", 0.4, 120, 1, "--type=gpu-process"});
    mac.help(slack, {"Slack Helper (Renderer)", 0.6, 260, 2, "--type=renderer"});
    const RunningApp spotify = mac.run({"Spotify", "com.spotify.client", 1.4, 180});
    mac.help(spotify, {"Spotify Helper", 0.4, 60, 1, "--type=utility"});
    mac.help(spotify, {"Spotify Helper (Renderer)", 0.9, 210, 1, "--type=renderer"});
    mac.run({"Pacelet", "app.pacelet.Pacelet", 0.4, 90});
    mac.install({"Zoom", "us.zoom.xos"});
    mac.install({"Firefox", "org.mozilla.firefox", 0, 400});
    mac.install({"VLC", "org.videolan.vlc"});
}

void installLaunchItems(MacBuilder& mac) {
    using enum LaunchFolder;
    mac.startsByItself({userAgents, "com.google.keystone.agent",
                        "/Users/ann/Library/Google/GoogleSoftwareUpdate/ksinstall", "", true});
    mac.startsByItself({userAgents, "com.spotify.webhelper",
                        "/Applications/Spotify.app/Contents/MacOS/Spotify", "", false, false,
                        PlistFormat::binary});
    mac.startsByItself(
        {systemAgents, "com.logi.optionsplus.agent",
         "/Library/Application Support/Logi/OptionsAgent.app/Contents/MacOS/OptionsAgent", "", true,
         true});
    mac.startsByItself({systemDaemons, "us.zoom.ZoomDaemon",
                        "/Library/PrivilegedHelperTools/us.zoom.ZoomDaemon", "", false, true,
                        PlistFormat::binary});
    mac.startsByItself({inApplication, "com.tinyspeck.slackmacgap.helper", "Contents/MacOS/Slack",
                        "Slack", true, false, PlistFormat::binary});
    mac.startsByItself({loginItem, "com.spotify.client.startuphelper", "StartUpHelper", "Spotify"});
    mac.process(root, "/Library/PrivilegedHelperTools/us.zoom.ZoomDaemon", 0, 9);
    mac.process(ann,
                "/Library/Application Support/Logi/OptionsAgent.app/Contents/MacOS/OptionsAgent",
                0.3, 60);
}

} // namespace

void MacBuilder::usualApplications() {
    runMacApplications(*this);
    runOtherApplications(*this);
    installLaunchItems(*this);
    transfer("Spotify", 42'000, 1'200);
    transfer("Mail", 1'800, 900);
    transfer("Slack Helper", 2'400, 1'100);
    transfer("apsd", 120, 80);
    transfer("mDNSResponder", 640, 410);
    world_.preferences = {{"onboarded", true}, {"showMenuBar", true}, {"keepUsageHistory", true}};
}

} // namespace pacelet::Simulated
