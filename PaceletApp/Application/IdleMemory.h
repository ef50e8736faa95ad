#pragma once

namespace pacelet {

/// Makes the allocator give back what is freed, for a program that works for a moment every few
/// seconds, on whichever of its threads: else each thread keeps the most that it ever used. Call
/// before the first thread starts.
void giveFreedMemoryBack();

/// Gives back to the system what the program holds but will not touch for a while: freed blocks,
/// and the pages of its files that only a start needs. What is needed after all comes back from the
/// file, page by page. Does not hurt while a window is open.
void releaseIdleMemory();

} // namespace pacelet
