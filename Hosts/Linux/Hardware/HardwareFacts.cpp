#include "Hosts/Linux/Hardware/HardwareFacts.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Proc/FolderReader.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>

namespace pacelet::Linux {

namespace {

/// What makers leave in a field that nobody filled in; in lower case.
constexpr auto fillers = std::to_array<std::string_view>({"to be filled by o.e.m.",
                                                          "system product name",
                                                          "system name",
                                                          "default string",
                                                          "none",
                                                          "not specified",
                                                          "not applicable",
                                                          "not available",
                                                          "n/a",
                                                          "unknown",
                                                          "undefined",
                                                          "invalid",
                                                          "o.e.m.",
                                                          "oem",
                                                          "product name",
                                                          "family",
                                                          "all series",
                                                          "type1family",
                                                          "type1productname",
                                                          "virtual machine family"});

struct ChassisWord {
    int type; ///< as in the system management tables
    std::string_view word;
};
constexpr auto chassisWords = std::to_array<ChassisWord>({{3, "Desktop"},
                                                          {4, "Desktop"},
                                                          {6, "Desktop"},
                                                          {7, "Desktop"},
                                                          {8, "Laptop"},
                                                          {9, "Laptop"},
                                                          {10, "Laptop"},
                                                          {13, "All-in-One"},
                                                          {14, "Laptop"},
                                                          {17, "Server"},
                                                          {23, "Server"},
                                                          {30, "Tablet"},
                                                          {31, "Laptop"},
                                                          {32, "Laptop"},
                                                          {35, "Mini PC"},
                                                          {36, "Stick PC"}});

std::string cleaned(std::string_view text) {
    // A device tree's text ends in a NUL.
    std::string name = shownText(trimmed(text.substr(0, text.find('\0'))));
    const bool isFiller =
        std::find(fillers.begin(), fillers.end(), asciiLowercased(name)) != fillers.end();
    return isFiller ? std::string{} : name;
}

/// An order number has neither blanks nor small letters.
bool readsAsName(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char character) {
        return character == ' ' || (character >= 'a' && character <= 'z');
    });
}

std::string readText(const FolderReader& folder, const char* path) {
    ReadBuffer buffer;
    return std::string{folder.read(path, buffer).value_or("")};
}

void erase(std::string& text, std::string_view piece) {
    for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at)) {
        text.erase(at, piece.size());
    }
}

} // namespace

HardwareFacts readHardwareFacts(const std::string& procFolder, const std::string& sysFolder) {
    const FolderReader proc{procFolder};
    const FolderReader sys{sysFolder};
    HardwareFacts facts;
    facts.machineName = machineName({readText(sys, "class/dmi/id/product_name"),
                                     readText(sys, "class/dmi/id/product_family"),
                                     readText(sys, "firmware/devicetree/base/model"),
                                     readText(sys, "class/dmi/id/chassis_type")});
    facts.processorName = processorName(readText(proc, "cpuinfo"));
    return facts;
}

std::string machineName(const FirmwareNames& names) {
    std::string product = cleaned(names.product);
    std::string family = cleaned(names.family);
    if (readsAsName(product)) {
        return product;
    }
    if (readsAsName(family)) {
        return family;
    }
    for (const std::string& name : {product, family, cleaned(names.deviceTreeModel)}) {
        if (!name.empty()) {
            return name;
        }
    }
    const auto type = parseInteger<int>(trimmed(names.chassisType));
    const auto word = std::find_if(chassisWords.begin(), chassisWords.end(),
                                   [&](const ChassisWord& row) { return row.type == type; });
    return std::string{word == chassisWords.end() ? "Computer" : word->word};
}

std::string processorName(std::string_view cpuinfo) {
    std::string name;
    // The same for each core; what a kernel for another architecture writes comes last.
    for (const std::string_view wanted : {"model name", "cpu model", "Hardware", "cpu"}) {
        forEachLine(cpuinfo, [&](std::string_view line) {
            const std::size_t colon = line.find(':');
            if (name.empty() && colon != std::string_view::npos &&
                trimmed(line.substr(0, colon)) == wanted) {
                name = shownText(trimmed(line.substr(colon + 1)));
            }
        });
    }
    name.erase(std::min(name.size(), name.find(" @ ")));
    for (const std::string_view mark : {"(R)", "(TM)", "(tm)", " CPU", " Processor"}) {
        erase(name, mark);
    }
    return std::string{trimmed(name)};
}

std::string memoryText(std::int64_t bytes) {
    constexpr std::int64_t gigabyte = 1 << 30;
    constexpr std::int64_t megabyte = 1 << 20;
    return bytes % gigabyte == 0 ? fmt::format("{} GB", bytes / gigabyte)
                                 : fmt::format("{} MB", bytes / megabyte + (bytes % megabyte != 0));
}

} // namespace pacelet::Linux
