#include "Hosts/Script/Interpreter.h"

#include "Hosts/Script/Evaluator.h"
#include "Hosts/Script/Syntax.h"

#include <fmt/format.h>
#include <optional>
#include <utility>

namespace pacelet::Script {

namespace {

class Interpreter {
public:
    explicit Interpreter(System& system)
        : system_{system} {}

    /// What the tool prints.
    std::string run(const Block& script) {
        runBlock(script);
        if (resultVariable_ != nullptr) {
            result_ = evaluator_.evaluate({Variable{*resultVariable_}});
        }
        return result_ ? asText(*result_) + "\n" : std::string{};
    }

private:
    void runBlock(const Block& block) {
        for (const Statement& statement : block) {
            if (returned_) {
                return;
            }
            try {
                std::visit([this](const auto& form) { perform(form); }, statement.form);
            } catch (const ScriptError& error) {
                // The innermost statement is the one that failed.
                const bool placed = error.range().end != 0;
                throw ScriptError{error.number(), error.what(),
                                  placed ? error.range() : statement.range};
            }
        }
    }

    void perform(const Set& form) {
        evaluator_.set(form.variable, *form.value);
        result_.reset();
        resultVariable_ = &form.variable;
    }

    /// What the script has come to so far.
    void finish(std::optional<Value> result) {
        result_ = std::move(result);
        resultVariable_ = nullptr;
    }

    void perform(const Return& form) {
        finish(evaluator_.evaluate(*form.value));
        returned_ = true;
    }

    void perform(const Tell& form) {
        Application* const before = evaluator_.addressed();
        if (form.byIdentifier) {
            evaluator_.address(&system_.application(form.application));
            runBlock(form.body);
        } else {
            application_ = form.application;
            runBlock(form.body);
        }
        evaluator_.address(before);
    }

    void perform(const Repeat& form) {
        const Value list = evaluator_.evaluate(*form.list);
        const auto* items = std::get_if<List>(&list.held);
        if (items == nullptr) {
            throw ScriptError{noSuchObject, "Can’t get every item of " + asText(list) + "."};
        }
        for (const Value& item : *items) {
            evaluator_.set(form.variable, item);
            runBlock(form.body);
            if (returned_) {
                return;
            }
        }
    }

    void perform(const If& form) {
        if (evaluator_.isTrue(*form.condition)) {
            runBlock(form.body);
        }
    }

    void perform(const Close& form) {
        close(evaluator_.evaluate(*form.what));
        finish({});
    }

    void close(const Value& what) {
        if (const auto* list = std::get_if<List>(&what.held)) {
            for (const Value& item : *list) {
                close(item);
            }
        } else if (const auto* tab = std::get_if<TabReference>(&what.held)) {
            evaluator_.find(*tab);
            evaluator_.addressed()->closeTab(tab->window.window, tab->tab);
        } else if (const auto* window = std::get_if<WindowReference>(&what.held)) {
            evaluator_.find(*window);
            evaluator_.addressed()->closeWindow(window->window);
        } else {
            evaluator_.failInBrowser(notUnderstood,
                                     asText(what) + " doesn’t understand the “close” message.");
        }
    }

    void perform(const MakeTab& form) {
        const Value target = evaluator_.evaluate(*form.window);
        const auto* reference = std::get_if<WindowReference>(&target.held);
        if (reference == nullptr) {
            evaluator_.failInBrowser(noSuchObject, "Can’t get tabs of " + asText(target) + ".");
        }
        const std::string url = asText(evaluator_.evaluate(*form.url));
        evaluator_.find(*reference);
        const std::int64_t tab = evaluator_.addressed()->openTab(reference->window, url);
        finish(Value{TabReference{*reference, tab}});
    }

    void perform(const MakeWindow&) {
        finish(Value{WindowReference{evaluator_.addressed()->openWindow()}});
    }

    void perform(const Activate&) {
        evaluator_.addressed()->activate();
        finish({});
    }

    void perform(const SendEvent& form) {
        system_.sendEvent(application_, form.code);
        finish({});
    }

    void perform(const ShellScript& form) {
        const std::string command = asText(evaluator_.evaluate(*form.command));
        finish(Value{system_.runCommand(command, form.asAdministrator)});
    }

    System& system_;
    Evaluator evaluator_;
    std::string application_;
    std::optional<Value> result_;
    const std::string* resultVariable_ = nullptr; ///< whose value is the result, if not null
    bool returned_ = false;
};

Shell::Output failed(const ScriptError& error) {
    return {1,
            {},
            fmt::format("{}:{}: {}: {} ({})\n", error.range().begin, error.range().end,
                        error.isSyntax() ? "syntax error" : "execution error", error.what(),
                        error.number())};
}

} // namespace

Shell::Output run(System& system, std::string_view script) {
    try {
        const Block block = parse(script);
        system.begin();
        return {0, Interpreter{system}.run(block), {}};
    } catch (const ScriptError& error) {
        return failed(error);
    }
}

} // namespace pacelet::Script
