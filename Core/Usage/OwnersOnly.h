#pragma once

#include <string>
#include <sys/types.h>

/// What a person does at their computer is nobody else's business, other users' least of all.
namespace pacelet::OwnersOnly {

constexpr mode_t folderMode = 0700;
constexpr mode_t fileMode = 0600;

/// Takes from all others what they may do with the regular file or folder at `path`. What does not
/// belong to this user, and what is a link, stays as it is.
void keep(const std::string& path);

} // namespace pacelet::OwnersOnly
