#pragma once

#include "Core/Platform/ProgramKnowledge.h"
#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/DesktopCatalog.h"
#include "Hosts/Linux/Knowledge/DpkgDatabase.h"
#include "Hosts/Linux/Knowledge/StartFiles.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

/// What the process table knows of a process beyond its path.
struct ProcessOrigin {
    std::string executable; ///< the program's real path, or the script's
    std::string starter;    ///< name of what runs the script; empty for any other program
    std::string appID;      ///< desktop id of its application; empty without one
    std::string unit;       ///< the service whose first process it is, without ending; else empty
    AssociationReason reason = AssociationReason::noApplication;

    bool operator==(const ProcessOrigin&) const = default;
};

/// Tells of programs what their entries in menus, their services, their packages and their manual
/// pages say. Reads when first asked of a program, and anew when one of the sources has changed.
class LocalKnowledge final : public ProgramKnowledge {
public:
    struct Sources {
        DesktopPlaces places;
        std::vector<StartFolder> startFolders;
        std::string dpkgFolder = "/var/lib/dpkg";
        std::string manualFolder = "/usr/share/man";
    };
    /// The origins of the processes asked about; nothing for one that has gone.
    using FindOrigins =
        std::function<std::vector<std::optional<ProcessOrigin>>(std::span<const ProgramQuestion>)>;

    LocalKnowledge(Sources sources, FindOrigins findOrigins);

    std::vector<std::shared_ptr<const ProgramFacts>>
    about(std::span<const ProgramQuestion> questions) override;

private:
    using Facts = std::shared_ptr<const ProgramFacts>;

    /// A program that must be read up on.
    struct Unread {
        std::string key;
        ProcessOrigin origin;
    };

    void forgetWhatChanged();
    std::vector<std::optional<std::int64_t>> timesOfChange() const;
    void learn(std::vector<Unread> programs);
    ProgramFacts factsOf(const ProcessOrigin& origin,
                         const std::unordered_map<std::string, Package>& owners) const;
    std::string manualLine(const std::string& program, const std::string& package,
                           const std::unordered_map<std::string, Package>& owners) const;

    Sources sources_;
    FindOrigins findOrigins_;
    DpkgDatabase dpkg_;

    std::mutex mutex_;
    std::vector<std::optional<std::int64_t>>
        changed_; ///< of all sources; empty before the first question
    StartFiles startFiles_;
    std::unordered_map<std::string, Facts> known_;
};

} // namespace pacelet::Linux
