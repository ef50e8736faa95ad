#pragma once

namespace pacelet {

/// Gives back to the system what the program holds but will not touch for a while: caches, freed
/// blocks, and the pages of code that only a window needs. What is needed after all comes back from
/// the file, page by page.
void releaseIdleMemory();

} // namespace pacelet
