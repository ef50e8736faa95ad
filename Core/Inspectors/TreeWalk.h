#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <sys/stat.h>

namespace pacelet {

/// Calls `visit` with the facts of every regular file below the folder `path`, in no particular
/// order. No symbolic link is followed, `path` included. What cannot be read is passed over, and
/// the walk goes on. It ends early once `stop` asks for it.
///
/// Trees may be of any size and depth, with paths longer than the system takes: there is no
/// recursion, only some thirty folders are open at a time, and what is kept in memory is the names
/// of the folders still to be visited.
void walkRegularFiles(const std::string& path, const std::stop_token& stop,
                      const std::function<void(const struct stat&)>& visit);

} // namespace pacelet
