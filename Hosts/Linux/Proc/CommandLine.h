#pragma once

#include <string>
#include <string_view>

/// Reads a command line as the kernel keeps it, with a NUL behind each argument.
namespace pacelet::Linux::CommandLine {

/// The file that an interpreter was given to run, as it was written; empty when it runs a text, a
/// module or nothing.
std::string_view script(std::string_view commandLine);

/// True when `argument` is one of the arguments.
bool contains(std::string_view commandLine, std::string_view argument);

/// What a helper of a browser, or of an application made of one, is there for: "renderer", "GPU",
/// "extension", "Isolated Web Content". `comm` is the name that the process gave itself. Empty for
/// any other process.
std::string part(std::string_view commandLine, std::string_view comm);

} // namespace pacelet::Linux::CommandLine
