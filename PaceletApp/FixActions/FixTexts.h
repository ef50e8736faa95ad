#pragma once

#include "Core/Fixes/FixOutcome.h"
#include "PaceletApp/Support/Question.h"

#include <optional>
#include <string>
#include <string_view>

namespace pacelet {

/// The words of all fixes.
namespace FixTexts {

Question quit(std::string_view app);
/// Of an application that nobody can ask.
Question quitUnasked(std::string_view app);
Question forceQuit(std::string_view app);
Question rebuild();
Question restart();
/// Where nobody asks once more.
Question restartAtOnce();

/// How it went, in a few words; `app` is the application that it was about, if any.
std::string report(const FixOutcome& outcome, const std::optional<std::string>& app);

/// What to do where the machine cannot be asked to restart.
inline constexpr std::string_view restartByHand = "Choose Apple menu > Restart.";
/// Where the machine's policy has refused, which `notAuthorized` tells.
inline constexpr std::string_view notAuthorized = "-1743";
inline constexpr std::string_view restartForbidden =
    "You may not restart this computer. Ask whoever looks after it.";

/// About an application that nothing could end.
Question stuck(const std::optional<std::string>& app);

} // namespace FixTexts

} // namespace pacelet
