#include "Hosts/Simulated/Script/OSAScript.h"

#include "Hosts/Simulated/Script/Evaluator.h"
#include "Hosts/Simulated/Script/Syntax.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>
#include <utility>

namespace pacelet::Simulated::OSAScript {

namespace {

constexpr std::string_view rebuildCommand = "/usr/bin/mdutil -E /";
constexpr std::string_view restartEvent = "event aevtrrst";
constexpr std::int32_t commandNotFound = 127;

/// How long a new index keeps Spotlight busy, and how much.
constexpr Seconds rebuildTime{40.0 * 60};
constexpr double rebuildLoad = 70;

/// Starts the index anew: whatever was stuck is at work again and will be done.
void rebuildIndex(World& world) {
    ++world.records.indexRebuilds;
    for (const std::string_view name : {"mds_stores", "mds", "corespotlightd"}) {
        if (Process* const process = world.processes.find(name)) {
            process->setLoad({.percent = name == "mds_stores" ? rebuildLoad : 8,
                              .swing = 0.3,
                              .until = world.time.awake + rebuildTime,
                              .percentAfter = 0.5},
                             world.time.awake);
        }
    }
}

class Interpreter {
public:
    explicit Interpreter(World& world) : world_{world} {}

    /// What the tool prints.
    std::string run(const Block& script) {
        runBlock(script);
        if (!result_) {
            return {};
        }
        return asText(*result_) + "\n";
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
        result_ = evaluator_.evaluate(*form.value);
        evaluator_.set(form.variable, *result_);
    }

    void perform(const Return& form) {
        result_ = evaluator_.evaluate(*form.value);
        returned_ = true;
    }

    void perform(const Tell& form) {
        Browser* const before = evaluator_.addressed();
        if (form.byIdentifier) {
            evaluator_.address(&findBrowser(form.application));
            runBlock(form.body);
        } else {
            application_ = form.application;
            runBlock(form.body);
        }
        evaluator_.address(before);
    }

    /// Throws when the application is not there, does not run or must not be controlled.
    Browser& findBrowser(const std::string& identifier) {
        const InstalledApp* const app = findInstalled(world_, identifier);
        if (app == nullptr) {
            throw ScriptError{noSuchObject, "Can’t get application id \"" + identifier + "\"."};
        }
        const auto browser = world_.browsers.find(identifier);
        if (browser == world_.browsers.end()) {
            throw ScriptError{notRunning, app->name + " got an error: Application isn’t running."};
        }
        const auto refused = [&](const AutomationRefused& failure) {
            return failure.bundleIdentifier.empty() || failure.bundleIdentifier == identifier;
        };
        if (world_.failures.find<AutomationRefused>(refused) != nullptr) {
            throw ScriptError{notAuthorized,
                              "Not authorized to send Apple events to " + app->name + "."};
        }
        return browser->second;
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
        result_.reset();
    }

    void close(const Value& what) {
        if (const auto* list = std::get_if<List>(&what.held)) {
            for (const Value& item : *list) {
                close(item);
            }
        } else if (const auto* tab = std::get_if<TabReference>(&what.held)) {
            evaluator_.tab(*tab);
            evaluator_.addressed()->closeTab(tab->window, tab->tab);
        } else if (const auto* window = std::get_if<WindowReference>(&what.held)) {
            evaluator_.window(*window);
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
        std::string url = asText(evaluator_.evaluate(*form.url));
        const Tab& tab =
            evaluator_.addressed()->openTab(evaluator_.window(*reference), std::move(url));
        result_ = Value{TabReference{reference->window, tab.id}};
    }

    void perform(const MakeWindow&) {
        result_ = Value{WindowReference{evaluator_.addressed()->openWindow().id}};
    }

    void perform(const Activate&) { result_.reset(); }

    void perform(const SendEvent& form) {
        if (application_ != "loginwindow" || form.code != restartEvent) {
            throw ScriptError{notUnderstood, application_ +
                                                 " got an error: " + "doesn’t understand the “" +
                                                 form.code + "” message."};
        }
        refuseIfCancelled();
        ++world_.records.restartRequests;
        result_.reset();
    }

    void perform(const ShellScript& form) {
        const std::string command = asText(evaluator_.evaluate(*form.command));
        if (form.asAdministrator) {
            refuseIfCancelled();
        }
        if (command != rebuildCommand) {
            const std::string program = command.substr(0, command.find(' '));
            throw ScriptError{commandNotFound, "sh: " + program + ": command not found"};
        }
        if (!form.asAdministrator) {
            throw ScriptError{1, "Error: unable to perform operation."};
        }
        rebuildIndex(world_);
        result_ = Value{std::string{"/:\n\tIndexing enabled. "}};
    }

    void refuseIfCancelled() const {
        if (world_.failures.has<PromptCancelled>()) {
            throw ScriptError{userCancelled, "User canceled."};
        }
    }

    World& world_;
    Evaluator evaluator_;
    std::string application_;
    std::optional<Value> result_;
    bool returned_ = false;
};

Shell::Output failed(const ScriptError& error) {
    return {1,
            {},
            fmt::format("{}:{}: {}: {} ({})\n", error.range().begin, error.range().end,
                        error.isSyntax() ? "syntax error" : "execution error", error.what(),
                        error.number())};
}

Shell::Output execute(World& world, std::string_view script) {
    try {
        const Block block = parse(script);
        if (const auto* failure =
                world.failures.find<ScriptFails>([](const auto&) { return true; })) {
            throw ScriptError{failure->number, failure->message, {0, script.size()}};
        }
        return {0, Interpreter{world}.run(block), {}};
    } catch (const ScriptError& error) {
        return failed(error);
    }
}

} // namespace

Shell::Output run(World& world, std::string_view script) {
    Shell::Output output = execute(world, script);
    // Also what a script did before it failed shows in the processes.
    for (const auto& browser : world.browsers) {
        settle(world, browser.first);
    }
    return output;
}

} // namespace pacelet::Simulated::OSAScript
