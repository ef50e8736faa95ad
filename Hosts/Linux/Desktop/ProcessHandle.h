#pragma once

#include "Core/Support/Descriptor.h"
#include "Hosts/Linux/Proc/AppProcess.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <memory>

namespace pacelet::Linux {

/// Holds on to one process through the kernel's own handle, so that neither a look nor a signal
/// ever meets another process that got the same pid later.
class ProcessHandle {
public:
    ProcessHandle(std::shared_ptr<const FolderReader> proc, const ProcessIdentity& identity);

    const ProcessIdentity& identity() const { return identity_; }

    /// True when the process has ended, waited for by its parent or not.
    bool hasEnded() const;

    /// Sends a signal. False when the process has ended, may not be signalled, or could not be held
    /// on to.
    bool signal(int number) const;

private:
    bool isStillThere() const;

    std::shared_ptr<const FolderReader> proc_;
    ProcessIdentity identity_;
    Descriptor process_;
};

} // namespace pacelet::Linux
