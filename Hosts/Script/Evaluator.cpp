#include "Hosts/Script/Evaluator.h"

#include <utility>

namespace pacelet::Script {

namespace {

std::string utf8(std::int64_t code) {
    constexpr std::int64_t lastASCII = 127;
    if (code < 0 || code > lastASCII) {
        throw ScriptError{cannotCoerce, "Can’t make " + std::to_string(code) + " into type text."};
    }
    return std::string(1, static_cast<char>(code));
}

/// What a "whose" looked for, as the message tells it.
std::string described(const Expression& condition) {
    if (const auto* all = std::get_if<Conjunction>(&condition.form)) {
        std::string text;
        for (const ExpressionPtr& part : all->parts) {
            text += (text.empty() ? "" : " and ") + described(*part);
        }
        return text;
    }
    const auto* comparison = std::get_if<Comparison>(&condition.form);
    const auto* property =
        comparison != nullptr ? std::get_if<Property>(&comparison->left->form) : nullptr;
    if (property == nullptr) {
        return "it";
    }
    const std::string name = property->name == PropertyName::id ? "id" : "mode";
    if (const auto* number = std::get_if<IntegerLiteral>(&comparison->right->form)) {
        return name + " = " + std::to_string(number->number);
    }
    const auto* text = std::get_if<TextLiteral>(&comparison->right->form);
    return name + " = \"" + (text != nullptr ? text->text : std::string{}) + "\"";
}

} // namespace

Value Evaluator::evaluate(const Expression& expression) const {
    return std::visit([this](const auto& form) { return value(form); }, expression.form);
}

bool Evaluator::isTrue(const Expression& expression) const {
    const Value result = evaluate(expression);
    const bool* const truth = std::get_if<bool>(&result.held);
    if (truth == nullptr) {
        throw ScriptError{cannotCoerce, "Can’t make " + asText(result) + " into type boolean."};
    }
    return *truth;
}

void Evaluator::set(const std::string& variable, const Expression& expression) {
    const auto* const sum = std::get_if<Concatenation>(&expression.form);
    const auto* const first =
        sum != nullptr ? std::get_if<Variable>(&sum->parts.front()->form) : nullptr;
    const auto known = variables_.find(variable);
    std::string* const text =
        known != variables_.end() ? std::get_if<std::string>(&known->second.held) : nullptr;
    if (first == nullptr || first->name != variable || text == nullptr) {
        set(variable, evaluate(expression));
        return;
    }
    std::string more;
    for (std::size_t part = 1; part < sum->parts.size(); ++part) {
        more += asText(evaluate(*sum->parts[part]));
    }
    *text += more;
}

void Evaluator::failInBrowser(std::int32_t number, const std::string& message) const {
    throw ScriptError{number, browser_->name() + " got an error: " + message};
}

std::size_t Evaluator::find(const WindowReference& reference) const {
    const std::size_t count = browser_->windowCount();
    const auto isAt = [&](std::size_t index) {
        return index < count && browser_->window(index).id == reference.window;
    };
    if (isAt(reference.index)) {
        return reference.index;
    }
    for (std::size_t index = 0; index < count; ++index) {
        if (isAt(index)) {
            return index;
        }
    }
    failInBrowser(noSuchObject, "Can’t get window id " + std::to_string(reference.window) + ".");
}

std::size_t Evaluator::find(const TabReference& reference) const {
    const std::size_t window = find(reference.window);
    const std::size_t count = browser_->window(window).tabs;
    const auto isAt = [&](std::size_t index) {
        return index < count && browser_->tab(window, index).id == reference.tab;
    };
    if (isAt(reference.index)) {
        return reference.index;
    }
    for (std::size_t index = 0; index < count; ++index) {
        if (isAt(index)) {
            return index;
        }
    }
    failInBrowser(noSuchObject, "Can’t get " + asText({reference}) + ".");
}

Value Evaluator::value(const Variable& form) const {
    const auto found = variables_.find(form.name);
    if (found == variables_.end()) {
        throw ScriptError{undefinedVariable, "The variable " + form.name + " is not defined."};
    }
    return found->second;
}

Value Evaluator::value(const Concatenation& form) const {
    std::string text;
    for (const ExpressionPtr& part : form.parts) {
        text += asText(evaluate(*part));
    }
    return {std::move(text)};
}

Value Evaluator::value(const Comparison& form) const {
    return {equal(evaluate(*form.left), evaluate(*form.right))};
}

Value Evaluator::value(const Conjunction& form) const {
    for (const ExpressionPtr& part : form.parts) {
        if (!isTrue(*part)) {
            return {false};
        }
    }
    return {true};
}

Value Evaluator::value(const AsText& form) const {
    return {asText(evaluate(*form.value))};
}

Value Evaluator::value(const CharacterID& form) const {
    const Value code = evaluate(*form.code);
    const auto* number = std::get_if<std::int64_t>(&code.held);
    return {utf8(number != nullptr ? *number : -1)};
}

Value Evaluator::value(const CountOf& form) const {
    const Value list = evaluate(*form.list);
    const auto* items = std::get_if<List>(&list.held);
    return {items != nullptr ? static_cast<std::int64_t>(items->size()) : std::int64_t{1}};
}

Value Evaluator::windowProperty(PropertyName name, const WindowReference& reference) const {
    const std::size_t index = find(reference);
    switch (name) {
    case PropertyName::id:
        return {browser_->window(index).id};
    case PropertyName::mode:
        return {std::string{browser_->window(index).mode}};
    case PropertyName::activeTabIndex:
        return {browser_->window(index).activeTabIndex};
    case PropertyName::name:
    case PropertyName::title:
        return {browser_->windowName(index)};
    case PropertyName::url:
        break;
    }
    failInBrowser(noSuchObject, "Can’t get URL of " + asText({reference}) + ".");
}

Value Evaluator::tabProperty(PropertyName name, const TabReference& reference) const {
    const std::size_t index = find(reference);
    const Tab tab = browser_->tab(find(reference.window), index);
    switch (name) {
    case PropertyName::id:
        return {tab.id};
    case PropertyName::title:
    case PropertyName::name:
        return {std::string{tab.title}};
    case PropertyName::url:
        return {std::string{tab.url}};
    case PropertyName::mode:
    case PropertyName::activeTabIndex:
        break;
    }
    failInBrowser(noSuchObject, "Can’t get a property of tab id " + std::to_string(tab.id) + ".");
}

Value Evaluator::value(const Property& form) const {
    if (form.of == nullptr && candidate_ == nullptr) {
        failInBrowser(noSuchObject, "Can’t get a property of the application.");
    }
    const Value owner = form.of != nullptr ? evaluate(*form.of) : *candidate_;
    if (const auto* reference = std::get_if<WindowReference>(&owner.held)) {
        return windowProperty(form.name, *reference);
    }
    if (const auto* reference = std::get_if<TabReference>(&owner.held)) {
        return tabProperty(form.name, *reference);
    }
    failInBrowser(noSuchObject, "Can’t get a property of " + asText(owner) + ".");
}

Value Evaluator::value(const Elements& form) const {
    List list;
    if (form.kind == ElementKind::window) {
        for (std::size_t index = 0; index < browser_->windowCount(); ++index) {
            list.push_back({WindowReference{browser_->window(index).id, index}});
        }
        return {std::move(list)};
    }
    const Value owner = form.of != nullptr ? evaluate(*form.of) : Value{};
    const auto* reference = std::get_if<WindowReference>(&owner.held);
    if (reference == nullptr) {
        failInBrowser(noSuchObject, "Can’t get every tab of " + asText(owner) + ".");
    }
    const std::size_t window = find(*reference);
    const std::size_t count = browser_->window(window).tabs;
    for (std::size_t index = 0; index < count; ++index) {
        list.push_back(
            {TabReference{{reference->window, window}, browser_->tab(window, index).id, index}});
    }
    return {std::move(list)};
}

Value Evaluator::value(const FrontWindow&) const {
    if (browser_->windowCount() == 0) {
        failInBrowser(invalidIndex, "Can’t get window 1. Invalid index.");
    }
    const std::size_t front = browser_->frontWindow();
    return {WindowReference{browser_->window(front).id, front}};
}

Value Evaluator::value(const Filter& form) const {
    const Value all = value(form.elements);
    List matching;
    for (const Value& item : std::get<List>(all.held)) {
        const Value* const outer = std::exchange(candidate_, &item);
        const bool matches = isTrue(*form.condition);
        candidate_ = outer;
        if (matches && form.firstOnly) {
            return item;
        }
        if (matches) {
            matching.push_back(item);
        }
    }
    if (form.firstOnly) {
        failInBrowser(noSuchObject, "Can’t get window 1 whose " + described(*form.condition) + ".");
    }
    return {std::move(matching)};
}

} // namespace pacelet::Script
