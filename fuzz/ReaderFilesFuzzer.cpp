#include "Core/Knowledge/CatalogFile.h"
#include "Core/Platform/Log.h"
#include "Core/Support/Descriptor.h"
#include "Core/Support/Files.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"
#include "Hosts/Linux/Background/AutostartFile.h"
#include "Hosts/Linux/Browser/BridgedBrowsers.h"
#include "Hosts/Linux/Browser/BrowserProfiles.h"
#include "Hosts/Linux/Knowledge/DpkgDatabase.h"
#include "Hosts/Linux/Knowledge/ManualPage.h"
#include "Hosts/Linux/Knowledge/StartFiles.h"
#include "Hosts/Linux/User/AutostartEntry.h"
#include "Hosts/Linux/User/PreferencesFile.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

using namespace pacelet;
using namespace pacelet::Linux;

namespace {

/// The files that are read, each under the letter that stands for it in an input.
const std::array names{
    std::string{"status"},
    std::string{"info/a.list"},
    std::string{"info/b:amd64.list"},
    std::string{"one.desktop"},
    std::string{"two.desktop"},
    std::string{"a.service"},
    std::string{"b.service"},
    std::string{"autostart/app.pacelet.Pacelet.desktop"},
    std::string{"switches"},
    std::string{"Default/Local Extension Settings/"}.append(extensionID) + "/000003.log",
    std::string{"man8/x.8.gz"},
    std::string{"man1/y.1.gz"},
    std::string{"preferences.json"},
    std::string{"processes.json"},
};

class Folder {
public:
    Folder() {
        // Where there are such, files of memory: what outlives a power cut takes its time.
        const std::filesystem::path memory{"/dev/shm"};
        std::string name =
            (std::filesystem::is_directory(memory) ? memory
                                                   : std::filesystem::temp_directory_path()) /
            "pacelet-fuzz-XXXXXX";
        precondition(::mkdtemp(name.data()) != nullptr, "no folder could be made");
        path_ = name;
        for (const std::string& each : names) {
            std::filesystem::create_directories(std::filesystem::path{at(each)}.parent_path());
        }
    }
    ~Folder() { std::filesystem::remove_all(path_); }

    const std::string& path() const { return path_; }
    std::string at(const std::string& name) const { return path_ + '/' + name; }

    /// The files of an input: "@" and a letter in a line of its own begins one. The others are
    /// missing.
    void fill(std::string_view input) const {
        for (const std::string& name : names) {
            ::unlink(at(name).c_str());
        }
        std::string path;
        std::string text;
        const auto finish = [&] {
            const Descriptor file{::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600)};
            writeAll(file.get(), text);
        };
        for (const std::string_view line : splitKeepingEmpty(input, '\n')) {
            if (line.size() == 2 && line[0] == '@') {
                finish();
                path = at(names[static_cast<unsigned char>(line[1] - 'a') % names.size()]);
                text.clear();
            } else {
                text.append(line) += '\n';
            }
        }
        finish();
    }

private:
    std::string path_;
};

class NoLog final : public Log {
    void write(LogLevel, std::string_view, std::string_view, std::string_view) override {}
};

void readPackages(const Folder& folder) {
    const std::array<std::string, 3> paths{"/usr/bin/x", "/usr/lib/y", "/opt/z"};
    for (const auto& [path, package] : DpkgDatabase{folder.path()}.owners(paths)) {
        precondition(!package.name.empty(), "a file belongs to a package without a name");
    }
    DpkgDatabase{folder.path()}.owners({});
}

void readStarts(const Folder& folder) {
    const DesktopPlaces places{{folder.path()}, {"/usr/bin"}, {"XFCE"}, "/home/ann"};
    auto folders = startFolders(places, folder.path());
    for (StartFolder& each : folders) {
        // Not what this machine starts.
        each.path = folder.path() + (each.path.ends_with("autostart") ? "/autostart" : "");
    }
    const StartFiles files{folders, places};
    for (const char* program : {"/usr/bin/env", "/usr/bin/cat"}) {
        const StartFile* const entry = files.entryOf(program);
        precondition(entry == nullptr || files.starterOf(program), "nobody starts an entry");
        files.serviceOf(program);
    }
    for (const char* id : {"one", "a"}) {
        files.entryNamed(id);
        files.serviceNamed(id);
    }
    for (const char* name : {"one.desktop", "two.desktop"}) {
        std::string text;
        readFile(folder.at(name), 1 << 16, text);
        if (const auto file = parseAutostartFile(text)) {
            startsAtLogin(*file, {places.desktops, places.searchPath, folder.path()});
        }
    }
}

void readProfiles(const Folder& folder) {
    const auto found = BrowserProfiles::folderWith(folder.path(), "token");
    precondition(!found || *found == "Default", "a token stands where nobody wrote it");
}

/// What is set holds in the next run, whatever stood in the file.
void keepPreferences(const Folder& folder) {
    NoLog log;
    const std::string path = folder.at("preferences.json");
    {
        PreferencesFile file{path, log};
        file.boolean("a");
        file.setBoolean("a", true);
        file.setData("b", "\xFF");
        file.synchronize();
    }
    PreferencesFile again{path, log};
    precondition(again.boolean("a") == true && again.data("b") == "\xFF" &&
                     again.trouble() == PreferencesTrouble::none,
                 "what was set is lost");
    std::filesystem::remove(path + ".flawed");
    // Where a folder stands, nothing can be written.
    int news = 0;
    PreferencesFile nowhere{folder.at("autostart"), log, [](const auto& post) { post(); }};
    const auto observer = nowhere.observeTrouble([&news] { ++news; });
    nowhere.setBoolean("a", true);
    nowhere.synchronize();
    precondition(nowhere.boolean("a") == true && news > 0, "what cannot be written is not told");
}

/// Start at login goes on and off, whatever stood in its file.
void switchAutostart(const Folder& folder) {
    AutostartEntry entry{folder.path(), "/usr/bin/pacelet"};
    entry.status();
    entry.renew();
    precondition(entry.registerProgram() && entry.status() == LoginItemStatus::enabled,
                 "start at login does not go on");
    precondition(entry.unregisterProgram() && entry.status() == LoginItemStatus::notRegistered,
                 "start at login does not go off");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Folder folder;
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    folder.fill(input);
    readPackages(folder);
    readStarts(folder);
    readProfiles(folder);
    ManualPage::line(folder.path(), '8', "x");
    ManualPage::line(folder.path(), '1', "y");
    try {
        CatalogFile::read(folder.at("processes.json"));
    } catch (const CatalogError&) {
        // A message for whoever wrote it.
    }
    // What is written takes its time.
    if (input.find("@m\n") != std::string_view::npos) {
        keepPreferences(folder);
    }
    if (input.find("@h\n") != std::string_view::npos) {
        switchAutostart(folder);
    }
    return 0;
}
