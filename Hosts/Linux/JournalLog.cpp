#include "Hosts/Linux/JournalLog.h"

#include "Core/Support/StandardStreams.h"

#include <fmt/format.h>

#include <sys/socket.h>
#include <sys/un.h>

#include <cstdint>
#include <cstring>
#include <utility>

namespace pacelet::Linux {

namespace {

constexpr std::string_view identifier = "pacelet";

/// The priorities of syslog.
int priority(LogLevel level) {
    return level == LogLevel::error ? 3 : 6;
}

void appendField(std::string& entry, std::string_view key, std::string_view value) {
    entry += key;
    if (value.find('\n') == std::string_view::npos) {
        entry += '=';
    } else {
        entry += '\n';
        const std::uint64_t length = value.size();
        for (int shift = 0; shift < 64; shift += 8) {
            entry += static_cast<char>((length >> shift) & 0xFF);
        }
    }
    entry += value;
    entry += '\n';
}

} // namespace

std::string journalEntry(LogLevel level, std::string_view subsystem, std::string_view category,
                         std::string_view message) {
    std::string entry;
    appendField(entry, "MESSAGE", message);
    appendField(entry, "PRIORITY", std::to_string(priority(level)));
    appendField(entry, "SYSLOG_IDENTIFIER", identifier);
    appendField(entry, "SUBSYSTEM", subsystem);
    appendField(entry, "CATEGORY", category);
    return entry;
}

JournalLog::JournalLog(std::string socketPath)
    : socketPath_{std::move(socketPath)},
      socket_{socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)} {}

bool JournalLog::send(std::string_view entry) const {
    sockaddr_un address{};
    if (!socket_ || socketPath_.size() >= sizeof address.sun_path) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, socketPath_.data(), socketPath_.size());
    // Never waits: a journal that is full must not hold up the screen.
    const ssize_t sent =
        sendto(socket_.get(), entry.data(), entry.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
               reinterpret_cast<const sockaddr*>(&address), sizeof address);
    return sent == static_cast<ssize_t>(entry.size());
}

bool JournalLog::repeatsLast(LogLevel level, const std::string& entry) {
    const std::lock_guard lock{mutex_};
    const bool repeats = level == LogLevel::error && entry == last_;
    last_ = entry;
    return repeats;
}

void JournalLog::write(LogLevel level, std::string_view subsystem, std::string_view category,
                       std::string_view message) {
    const std::string entry = journalEntry(level, subsystem, category, message);
    if (repeatsLast(level, entry) || send(entry)) {
        return;
    }
    const std::string_view word = level == LogLevel::error ? "error: " : "";
    StandardStreams::complain(
        fmt::format("{} [{}:{}] {}{}", identifier, subsystem, category, word, message));
}

} // namespace pacelet::Linux
