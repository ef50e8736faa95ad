#pragma once

#include "Hosts/Script/Token.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace pacelet::Script {

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

enum class PropertyName { id, mode, activeTabIndex, name, title, url };
enum class ElementKind { window, tab };

struct TextLiteral {
    std::string text;
};
struct IntegerLiteral {
    std::int64_t number = 0;
};
struct Variable {
    std::string name;
};
struct Concatenation {
    std::vector<ExpressionPtr> parts;
};
struct Comparison {
    ExpressionPtr left;
    ExpressionPtr right;
};
struct Conjunction {
    std::vector<ExpressionPtr> parts;
};
struct AsText {
    ExpressionPtr value;
};
struct CharacterID {
    ExpressionPtr code;
};
struct CountOf {
    ExpressionPtr list;
};
/// Of the object that a filter looks at when `of` is null.
struct Property {
    PropertyName name = PropertyName::id;
    ExpressionPtr of;
};
/// Of the application when `of` is null.
struct Elements {
    ElementKind kind = ElementKind::window;
    ExpressionPtr of;
};
struct FrontWindow {};
/// "first window whose …", "every tab of … whose …"
struct Filter {
    bool firstOnly = false;
    Elements elements;
    ExpressionPtr condition;
};

struct Expression {
    std::variant<TextLiteral, IntegerLiteral, Variable, Concatenation, Comparison, Conjunction,
                 AsText, CharacterID, CountOf, Property, Elements, FrontWindow, Filter>
        form;
};

struct Statement;
using Block = std::vector<Statement>;

struct Set {
    std::string variable;
    ExpressionPtr value;
};
struct Return {
    ExpressionPtr value;
};
/// Addresses an application, by its bundle identifier or by its name.
struct Tell {
    std::string application;
    bool byIdentifier = false;
    Block body;
};
struct Repeat {
    std::string variable;
    ExpressionPtr list;
    Block body;
};
struct If {
    ExpressionPtr condition;
    Block body;
};
struct Close {
    ExpressionPtr what;
};
struct MakeTab {
    ExpressionPtr window;
    ExpressionPtr url;
};
struct MakeWindow {};
struct Activate {};
struct SendEvent {
    std::string code;
};
struct ShellScript {
    ExpressionPtr command;
    bool asAdministrator = false;
};

struct Statement {
    std::variant<Set, Return, Tell, Repeat, If, Close, MakeTab, MakeWindow, Activate, SendEvent,
                 ShellScript>
        form;
    Range range;
};

/// Reads the whole script. The terms of a browser are known only where a browser is addressed by
/// its identifier. Throws `ScriptError`.
Block parse(std::string_view script);

} // namespace pacelet::Script
