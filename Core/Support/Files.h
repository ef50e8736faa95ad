#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace pacelet {

/// `folder` and `name` with one slash between them.
std::string joinedPath(std::string_view folder, std::string_view name);

/// The names in a folder, hidden ones included, in ascending byte order; empty when the folder is
/// missing or cannot be read.
std::vector<std::string> sortedNames(const std::string& folder);

/// Replaces `contents` by the bytes of the file at `path`, links followed. Only a regular file of
/// at most `maximumBytes` is read (`errc::invalid_argument` and `errc::file_too_large` else), so
/// that neither a pipe nor a runaway file holds up the caller. On an error `contents` is empty.
std::error_code readFile(const std::string& path, std::size_t maximumBytes, std::string& contents);

/// The first `bytes` of a regular file, or fewer where it is shorter; empty when it is none or
/// cannot be read.
std::string readBeginning(const std::string& path, std::size_t bytes);

/// Writes all of `bytes` at the descriptor's place.
std::error_code writeAll(int fd, std::string_view bytes);

} // namespace pacelet
