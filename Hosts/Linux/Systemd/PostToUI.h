#pragma once

#include <functional>

namespace pacelet::Linux {

/// Has a function called on the UI thread, soon and without waiting for it. Any thread.
using PostToUI = std::function<void(std::function<void()>)>;

} // namespace pacelet::Linux
