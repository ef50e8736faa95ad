#pragma once

#include "Hosts/Script/Syntax.h"
#include "Hosts/Script/TokenCursor.h"

namespace pacelet::Script {

/// Reads expressions, the loosest binding first: "and", "is", "as", "&", and what stands for an
/// object or a value.
class ExpressionParser {
public:
    explicit ExpressionParser(TokenCursor& tokens)
        : tokens_{tokens} {}

    /// Whether the terms of a browser are known from here on.
    bool knowsBrowser() const { return browser_; }
    void setKnowsBrowser(bool known) { browser_ = known; }

    // Both throw `ScriptError`.
    ExpressionPtr expression();
    ExpressionPtr reference();

private:
    ExpressionPtr comparison();
    ExpressionPtr coerced();
    ExpressionPtr joined();
    ExpressionPtr integer();
    ExpressionPtr browserObject();
    ExpressionPtr owner();
    ExpressionPtr filter(bool firstOnly);
    ExpressionPtr property();

    TokenCursor& tokens_;
    bool browser_ = false;
};

} // namespace pacelet::Script
