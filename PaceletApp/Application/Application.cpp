#include "PaceletApp/Application/Application.h"

#include <string>
#include <utility>

namespace pacelet {

namespace {

/// Stands for no page: which one sells the sibling application is for a delivery to say.
const std::string noWebsite;

} // namespace

Application::Application(const Platform& platform, Scheduler& scheduler,
                         std::optional<ProcessCatalog> catalog)
    : scheduler_{scheduler}, monitor_{platform, scheduler, std::move(catalog)},
      actions_{platform, scheduler, monitor_, router_, noWebsite} {
    monitor_.start();
}

} // namespace pacelet
