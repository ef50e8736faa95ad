#include "PaceletApp/BrowserPanel/BrowserPhase.h"

namespace pacelet {

BrowserPhase phaseAfter(const std::exception& error) {
    const auto* const browser = dynamic_cast<const BrowserError*>(&error);
    if (browser == nullptr) {
        return {BrowserPhase::Kind::failed, error.what()};
    }
    switch (browser->kind()) {
    case BrowserError::Kind::notPermitted:
        return {BrowserPhase::Kind::notPermitted, {}};
    case BrowserError::Kind::notRunning:
        return {BrowserPhase::Kind::notRunning, {}};
    case BrowserError::Kind::failed:
        break;
    }
    return {BrowserPhase::Kind::failed, browser->text()};
}

} // namespace pacelet
