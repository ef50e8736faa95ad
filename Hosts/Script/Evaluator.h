#pragma once

#include "Hosts/Script/Application.h"
#include "Hosts/Script/Syntax.h"
#include "Hosts/Script/Value.h"

#include <map>
#include <optional>

namespace pacelet::Script {

/// Works out what expressions mean, in a browser or outside of one. Changes nothing. All operations
/// throw `ScriptError`, with no range: that is the statement's.
class Evaluator {
public:
    Value evaluate(const Expression& expression) const;
    bool isTrue(const Expression& expression) const;

    void set(const std::string& variable, Value value) {
        variables_.insert_or_assign(variable, std::move(value));
    }
    /// The same with what an expression means. A text that is only added to is not copied.
    void set(const std::string& variable, const Expression& expression);

    /// The browser that is addressed from here on, or null.
    void address(Application* browser) { browser_ = browser; }
    Application* addressed() const { return browser_; }

    // Where the object is; it must be there still.
    std::size_t find(const WindowReference& reference) const;
    std::size_t find(const TabReference& reference) const;

    [[noreturn]] void failInBrowser(std::int32_t number, const std::string& message) const;

private:
    Value value(const TextLiteral& form) const { return {form.text}; }
    Value value(const IntegerLiteral& form) const { return {form.number}; }
    Value value(const Variable& form) const;
    Value value(const Concatenation& form) const;
    Value value(const Comparison& form) const;
    Value value(const Conjunction& form) const;
    Value value(const AsText& form) const;
    Value value(const CharacterID& form) const;
    Value value(const CountOf& form) const;
    Value value(const Property& form) const;
    Value value(const Elements& form) const;
    Value value(const FrontWindow& form) const;
    Value value(const Filter& form) const;

    Value windowProperty(PropertyName name, const WindowReference& reference) const;
    Value tabProperty(PropertyName name, const TabReference& reference) const;

    Application* browser_ = nullptr;
    std::map<std::string, Value> variables_;
    mutable const Value* candidate_ = nullptr; ///< what a filter looks at
};

} // namespace pacelet::Script
