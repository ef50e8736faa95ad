#include "Hosts/Script/ExpressionParser.h"

#include "Core/Support/Text.h"

#include <array>
#include <utility>

namespace pacelet::Script {

namespace {

struct PropertyTerm {
    std::string_view word;
    PropertyName name;
};

constexpr std::array<PropertyTerm, 5> propertyTerms{{
    {"id", PropertyName::id},
    {"mode", PropertyName::mode},
    {"name", PropertyName::name},
    {"title", PropertyName::title},
    {"URL", PropertyName::url},
}};

template<typename Form>
ExpressionPtr make(Form form) {
    auto made = std::make_unique<Expression>();
    made->form = std::move(form);
    return made;
}

} // namespace

ExpressionPtr ExpressionParser::expression() {
    const TokenCursor::Nesting nesting{tokens_};
    Conjunction all;
    do {
        all.parts.push_back(comparison());
    } while (tokens_.acceptWord("and"));
    return all.parts.size() == 1 ? std::move(all.parts.front()) : make(std::move(all));
}

ExpressionPtr ExpressionParser::comparison() {
    ExpressionPtr left = coerced();
    if (tokens_.acceptWord("is") || tokens_.acceptSymbol("=")) {
        return make(Comparison{std::move(left), coerced()});
    }
    return left;
}

ExpressionPtr ExpressionParser::coerced() {
    ExpressionPtr value = joined();
    if (tokens_.acceptWord("as")) {
        tokens_.words({"text"});
        return make(AsText{std::move(value)});
    }
    return value;
}

ExpressionPtr ExpressionParser::joined() {
    Concatenation all;
    do {
        all.parts.push_back(reference());
    } while (tokens_.acceptSymbol("&"));
    return all.parts.size() == 1 ? std::move(all.parts.front()) : make(std::move(all));
}

ExpressionPtr ExpressionParser::reference() {
    const TokenCursor::Nesting nesting{tokens_};
    if (tokens_.at(TokenKind::text)) {
        return make(TextLiteral{tokens_.take().text});
    }
    if (tokens_.at(TokenKind::integer)) {
        return integer();
    }
    if (tokens_.acceptSymbol("(")) {
        ExpressionPtr inner = expression();
        tokens_.symbol(")");
        return inner;
    }
    if (tokens_.atWord("character") && tokens_.atWord("id", 1)) {
        tokens_.words({"character", "id"});
        return make(CharacterID{reference()});
    }
    if (tokens_.acceptWord("count")) {
        tokens_.words({"of"});
        return make(CountOf{reference()});
    }
    if (browser_) {
        if (ExpressionPtr object = browserObject()) {
            return object;
        }
    }
    return make(Variable{tokens_.variableName()});
}

ExpressionPtr ExpressionParser::integer() {
    const auto number = parseInteger<std::int64_t>(tokens_.peek().text);
    if (!number) {
        tokens_.fail("a smaller number");
    }
    tokens_.take();
    return make(IntegerLiteral{*number});
}

ExpressionPtr ExpressionParser::browserObject() {
    if (tokens_.acceptWord("windows")) {
        return make(Elements{ElementKind::window, nullptr});
    }
    if (tokens_.acceptWord("tabs")) {
        return make(Elements{ElementKind::tab, owner()});
    }
    if (tokens_.acceptWord("front")) {
        tokens_.words({"window"});
        return make(FrontWindow{});
    }
    if (tokens_.acceptWord("first")) {
        return filter(true);
    }
    if (tokens_.acceptWord("every")) {
        return filter(false);
    }
    return property();
}

/// "of" and what follows, or null.
ExpressionPtr ExpressionParser::owner() {
    return tokens_.acceptWord("of") ? reference() : nullptr;
}

ExpressionPtr ExpressionParser::filter(bool firstOnly) {
    Filter read;
    read.firstOnly = firstOnly;
    if (tokens_.acceptWord("tab")) {
        read.elements.kind = ElementKind::tab;
    } else {
        tokens_.words({"window"});
    }
    read.elements.of = owner();
    tokens_.words({"whose"});
    read.condition = expression();
    return make(std::move(read));
}

ExpressionPtr ExpressionParser::property() {
    if (tokens_.acceptWord("active")) {
        tokens_.words({"tab", "index"});
        return make(Property{PropertyName::activeTabIndex, owner()});
    }
    for (const PropertyTerm& term : propertyTerms) {
        if (tokens_.acceptWord(term.word)) {
            return make(Property{term.name, owner()});
        }
    }
    return nullptr;
}

} // namespace pacelet::Script
