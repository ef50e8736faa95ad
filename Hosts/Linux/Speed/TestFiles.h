#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace pacelet::Linux {

/// What a speed test loads, and where it sends to.
struct TestFiles {
    std::string small;    ///< address of a file of about one byte
    std::string large;    ///< address of one that is too large to be loaded in a test
    std::string upload;   ///< address that takes whatever is posted
    std::string endpoint; ///< the host to connect to for all of them; empty for their own

    bool operator==(const TestFiles&) const = default;
};

/// Reads a server's configuration: {"version":1,"urls":{"small_download_url":…,
/// "large_download_url":…,"upload_url":…},"test_endpoint":…}. Older servers have "https_" before
/// "download" and "upload". Nothing when it is another version, is no such document, or lacks one
/// of the addresses.
std::optional<TestFiles> parseTestFiles(std::string_view json);

} // namespace pacelet::Linux
