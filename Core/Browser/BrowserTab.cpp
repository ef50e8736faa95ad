#include "Core/Browser/BrowserTab.h"

#include "Core/Browser/URLComponents.h"

namespace pacelet {

std::string BrowserTab::host() const {
    const auto components = parseURL(url);
    return components && !components->host.empty() ? std::string{components->host} : url;
}

} // namespace pacelet
