#pragma once

#include "Hosts/Script/Token.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace pacelet::Script {

/// A place in the tokens of a script, and how deep its constructs are nested there.
class TokenCursor {
public:
    explicit TokenCursor(std::string_view script)
        : tokens_{tokenize(script)} {}

    const Token& peek(std::size_t ahead = 0) const;
    bool at(TokenKind kind) const { return peek().kind == kind; }
    bool atWord(std::string_view word, std::size_t ahead = 0) const;

    /// The next token; the last one again and again.
    Token take();

    // Go on only when that is what comes next.
    bool accept(TokenKind kind);
    bool acceptWord(std::string_view word);
    bool acceptSymbol(std::string_view symbol);

    // Go on, or throw `ScriptError`.
    void words(std::initializer_list<std::string_view> expected);
    void symbol(std::string_view expected);
    std::string text();
    std::string variableName();
    void lineEnd();

    /// Throws what the compiler says when something else was expected here.
    [[noreturn]] void fail(const std::string& expected) const;

    /// Where the token before this place ends.
    std::size_t endOfLast() const { return next_ == 0 ? 0 : tokens_[next_ - 1].range.end; }

    /// One construct inside another, for as long as it lives.
    class Nesting {
    public:
        explicit Nesting(TokenCursor& cursor);
        ~Nesting() { --cursor_.depth_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        TokenCursor& cursor_;
    };

private:
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int depth_ = 0;
};

} // namespace pacelet::Script
