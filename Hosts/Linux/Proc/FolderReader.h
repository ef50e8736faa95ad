#pragma once

#include "Core/Support/Descriptor.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace pacelet::Linux {

/// Room for one file, used over and over; it grows when a file needs more.
using ReadBuffer = std::vector<char>;

/// The whole file from its beginning, as a view into `buffer`; nothing when it cannot be read. For
/// the kernel's own files and plain ones.
std::optional<std::string_view> readWhole(const Descriptor& file, ReadBuffer& buffer);

/// Reads the small files of a kernel below one folder that stays open: raw reads relative to it,
/// with no stream and no path lookup from the root. A folder that cannot be opened reads as empty.
/// The reading members are safe from any thread, each caller with a buffer of its own; the listings
/// move the place in the folder and are for one thread at a time.
class FolderReader {
public:
    explicit FolderReader(const std::string& folder);
    explicit FolderReader(Descriptor folder)
        : folder_{std::move(folder)} {}

    bool isOpen() const { return static_cast<bool>(folder_); }

    /// Opens `path`, which no child process inherits; not open when that fails.
    Descriptor open(const char* path, int flags) const;

    /// The whole file, as a view into `buffer`; nothing when it is missing or may not be read.
    std::optional<std::string_view> read(const char* path, ReadBuffer& buffer) const;

    /// The same of a file that the kernel hands over in pieces, as it does those that grow long.
    std::optional<std::string_view> readPieces(const char* path, ReadBuffer& buffer) const;

    /// Where a symbolic link points, as a view into `buffer`; nothing when that may not be known.
    std::optional<std::string_view> readLink(const char* path, ReadBuffer& buffer) const;

    /// What `path` leads to in the end; nothing when that may not be known.
    std::optional<struct stat> target(const char* path) const;

    /// Puts the entries that are plain decimal numbers into `numbers`, in the order of the folder.
    void listNumbers(std::vector<std::int32_t>& numbers, ReadBuffer& buffer);

    /// The entries whose names begin with `prefix`.
    std::vector<std::string> namesWithPrefix(std::string_view prefix);

private:
    template<typename Visitor>
    void forEachName(ReadBuffer& buffer, Visitor&& visit);

    Descriptor folder_;
};

} // namespace pacelet::Linux
