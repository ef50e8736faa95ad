#include "Hosts/Linux/Proc/FolderReader.h"

#include "Core/Support/Text.h"

#include <cerrno>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

constexpr std::size_t firstRoom = 4096;
constexpr std::size_t listingRoom = 32768;

ssize_t readRetrying(int descriptor, char* into, std::size_t room) {
    ssize_t count = 0;
    do {
        count = ::read(descriptor, into, room);
    } while (count < 0 && errno == EINTR);
    return count;
}

/// Fills `buffer` from `descriptor`. The kernel hands its own files over in one piece, so a read
/// that leaves room was the last one.
std::optional<std::string_view> readWhole(int descriptor, ReadBuffer& buffer) {
    std::size_t filled = 0;
    for (;;) {
        if (buffer.size() - filled < firstRoom) {
            buffer.resize(buffer.size() + firstRoom + filled);
        }
        const std::size_t room = buffer.size() - filled;
        const ssize_t count = readRetrying(descriptor, buffer.data() + filled, room);
        if (count < 0) {
            return std::nullopt;
        }
        filled += static_cast<std::size_t>(count);
        if (static_cast<std::size_t>(count) < room) {
            return std::string_view{buffer.data(), filled};
        }
    }
}

} // namespace

FolderReader::FolderReader(const std::string& folder)
    : descriptor_{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)} {}

FolderReader::~FolderReader() {
    if (isOpen()) {
        ::close(descriptor_);
    }
}

std::optional<std::string_view> FolderReader::read(const char* path, ReadBuffer& buffer) const {
    const int file = ::openat(descriptor_, path, O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return std::nullopt;
    }
    const auto text = readWhole(file, buffer);
    ::close(file);
    return text;
}

std::optional<std::string_view> FolderReader::readLink(const char* path, ReadBuffer& buffer) const {
    if (buffer.size() < firstRoom) {
        buffer.resize(firstRoom);
    }
    const ssize_t length = ::readlinkat(descriptor_, path, buffer.data(), buffer.size());
    if (length < 0) {
        return std::nullopt;
    }
    return std::string_view{buffer.data(), static_cast<std::size_t>(length)};
}

std::optional<std::uint32_t> FolderReader::owner(const char* path) const {
    struct stat facts {};
    if (::fstatat(descriptor_, path, &facts, 0) != 0) {
        return std::nullopt;
    }
    return facts.st_uid;
}

template<typename Visitor>
void FolderReader::forEachName(ReadBuffer& buffer, Visitor&& visit) {
    if (buffer.size() < listingRoom) {
        buffer.resize(listingRoom);
    }
    if (::lseek(descriptor_, 0, SEEK_SET) != 0) {
        return;
    }
    for (;;) {
        const ssize_t filled = ::getdents64(descriptor_, buffer.data(), buffer.size());
        if (filled <= 0) {
            return;
        }
        for (ssize_t at = 0; at < filled;) {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.data() + at);
            visit(std::string_view{entry->d_name});
            at += entry->d_reclen;
        }
    }
}

void FolderReader::listNumbers(std::vector<std::int32_t>& numbers, ReadBuffer& buffer) {
    numbers.clear();
    forEachName(buffer, [&](std::string_view name) {
        if (name.front() < '0' || name.front() > '9') {
            return;
        }
        if (const auto number = parseInteger<std::int32_t>(name)) {
            numbers.push_back(*number);
        }
    });
}

std::vector<std::string> FolderReader::namesWithPrefix(std::string_view prefix) {
    std::vector<std::string> names;
    ReadBuffer buffer;
    forEachName(buffer, [&](std::string_view name) {
        if (name.starts_with(prefix)) {
            names.emplace_back(name);
        }
    });
    return names;
}

} // namespace pacelet::Linux
