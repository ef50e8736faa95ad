#pragma once

#include "Core/Platform/Log.h"
#include "Core/Support/Descriptor.h"

#include <mutex>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// One log entry in the journal's native form: a "KEY=value" line a field, and the binary form (the
/// key, a line feed, the length in 64 bits, the bytes) for a value with line feeds in it.
std::string journalEntry(LogLevel level, std::string_view subsystem, std::string_view category,
                         std::string_view message);

/// The system journal, with subsystem and category as fields of their own. Where there is no
/// journal, or it does not take the entry, that goes to standard error as one line. An error that
/// only repeats the entry before it, as one that comes back each minute does, is not said again.
class JournalLog final : public Log {
public:
    /// `socketPath` is where the journal listens.
    explicit JournalLog(std::string socketPath);

    void write(LogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view message) override;

private:
    bool repeatsLast(LogLevel level, const std::string& entry);
    bool send(std::string_view entry) const;

    std::string socketPath_;
    Descriptor socket_;
    std::mutex mutex_;
    std::string last_; // under the mutex
};

} // namespace pacelet::Linux
