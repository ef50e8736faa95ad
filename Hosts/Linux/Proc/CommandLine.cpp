#include "Hosts/Linux/Proc/CommandLine.h"

#include "Core/Support/Text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace pacelet::Linux::CommandLine {

namespace {

template<std::size_t count>
bool isOneOf(const std::array<std::string_view, count>& table, std::string_view text) {
    return std::ranges::find(table, text) != table.end();
}

struct LongName {
    std::string_view comm; ///< cut off by the kernel
    std::string_view name;
};
constexpr std::array longNames{
    LongName{"Isolated Web Co", "Isolated Web Content"},
    LongName{"Isolated Servic", "Isolated Service Worker"},
    LongName{"Privileged Cont", "Privileged Content"},
    LongName{"Privileged Mozi", "Privileged Mozilla Content"},
};

std::string_view valueOf(std::string_view commandLine, std::string_view option) {
    const std::size_t at = commandLine.find(option);
    if (at == std::string_view::npos) {
        return {};
    }
    const std::string_view value = commandLine.substr(at + option.size());
    // Some processes write all their arguments into one.
    return value.substr(0, value.find_first_of(std::string_view{" \0", 2}));
}

std::string chromiumPart(std::string_view type, std::string_view commandLine) {
    if (type == "renderer") {
        const bool isExtension = commandLine.find("--extension-process") != std::string_view::npos;
        return isExtension ? "extension" : "renderer";
    }
    if (type == "gpu-process") {
        return "GPU";
    }
    if (type == "utility") {
        const std::string_view service = valueOf(commandLine, "--utility-sub-type=");
        return service.empty() ? "utility" : std::string{service.substr(0, service.find('.'))};
    }
    return std::string{type};
}

} // namespace

std::string_view script(std::string_view commandLine) {
    constexpr std::array<std::string_view, 5> inlineTexts{"-c", "-e", "-m", "-E", "--eval"};
    constexpr std::array<std::string_view, 6> withValue{"-W",        "-X",  "-r",
                                                        "--require", "-cp", "-classpath"};
    bool isFirst = true;
    bool isValue = false;
    for (const std::string_view argument : splitDroppingEmpty(commandLine, '\0')) {
        if (std::exchange(isFirst, false) || std::exchange(isValue, false)) {
            continue;
        }
        if (isOneOf(inlineTexts, argument)) {
            return {};
        }
        isValue = isOneOf(withValue, argument);
        if (!argument.starts_with('-')) {
            return argument;
        }
    }
    return {};
}

bool contains(std::string_view commandLine, std::string_view argument) {
    const auto arguments = splitDroppingEmpty(commandLine, '\0');
    return std::ranges::find(arguments, argument) != arguments.end();
}

std::string part(std::string_view commandLine, std::string_view comm) {
    if (const std::string_view type = valueOf(commandLine, "--type="); !type.empty()) {
        return chromiumPart(type, commandLine);
    }
    if (!contains(commandLine, "-contentproc")) {
        return {};
    }
    const auto* const known = std::ranges::find(longNames, comm, &LongName::comm);
    return std::string{known == longNames.end() ? comm : known->name};
}

} // namespace pacelet::Linux::CommandLine
