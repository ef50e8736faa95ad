#include "PaceletApp/FixActions/FixTexts.h"

#include "Core/Diagnosis/Rules.h"
#include "Core/Support/Precondition.h"
#include "PaceletApp/Support/Sentence.h"

#include <fmt/format.h>

namespace pacelet::FixTexts {

Question quit(std::string_view app) {
    return {.title = fmt::format("Quit {}?", app),
            .message = fmt::format("{} may ask you to save your work first.", app),
            .confirm = fmt::format("Quit {}", app)};
}

Question quitUnasked(std::string_view app) {
    return {.title = fmt::format("Quit {}?", app),
            .message = fmt::format(
                "{} can't be asked to save first. Unsaved work in it may be lost.", app),
            .confirm = fmt::format("Quit {}", app),
            .destructive = true};
}

Question forceQuit(std::string_view app) {
    return {.title = fmt::format("{} isn't responding.", app),
            .message = fmt::format("Force quit it? Unsaved work in {} will be lost.", app),
            .confirm = "Force Quit",
            .destructive = true};
}

Question rebuild() {
    return {.title = "Rebuild the Spotlight index?",
            .message =
                sentence("macOS will ask for your password. Search results may be incomplete "
                         "for a few hours while it rebuilds."),
            .confirm = "Rebuild"};
}

Question restart() {
    return {.title = sentence("Restart your Mac?"),
            .message = sentence("Save your work first. macOS will ask you to confirm."),
            .confirm = "Restart…"};
}

Question restartAtOnce() {
    return {.title = sentence("Restart your Mac?"),
            .message = sentence("Save your work first. Your Mac restarts at once, and nothing asks "
                                "you again."),
            .confirm = "Restart",
            .destructive = true};
}

std::string report(const FixOutcome& outcome, const std::optional<std::string>& app) {
    switch (outcome.kind()) {
    case FixOutcome::Kind::done:
        return "Done";
    case FixOutcome::Kind::alreadyGone:
        return app.value_or("It") + " already quit";
    case FixOutcome::Kind::stillRunning:
        return app.value_or("It") + " is still running";
    case FixOutcome::Kind::cancelled:
        return "Cancelled";
    case FixOutcome::Kind::refused:
        return app.value_or("That app") + " is protected, so Pacelet won't quit it.";
    case FixOutcome::Kind::failed:
        return "Couldn't finish: " + outcome.reason();
    }
    invariantBreach("an outcome is none of its kinds");
}

Question stuck(const std::optional<std::string>& app) {
    return {.title = sentence(Diagnosis::Rules::stuckHeadline, app.value_or("This app")),
            .message = {},
            .confirm = "Restart…",
            .cancel = "Not now"};
}

} // namespace pacelet::FixTexts
