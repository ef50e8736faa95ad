#include "Hosts/Script/TokenCursor.h"

#include <algorithm>
#include <array>

namespace pacelet::Script {

namespace {

// Far deeper than is of use, and far less than the stack holds.
constexpr int deepestNesting = 100;

constexpr std::array<std::string_view, 13> reserved{
    "set", "to", "tell", "end", "repeat", "with", "in", "if", "then", "is", "return", "as", "and"};

std::string described(const Token& token) {
    switch (token.kind) {
    case TokenKind::word:
        return "identifier";
    case TokenKind::text:
        return "“\"”";
    case TokenKind::integer:
        return "number";
    case TokenKind::lineEnd:
        return "end of line";
    case TokenKind::end:
        return "end of script";
    default:
        return "“" + token.text + "”";
    }
}

std::string quoted(std::string_view word) {
    return "“" + std::string{word} + "”";
}

} // namespace

TokenCursor::Nesting::Nesting(TokenCursor& cursor)
    : cursor_{cursor} {
    if (cursor_.depth_ == deepestNesting) {
        cursor_.fail("a simpler script");
    }
    ++cursor_.depth_;
}

const Token& TokenCursor::peek(std::size_t ahead) const {
    return tokens_[std::min(next_ + ahead, tokens_.size() - 1)];
}

bool TokenCursor::atWord(std::string_view word, std::size_t ahead) const {
    return peek(ahead).kind == TokenKind::word && peek(ahead).text == word;
}

Token TokenCursor::take() {
    Token taken = peek();
    next_ = std::min(next_ + 1, tokens_.size() - 1);
    return taken;
}

bool TokenCursor::accept(TokenKind kind) {
    const bool fits = at(kind);
    if (fits) {
        take();
    }
    return fits;
}

bool TokenCursor::acceptWord(std::string_view word) {
    return atWord(word) && accept(TokenKind::word);
}

bool TokenCursor::acceptSymbol(std::string_view symbol) {
    return peek().text == symbol && accept(TokenKind::symbol);
}

void TokenCursor::fail(const std::string& expected) const {
    throw ScriptError{syntaxError, "Expected " + expected + " but found " + described(peek()) + ".",
                      peek().range, true};
}

void TokenCursor::words(std::initializer_list<std::string_view> expected) {
    for (const std::string_view word : expected) {
        if (!acceptWord(word)) {
            fail(quoted(word));
        }
    }
}

void TokenCursor::symbol(std::string_view expected) {
    if (!acceptSymbol(expected)) {
        fail(quoted(expected));
    }
}

std::string TokenCursor::text() {
    if (!at(TokenKind::text)) {
        fail(quoted("\""));
    }
    return take().text;
}

std::string TokenCursor::variableName() {
    if (!at(TokenKind::word) ||
        std::find(reserved.begin(), reserved.end(), peek().text) != reserved.end()) {
        fail("variable name or property");
    }
    return take().text;
}

void TokenCursor::lineEnd() {
    if (!accept(TokenKind::lineEnd)) {
        fail("end of line");
    }
}

} // namespace pacelet::Script
