#pragma once

namespace pacelet::Linux {

/// Whether the network manager of this desktop was told that the present link is metered, or takes
/// it for such, as it does with a telephone's hotspot. False where none runs. Blocks, for a moment
/// at most.
bool isMetered();

} // namespace pacelet::Linux
