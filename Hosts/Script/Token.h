#pragma once

#include "Hosts/Script/ScriptError.h"

#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Script {

enum class TokenKind { word, text, integer, symbol, event, lineEnd, end };

struct Token {
    TokenKind kind = TokenKind::end;
    std::string text; ///< of a text, with its escapes resolved; of an event, what the quotes hold
    Range range;
};

/// Cuts the script into tokens; the last one is `end`. Throws `ScriptError`.
std::vector<Token> tokenize(std::string_view script);

} // namespace pacelet::Script
