#pragma once

#include "Core/Platform/NetworkLink.h"

#include <memory>

namespace pacelet::Linux {

/// The wireless interface that carries the traffic to the internet, else the first one; null
/// without any. Each of its readings asks the kernel anew.
std::unique_ptr<WiFiInterface> readWiFiInterface();

} // namespace pacelet::Linux
