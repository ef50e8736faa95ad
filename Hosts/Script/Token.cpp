#include "Hosts/Script/Token.h"

namespace pacelet::Script {

namespace {

constexpr std::string_view eventOpening = "«";
constexpr std::string_view eventClosing = "»";

bool isLetter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           character == '_';
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

class Lexer {
public:
    explicit Lexer(std::string_view script)
        : script_{script} {}

    std::vector<Token> run() {
        while (at_ < script_.size()) {
            step();
        }
        add(TokenKind::lineEnd, {}, at_);
        add(TokenKind::end, {}, at_);
        return std::move(tokens_);
    }

private:
    void step() {
        const char next = script_[at_];
        const std::size_t begin = at_;
        if (next == ' ' || next == '\t') {
            ++at_;
        } else if (next == '\n' || next == '\r') {
            ++at_;
            add(TokenKind::lineEnd, {}, begin);
        } else if (next == '"') {
            readText();
        } else if (isLetter(next)) {
            readWhile(TokenKind::word, [](char each) { return isLetter(each) || isDigit(each); });
        } else if (isDigit(next)) {
            readWhile(TokenKind::integer, isDigit);
        } else if (script_.substr(at_).starts_with(eventOpening)) {
            readEvent();
        } else if (std::string_view{"&(){}:=,"}.find(next) != std::string_view::npos) {
            ++at_;
            add(TokenKind::symbol, std::string(1, next), begin);
        } else {
            throw ScriptError{
                unknownCharacter, "A unknown token can’t go here.", {begin, begin + 1}, true};
        }
    }

    void add(TokenKind kind, std::string text, std::size_t begin) {
        tokens_.push_back({kind, std::move(text), {begin, at_}});
    }

    template<typename Belongs>
    void readWhile(TokenKind kind, Belongs belongs) {
        const std::size_t begin = at_;
        while (at_ < script_.size() && belongs(script_[at_])) {
            ++at_;
        }
        add(kind, std::string{script_.substr(begin, at_ - begin)}, begin);
    }

    [[noreturn]] void unended(std::size_t begin, std::string_view found) const {
        throw ScriptError{syntaxError,
                          "Expected “" + std::string{found} + "” but found end of script.",
                          {begin, script_.size()},
                          true};
    }

    static char escaped(char character) {
        switch (character) {
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return character;
        }
    }

    void readText() {
        const std::size_t begin = at_++;
        std::string text;
        while (at_ < script_.size() && script_[at_] != '"') {
            if (script_[at_] != '\\') {
                text += script_[at_++];
                continue;
            }
            if (at_ + 1 == script_.size()) {
                break;
            }
            const char next = script_[at_ + 1];
            if (std::string_view{"nrt\\\""}.find(next) == std::string_view::npos) {
                throw ScriptError{
                    syntaxError, "Expected “\"” but found unknown token.", {at_, at_ + 2}, true};
            }
            text += escaped(next);
            at_ += 2;
        }
        if (at_ >= script_.size() || script_[at_] != '"') {
            unended(begin, "\"");
        }
        ++at_;
        add(TokenKind::text, std::move(text), begin);
    }

    void readEvent() {
        const std::size_t begin = at_;
        const std::size_t close = script_.find(eventClosing, at_);
        if (close == std::string_view::npos) {
            unended(begin, eventClosing);
        }
        const std::size_t inside = begin + eventOpening.size();
        at_ = close + eventClosing.size();
        add(TokenKind::event, std::string{script_.substr(inside, close - inside)}, begin);
    }

    std::string_view script_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
};

} // namespace

std::vector<Token> tokenize(std::string_view script) {
    return Lexer{script}.run();
}

} // namespace pacelet::Script
