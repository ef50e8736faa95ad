#include "Hosts/Linux/Proc/FolderReader.h"

#include "Core/Support/Text.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

namespace pacelet::Linux {

namespace {

constexpr std::size_t firstRoom = 4096;
constexpr std::size_t listingRoom = 32768;

ssize_t readRetrying(int descriptor, char* into, std::size_t room, std::size_t place) {
    ssize_t count = 0;
    do {
        count = ::pread(descriptor, into, room, static_cast<off_t>(place));
    } while (count < 0 && errno == EINTR);
    return count;
}

enum class Delivery { whole, inPieces };

std::optional<std::string_view> readFrom(const Descriptor& file, Delivery delivery,
                                         ReadBuffer& buffer) {
    std::size_t filled = 0;
    for (;;) {
        if (buffer.size() - filled < firstRoom) {
            buffer.resize(buffer.size() + firstRoom + filled);
        }
        const std::size_t room = buffer.size() - filled;
        const ssize_t count = readRetrying(file.get(), buffer.data() + filled, room, filled);
        if (count < 0) {
            return std::nullopt;
        }
        filled += static_cast<std::size_t>(count);
        // The kernel hands its own files over in one piece: a read that leaves room was the last.
        if (count == 0 || (delivery == Delivery::whole && static_cast<std::size_t>(count) < room)) {
            return std::string_view{buffer.data(), filled};
        }
    }
}

} // namespace

std::optional<std::string_view> readWhole(const Descriptor& file, ReadBuffer& buffer) {
    return readFrom(file, Delivery::whole, buffer);
}

FolderReader::FolderReader(const std::string& folder)
    : folder_{::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)} {}

Descriptor FolderReader::open(const char* path, int flags) const {
    return Descriptor{::openat(folder_.get(), path, flags | O_CLOEXEC)};
}

std::optional<std::string_view> FolderReader::read(const char* path, ReadBuffer& buffer) const {
    const Descriptor file = open(path, O_RDONLY);
    return file ? readWhole(file, buffer) : std::nullopt;
}

std::optional<std::string_view> FolderReader::readPieces(const char* path,
                                                         ReadBuffer& buffer) const {
    const Descriptor file = open(path, O_RDONLY);
    return file ? readFrom(file, Delivery::inPieces, buffer) : std::nullopt;
}

std::optional<std::string_view> FolderReader::readLink(const char* path, ReadBuffer& buffer) const {
    if (buffer.size() < firstRoom) {
        buffer.resize(firstRoom);
    }
    const ssize_t length = ::readlinkat(folder_.get(), path, buffer.data(), buffer.size());
    if (length < 0) {
        return std::nullopt;
    }
    return std::string_view{buffer.data(), static_cast<std::size_t>(length)};
}

std::optional<struct stat> FolderReader::target(const char* path) const {
    struct stat facts {};
    return ::fstatat(folder_.get(), path, &facts, 0) == 0 ? std::optional{facts} : std::nullopt;
}

template<typename Visitor>
void FolderReader::forEachName(ReadBuffer& buffer, Visitor&& visit) {
    if (buffer.size() < listingRoom) {
        buffer.resize(listingRoom);
    }
    if (::lseek(folder_.get(), 0, SEEK_SET) != 0) {
        return;
    }
    for (;;) {
        const ssize_t filled = ::getdents64(folder_.get(), buffer.data(), buffer.size());
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
