#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace pacelet {

/// The part that a program plays on its machine.
enum class ProgramRole {
    kernel,      ///< a thread of the kernel
    system,      ///< a service of the system, or a helper of one
    session,     ///< a part of the desktop, or a service of the user's session
    application, ///< has an entry in the menu
    program,     ///< anything else: what a person starts
};

/// What a machine tells of one of its programs. The texts are as their sources have them, and empty
/// where a source tells nothing.
struct ProgramFacts {
    ProgramRole role = ProgramRole::program;
    std::string entryName;    ///< of its entry in the menu, or among what starts at login
    std::string entryKind;    ///< what kind of thing that is, such as "Web Browser"
    std::string entryComment; ///< what it is for
    std::string unit;         ///< the service that starts it, without its ending
    std::string unitDescription;
    std::string package;
    std::string packageDescription;
    std::string manualLine; ///< what stands behind the dash in its manual page's first section

    bool operator==(const ProgramFacts&) const = default;
};

/// One process to be told about.
struct ProgramQuestion {
    std::int32_t pid = 0;
    std::string path; ///< as the process table has it
};

/// What the machine itself knows of its programs.
class ProgramKnowledge {
public:
    virtual ~ProgramKnowledge() = default;

    /// An answer to each question, in order; null where nothing is known. Equal answers are one
    /// object for as long as the program runs on. Reads files, so it runs on a background thread;
    /// calls at a time wait for each other.
    virtual std::vector<std::shared_ptr<const ProgramFacts>>
    about(std::span<const ProgramQuestion> questions) = 0;
};

} // namespace pacelet
