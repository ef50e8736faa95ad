#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Linux {

/// Room for one file, used over and over; it grows when a file needs more.
using ReadBuffer = std::vector<char>;

/// Reads the small files of a kernel below one folder that stays open: raw reads relative to it,
/// with no stream and no path lookup from the root. A folder that cannot be opened reads as empty.
/// The reading members are safe from any thread, each caller with a buffer of its own; the listings
/// move the place in the folder and are for one thread at a time.
class FolderReader {
public:
    explicit FolderReader(const std::string& folder);
    FolderReader(const FolderReader&) = delete;
    FolderReader& operator=(const FolderReader&) = delete;
    ~FolderReader();

    bool isOpen() const { return descriptor_ >= 0; }

    /// The whole file, as a view into `buffer`; nothing when it is missing or may not be read.
    std::optional<std::string_view> read(const char* path, ReadBuffer& buffer) const;

    /// Where a symbolic link points, as a view into `buffer`; nothing when that may not be known.
    std::optional<std::string_view> readLink(const char* path, ReadBuffer& buffer) const;

    /// The user that owns `path`.
    std::optional<std::uint32_t> owner(const char* path) const;

    /// Puts the entries that are plain decimal numbers into `numbers`, in the order of the folder.
    void listNumbers(std::vector<std::int32_t>& numbers, ReadBuffer& buffer);

    /// The entries whose names begin with `prefix`.
    std::vector<std::string> namesWithPrefix(std::string_view prefix);

private:
    template<typename Visitor>
    void forEachName(ReadBuffer& buffer, Visitor&& visit);

    int descriptor_ = -1;
};

} // namespace pacelet::Linux
