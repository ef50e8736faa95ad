#include "Hosts/Linux/Network/LinkCounters.h"

#include "Core/Support/Text.h"
#include "Hosts/Linux/Proc/FolderReader.h"

#include <array>
#include <optional>

namespace pacelet::Linux {

namespace {

/// The figures of one interface, at their places in the line.
std::optional<LinkCounters> parseFigures(std::string_view figures) {
    const auto words = splitDroppingEmpty(figures, ' ');
    constexpr std::array<std::size_t, 4> places{0, 1, 8, 9};
    std::array<std::uint64_t, places.size()> read{};
    for (std::size_t each = 0; each < places.size(); ++each) {
        const auto figure = places[each] < words.size()
                                ? parseInteger<std::uint64_t>(words[places[each]])
                                : std::nullopt;
        if (!figure) {
            return std::nullopt;
        }
        read[each] = *figure;
    }
    return LinkCounters{read[0], read[1], read[2], read[3]};
}

void add(LinkCounters& sum, const LinkCounters& more) {
    sum.bytesIn += more.bytesIn;
    sum.packetsIn += more.packetsIn;
    sum.bytesOut += more.bytesOut;
    sum.packetsOut += more.packetsOut;
}

} // namespace

LinkCounters parseLinkCounters(std::string_view text,
                               const std::function<InterfaceKind(const std::string&)>& kindOf) {
    LinkCounters devices;
    LinkCounters others;
    bool hasDevice = false;
    forEachLine(text, [&](std::string_view line) {
        const std::size_t colon = line.find(':');
        const auto figures =
            colon == std::string_view::npos ? std::nullopt : parseFigures(line.substr(colon + 1));
        const std::string name{trimmed(line.substr(0, colon))};
        const InterfaceKind kind = figures ? kindOf(name) : InterfaceKind::local;
        if (kind == InterfaceKind::local) {
            return;
        }
        const bool isDevice = kind == InterfaceKind::device;
        hasDevice |= isDevice;
        add(isDevice ? devices : others, *figures);
    });
    return hasDevice ? devices : others;
}

LinkCounters readLinkCounters(const std::string& procFolder, const std::string& sysFolder) {
    const FolderReader proc{procFolder};
    ReadBuffer buffer;
    return parseLinkCounters(
        proc.read("thread-self/net/dev", buffer).value_or(""),
        [&](const std::string& interface) { return interfaceKind(sysFolder, interface); });
}

} // namespace pacelet::Linux
