#pragma once

namespace pacelet {

/// Gives back to the system what the program holds but will not touch for a while: freed blocks,
/// and the pages of its files that only a start needs. What is needed after all comes back from the
/// file, page by page. Does not hurt while a window is open.
void releaseIdleMemory();

} // namespace pacelet
