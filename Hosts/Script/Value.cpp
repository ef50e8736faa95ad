#include "Hosts/Script/Value.h"

#include "Core/Support/Text.h"

namespace pacelet::Script {

namespace {

struct Printer {
    std::string operator()(std::monostate) const { return "missing value"; }
    std::string operator()(std::int64_t number) const { return std::to_string(number); }
    std::string operator()(bool truth) const { return truth ? "true" : "false"; }
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(const WindowReference& reference) const {
        return "window id " + std::to_string(reference.window);
    }
    std::string operator()(const TabReference& reference) const {
        return "tab id " + std::to_string(reference.tab) + " of window id " +
               std::to_string(reference.window.window);
    }
    std::string operator()(const List& list) const {
        std::string text;
        for (const Value& item : list) {
            text += text.empty() ? "" : ", ";
            text += asText(item);
        }
        return text;
    }
};

} // namespace

bool equal(const Value& left, const Value& right) {
    if (left.held.index() != right.held.index()) {
        return false;
    }
    if (const auto* text = std::get_if<std::string>(&left.held)) {
        return asciiLowercased(*text) == asciiLowercased(std::get<std::string>(right.held));
    }
    return asText(left) == asText(right);
}

std::string asText(const Value& value) {
    return std::visit(Printer{}, value.held);
}

} // namespace pacelet::Script
