#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace pacelet::report {

/// A file that the user named is of no use; `what()` is one line for the user.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// More than any process table takes, and little enough for every figure of one to be added up.
inline constexpr std::size_t largestInput = std::size_t{32} << 20;

/// A file as the messages name it.
std::string inputName(const std::string& path);

/// The text of a file, of a pipe or, for "-", of standard input, as UTF-8. Waits for whoever writes
/// to a pipe, but not for long where nobody does. Throws `FileError`.
std::string readInput(const std::string& path);

} // namespace pacelet::report
