#pragma once

#include "Core/Platform/BackgroundItem.h"

#include <vector>

namespace pacelet {

/// What a desktop has set up to run without being asked, where that does not stand in a Mac's
/// folders.
class BackgroundItemSource {
public:
    virtual ~BackgroundItemSource() = default;

    /// As of now, with `pid` absent. Reads files, so it runs on a background thread; calls at a
    /// time wait for each other.
    virtual std::vector<BackgroundItem> items() = 0;
};

} // namespace pacelet
