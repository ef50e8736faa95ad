#pragma once

#include <algorithm>
#include <array>
#include <string_view>

/// What is known of the programs of a Linux desktop, by the file name of the program. A name that
/// ends in "*" stands for all that begin so.
namespace pacelet::Linux::AppTables {

/// Services that may run inside the scope of the application that happened to need them first, and
/// belong to the whole session.
inline constexpr auto services = std::to_array<std::string_view>(
    {// portals and the accessibility bus
     "xdg-desktop-portal*", "xdg-document-portal", "xdg-permission-store", "flatpak-portal",
     "flatpak-session-helper", "at-spi-bus-launcher", "at-spi2-registryd",
     // buses and settings
     "dbus-daemon", "dbus-broker*", "dbus-launch", "dconf-service", "gconfd-2", "xfconfd",
     "kdeinit5", "kded5", "kded6", "kiod5", "kiod6", "kactivitymanagerd",
     // keyrings and agents
     "gnome-keyring-d*", "ssh-agent", "gpg-agent", "dirmngr", "scdaemon", "kwalletd*", "polkit-*",
     // files, indexing, thumbnails
     "gvfsd*", "gvfs-*", "tumblerd", "tracker-*", "localsearch*", "baloo_file*",
     // sound, video, input, notifications
     "pipewire*", "wireplumber", "pulseaudio", "ibus-*", "fcitx*", "speech-dispatcher*",
     "evolution-*-factory"});

/// The session's own parts: without one of them the user has no desktop. The last are ourselves.
inline constexpr auto sessionParts = std::to_array<std::string_view>(
    {// display servers, compositors, window managers
     "Xorg", "Xwayland", "X", "Xvfb", "mutter", "kwin_*", "kwin", "xfwm4", "marco", "metacity",
     "muffin", "openbox", "i3", "sway", "weston", "labwc", "wayfire", "Hyprland", "river",
     "awesome", "bspwm", "fluxbox", "icewm", "enlightenment", "compiz", "picom",
     // shells, panels, desktops
     "gnome-shell*", "plasmashell", "cinnamon", "xfce4-panel", "xfdesktop", "mate-panel",
     "lxqt-panel", "lxpanel", "budgie-*", "gnome-panel", "waybar", "polybar", "dwm", "lxqt-runner",
     "krunner", "pcmanfm-desktop", "tint2", "plank", "latte-dock", "cairo-dock", "nemo-desktop",
     "caja", "pcmanfm", "pcmanfm-qt", "jwm", "twm", "fvwm*", "e16", "pekwm", "spectrwm",
     "herbstluftwm", "qtile", "xmonad*", "wmaker", "blackbox", "cwm", "ratpoison", "stalonetray",
     "trayer", "xmobar", "lemonbar", "fbpanel", "sfwbar", "nwg-*", "gnome-flashback", "ukui-panel",
     "deepin-dock", "dde-dock", "xfce4-panel-*", "wrapper-2.0", "wrapper-1.0",
     // session managers, settings daemons, login screens
     "gnome-session*", "gsd-*", "gnome-settings-*", "xfce4-session", "xfsettingsd", "ksmserver",
     "plasma_session", "startplasma-*", "mate-session", "mate-settings-*", "cinnamon-session*",
     "csd-*", "lxqt-session", "lxsession", "gdm*", "sddm*", "lightdm*", "systemd*", "Pacelet",
     "pacelet*"});

/// Programs that start something else and are not what a menu entry means.
inline constexpr auto wrappers = std::to_array<std::string_view>(
    {"sh", "bash", "dash", "zsh", "fish", "ksh", "env", "bwrap", "flatpak", "snap", "snap-exec",
     "snap-confine", "firejail", "nohup", "pkexec", "sudo", "gtk-launch", "xdg-open"});

/// Those of them that run scripts.
inline constexpr auto shells =
    std::to_array<std::string_view>({"sh", "bash", "dash", "zsh", "fish", "ksh", "mksh"});

/// Programs that run the text of others, and so tell nothing by themselves.
inline constexpr auto interpreters = std::to_array<std::string_view>(
    {"python*",   "perl",        "perl5*",         "ruby",
     "node",      "nodejs",      "java",           "javaw",
     "gjs",       "gjs-console", "mono",           "mono-sgen",
     "wine",      "wine64",      "wine-preloader", "wine64-preloader",
     "electron*", "lua",         "lua5*",          "luajit",
     "php",       "guile",       "busybox"});

/// Folders that programs of many owners share: lying in the same one tells nothing.
inline constexpr auto sharedFolders = std::to_array<std::string_view>({"/",
                                                                       "/bin",
                                                                       "/sbin",
                                                                       "/usr",
                                                                       "/usr/bin",
                                                                       "/usr/sbin",
                                                                       "/usr/lib",
                                                                       "/usr/lib64",
                                                                       "/usr/libexec",
                                                                       "/usr/share",
                                                                       "/usr/games",
                                                                       "/usr/local",
                                                                       "/usr/local/lib",
                                                                       "/usr/local/share",
                                                                       "/opt",
                                                                       "/home",
                                                                       "/snap",
                                                                       "/var/lib",
                                                                       "/tmp",
                                                                       "/var/tmp"});

/// The same by the last part of a folder's name, wherever it stands.
inline constexpr auto sharedFolderNames = std::to_array<std::string_view>(
    {"bin", "sbin", "lib", "lib64", "libexec", "games", "*-linux-gnu", "share", "Applications",
     "Downloads", "Desktop", ".local"});

/// Where the private folder of a program in a shared folder may lie, under the program's name.
inline constexpr auto companionParents = std::to_array<std::string_view>(
    {"/usr/lib/", "/usr/lib64/", "/opt/", "/usr/share/", "/usr/local/lib/"});

/// The same for the helpers of a program that lies in a shared folder itself.
inline constexpr auto helperParents = std::to_array<std::string_view>(
    {"/usr/lib/", "/usr/libexec/", "/usr/lib/x86_64-linux-gnu/", "/usr/lib/aarch64-linux-gnu/",
     "/usr/local/lib/", "/usr/local/libexec/"});

/// Programs of which one process is now this, now that application, as its arguments say.
inline constexpr auto suites = std::to_array<std::string_view>({"soffice.bin", "oosplash"});

/// Programs of an application that lie in a shared folder under another name.
struct Companion {
    std::string_view program; ///< file name
    std::string_view desktopID;
};
inline constexpr std::array companions{
    Companion{"gnome-terminal-server", "org.gnome.Terminal"},
    Companion{"ptyxis-agent", "org.gnome.Ptyxis"},
    Companion{"evince-previewer", "org.gnome.Evince"},
};

/// Names by which the rules and the catalog know applications whose entries call them otherwise.
struct KnownName {
    std::string_view desktopID;
    std::string_view name;
};
inline constexpr std::array knownNames{
    KnownName{"gimp", "GIMP"},
    KnownName{"libreoffice-startcenter", "LibreOffice"},
    KnownName{"google-chrome", "Google Chrome"},
    KnownName{"com.google.Chrome", "Google Chrome"},
    KnownName{"brave-browser", "Brave Browser"},
    KnownName{"com.brave.Browser", "Brave Browser"},
    KnownName{"brave_brave", "Brave Browser"},
    KnownName{"microsoft-edge", "Microsoft Edge"},
    KnownName{"com.microsoft.Edge", "Microsoft Edge"},
    KnownName{"chromium", "Chromium"},
    KnownName{"chromium-browser", "Chromium"},
    KnownName{"chromium_chromium", "Chromium"},
    KnownName{"org.chromium.Chromium", "Chromium"},
    KnownName{"vivaldi-stable", "Vivaldi"},
    KnownName{"com.vivaldi.Vivaldi", "Vivaldi"},
    KnownName{"opera", "Opera"},
    KnownName{"opera_opera", "Opera"},
    KnownName{"com.opera.Opera", "Opera"},
    KnownName{"firefox", "Firefox"},
    KnownName{"firefox-esr", "Firefox"},
    KnownName{"firefox_firefox", "Firefox"},
    KnownName{"org.mozilla.firefox", "Firefox"},
    KnownName{"thunderbird", "Thunderbird"},
    KnownName{"org.mozilla.Thunderbird", "Thunderbird"},
};

/// True when `name` is in `table`. A star at the end or the beginning of an entry stands for
/// anything.
template<std::size_t count>
constexpr bool contains(const std::array<std::string_view, count>& table, std::string_view name) {
    return std::any_of(table.begin(), table.end(), [&](std::string_view entry) {
        if (entry.starts_with('*')) {
            return name.ends_with(entry.substr(1));
        }
        const std::size_t star = entry.find('*');
        return star == std::string_view::npos
                   ? name == entry
                   : name.starts_with(entry.substr(0, star)) &&
                         name.substr(star).ends_with(entry.substr(star + 1));
    });
}

} // namespace pacelet::Linux::AppTables
