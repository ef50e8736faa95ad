#include "Core/Browser/BrowserError.h"

namespace pacelet {

namespace {

std::string explanation(BrowserError::Kind kind, const std::string& text) {
    switch (kind) {
    case BrowserError::Kind::notPermitted:
        return "no permission to control the browser";
    case BrowserError::Kind::notRunning:
        return "the browser is not running";
    case BrowserError::Kind::failed:
        break;
    }
    return text;
}

} // namespace

BrowserError::BrowserError(Kind kind, std::string text)
    : std::runtime_error{explanation(kind, text)},
      kind_{kind},
      text_{std::move(text)} {}

} // namespace pacelet
