#include "Hosts/Linux/Knowledge/LocalKnowledge.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Apps/TimeOfChange.h"
#include "Hosts/Linux/Knowledge/ManualPage.h"

#include <algorithm>
#include <array>
#include <unordered_set>

namespace pacelet::Linux {

namespace {

/// Programs that are the system's own are described in one of these sections.
constexpr std::array manualSections{'1', '8', '6'};

bool beginsWithAny(std::string_view path, std::span<const std::string_view> folders) {
    return std::ranges::any_of(folders,
                               [&](std::string_view folder) { return path.starts_with(folder); });
}

/// Folders of which packages own the files.
bool isOfPackages(std::string_view program) {
    constexpr std::array<std::string_view, 6> folders{"/usr/", "/bin/", "/sbin/",
                                                      "/lib",  "/opt/", "/etc/"};
    return beginsWithAny(program, folders) && !program.starts_with("/usr/local/");
}

/// Folders in which a program is found by its name alone: its manual page is of that name.
bool isCommand(std::string_view program) {
    constexpr std::array<std::string_view, 5> folders{"/usr/bin/", "/usr/sbin/", "/bin/", "/sbin/",
                                                      "/usr/games/"};
    return beginsWithAny(program, folders);
}

/// Folders of programs that other programs start, and nobody by hand.
bool isHelperFolder(std::string_view program) {
    constexpr std::array<std::string_view, 7> folders{
        "/usr/libexec/", "/usr/lib", "/lib", "/usr/share/", "/usr/sbin/", "/sbin/", "/etc/"};
    return beginsWithAny(program, folders) && program.find("/bin/") == program.npos;
}

ProgramRole roleOf(const ProcessOrigin& origin, std::optional<Starter> starter, bool isPackaged) {
    switch (origin.reason) {
    case AssociationReason::kernelThread:
        return ProgramRole::kernel;
    case AssociationReason::service:
    case AssociationReason::sessionPart:
        return ProgramRole::session;
    default:
        break;
    }
    if (!origin.appID.empty()) {
        return ProgramRole::application;
    }
    if (starter == Starter::system) {
        return ProgramRole::system;
    }
    if (starter == Starter::session) {
        return ProgramRole::session;
    }
    return isPackaged && starter != Starter::menu && isHelperFolder(origin.executable)
               ? ProgramRole::system
               : ProgramRole::program;
}

/// A description with places to be filled in is of no use.
std::string usableDescription(const StartFile& file) {
    return file.comment.find('%') == std::string::npos ? file.comment : std::string{};
}

} // namespace

LocalKnowledge::LocalKnowledge(Sources sources, FindOrigins findOrigins)
    : sources_{std::move(sources)},
      findOrigins_{std::move(findOrigins)},
      dpkg_{sources_.dpkgFolder} {}

std::vector<std::shared_ptr<const ProgramFacts>>
LocalKnowledge::about(std::span<const ProgramQuestion> questions) {
    const std::vector<std::optional<ProcessOrigin>> origins = findOrigins_(questions);
    const std::lock_guard lock{mutex_};
    forgetWhatChanged();
    std::vector<std::string> keys(questions.size());
    std::vector<Unread> unread;
    std::unordered_set<std::string_view> asked;
    for (std::size_t place = 0; place < questions.size(); ++place) {
        if (const auto& origin = origins[place]) {
            keys[place] = origin->executable + '\n' + origin->unit + '\n' + origin->appID;
            if (!known_.contains(keys[place]) && asked.insert(keys[place]).second) {
                unread.push_back({keys[place], *origin});
            }
        }
    }
    learn(std::move(unread));
    std::vector<Facts> answers;
    answers.reserve(questions.size());
    for (const std::string& key : keys) {
        answers.push_back(key.empty() ? nullptr : known_.at(key));
    }
    return answers;
}

std::vector<std::optional<std::int64_t>> LocalKnowledge::timesOfChange() const {
    std::vector<std::optional<std::int64_t>> times{timeOfChange(dpkg_.statusFile())};
    for (const StartFolder& folder : sources_.startFolders) {
        times.push_back(timeOfChange(folder.path));
    }
    return times;
}

void LocalKnowledge::forgetWhatChanged() {
    if (auto now = timesOfChange(); now != changed_) {
        changed_ = std::move(now);
        startFiles_ = StartFiles{sources_.startFolders, sources_.places};
        known_.clear();
    }
}

void LocalKnowledge::learn(std::vector<Unread> programs) {
    std::vector<std::string> files;
    for (const Unread& program : programs) {
        const std::string& path = program.origin.executable;
        if (!isOfPackages(path)) {
            continue;
        }
        files.push_back(path);
        if (!isCommand(path)) {
            for (const char section : manualSections) {
                files.push_back(
                    ManualPage::file(sources_.manualFolder, section, lastPathComponent(path)));
            }
        }
    }
    const auto owners = dpkg_.owners(files);
    for (Unread& program : programs) {
        known_.emplace(std::move(program.key),
                       std::make_shared<const ProgramFacts>(factsOf(program.origin, owners)));
    }
}

ProgramFacts LocalKnowledge::factsOf(const ProcessOrigin& origin,
                                     const std::unordered_map<std::string, Package>& owners) const {
    ProgramFacts facts;
    if (origin.reason == AssociationReason::kernelThread) {
        facts.role = ProgramRole::kernel;
        return facts;
    }
    if (origin.reason == AssociationReason::container) {
        facts.entryKind = "Program in a container"; // its files are not those of this machine
        return facts;
    }
    if (const auto owner = owners.find(origin.executable); owner != owners.end()) {
        facts.package = owner->second.name;
        facts.packageDescription = owner->second.description;
    }
    const StartFile* const entry = origin.appID.empty() ? startFiles_.entryOf(origin.executable)
                                                        : startFiles_.entryNamed(origin.appID);
    if (entry != nullptr) {
        facts.entryName = entry->name;
        facts.entryKind = entry->kind;
        facts.entryComment = entry->comment;
    }
    std::optional<Starter> starter = startFiles_.starterOf(origin.executable);
    const StartFile* service = startFiles_.serviceOf(origin.executable);
    if (service == nullptr && facts.package.empty() && !origin.unit.empty()) {
        // What somebody set up by hand: the service that it leads tells what it is.
        service = startFiles_.serviceNamed(origin.unit);
        starter = service != nullptr ? service->starter : starter;
    }
    if (service != nullptr && !service->comment.empty()) {
        facts.unit = service->id;
        facts.unitDescription = usableDescription(*service);
    }
    const bool isTold = !facts.package.empty() || entry != nullptr || !facts.unit.empty();
    if (!isTold && !origin.starter.empty()) {
        facts.entryKind = "Script for " + origin.starter;
    }
    facts.role = roleOf(origin, starter, !facts.package.empty());
    facts.manualLine = manualLine(origin.executable, facts.package, owners);
    return facts;
}

std::string
LocalKnowledge::manualLine(const std::string& program, const std::string& package,
                           const std::unordered_map<std::string, Package>& owners) const {
    const std::string name{lastPathComponent(program)};
    if (package.empty()) {
        return {}; // a page of that name is of another program
    }
    for (const char section : manualSections) {
        const auto owner = owners.find(ManualPage::file(sources_.manualFolder, section, name));
        const bool isOfProgram =
            isCommand(program) || (owner != owners.end() && owner->second.name == package);
        if (!isOfProgram) {
            continue;
        }
        if (std::string line = ManualPage::line(sources_.manualFolder, section, name);
            !line.empty()) {
            return line;
        }
    }
    return {};
}

} // namespace pacelet::Linux
