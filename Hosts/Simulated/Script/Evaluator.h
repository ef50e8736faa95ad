#pragma once

#include "Hosts/Simulated/Model/Browser.h"
#include "Hosts/Simulated/Script/Syntax.h"
#include "Hosts/Simulated/Script/Value.h"

#include <map>
#include <optional>

namespace pacelet::Simulated::OSAScript {

/// Works out what expressions mean, in a browser or outside of one. Changes nothing. All operations
/// throw `ScriptError`, with no range: that is the statement's.
class Evaluator {
public:
    Value evaluate(const Expression& expression) const;
    bool isTrue(const Expression& expression) const;

    void set(const std::string& variable, Value value) {
        variables_.insert_or_assign(variable, std::move(value));
    }

    /// The browser that is addressed from here on, or null.
    void address(Browser* browser) { browser_ = browser; }
    Browser* addressed() const { return browser_; }

    // The object, which must be there still.
    TabWindow& window(const WindowReference& reference) const;
    Tab& tab(const TabReference& reference) const;

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

    Value windowProperty(PropertyName name, const TabWindow& window) const;
    Value tabProperty(PropertyName name, const Tab& tab) const;

    Browser* browser_ = nullptr;
    std::map<std::string, Value> variables_;
    mutable const Value* candidate_ = nullptr; ///< what a filter looks at
};

} // namespace pacelet::Simulated::OSAScript
