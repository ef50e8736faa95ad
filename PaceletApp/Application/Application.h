#pragma once

#include "PaceletApp/FixActions/FixActions.h"
#include "PaceletApp/Monitor/Monitor.h"
#include "PaceletApp/RootView/RootModel.h"
#include "PaceletApp/Router/Router.h"

#include <optional>

namespace pacelet {

/// The objects that live as long as the program. Measuring begins at once, before any window.
class Application {
public:
    /// The host behind `platform` and the scheduler outlive this. Without a catalog nothing is
    /// measured, and the window says so.
    Application(const Platform& platform, Scheduler& scheduler,
                std::optional<ProcessCatalog> catalog);

    /// What every screen is handed.
    SharedObjects shared() { return {monitor_, router_, actions_, scheduler_}; }

private:
    Scheduler& scheduler_;
    Monitor monitor_;
    Router router_;
    FixActions actions_;
};

} // namespace pacelet
