#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace pacelet::Linux {

/// Names of users by number, each looked up once. For one thread at a time.
class UserNames {
public:
    /// The name, fit for a column; the number itself for a user that nobody knows. Valid as long as
    /// this object lives.
    const std::string& nameOf(std::uint32_t uid);

private:
    std::unordered_map<std::uint32_t, std::string> names_;
};

} // namespace pacelet::Linux
