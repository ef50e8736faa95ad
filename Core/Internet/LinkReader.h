#pragma once

#include "Core/Internet/Link.h"
#include "Core/Platform/NetworkLink.h"

#include <functional>
#include <optional>

/// What kind of link carries the traffic, and how good the radio is if it is Wi-Fi.
namespace pacelet::LinkReader {

/// The radio link of the default Wi-Fi interface; nothing without one, or while it is not
/// associated. Any thread; quick.
std::optional<WiFiLink> wifi(NetworkLink& network);

/// Takes a single reading of the path to the internet and hands its type to `completion`, exactly
/// once, on the path monitor's own thread. There is no time-out: a monitor reports on start.
void currentType(NetworkLink& network, std::function<void(LinkType)> completion);

LinkType typeOf(const NetworkPath& path);

} // namespace pacelet::LinkReader
