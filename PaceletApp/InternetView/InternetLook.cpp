#include "PaceletApp/InternetView/InternetLook.h"

#include "Core/Diagnosis/InternetDiagnosis.h"
#include "Core/Support/EnumTable.h"
#include "PaceletApp/InternetView/RelativeDate.h"
#include "PaceletApp/InternetView/SavedSpeed.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <array>
#include <string_view>

namespace pacelet {

namespace {

struct LinkRow {
    LinkType value;
    std::string_view name;
    std::string_view symbol;
};
constexpr std::array<LinkRow, 4> links{{
    {LinkType::wifi, "Wi-Fi", "wifi"},
    {LinkType::ethernet, "Wired connection", "network"},
    {LinkType::other, "Connected", "globe"},
    {LinkType::offline, "Offline", "wifi.slash"},
}};

} // namespace

std::vector<Finding> findings(const InternetState& state, const AppName& appName, TimePoint now) {
    if (!state.link) {
        return {};
    }
    return InternetDiagnosis::run(*state.link, state.wifi, recent(state.speed, now), state.usage,
                                  appName, state.abilities);
}

InternetLook internetLook(const InternetState& state, bool healthy, TimePoint now) {
    InternetLook look;
    look.checking = !state.link;
    if (state.link) {
        look.link = qtText(rowOf(links, *state.link).name);
        look.linkSymbol = qtText(rowOf(links, *state.link).symbol);
    }
    if (state.link && healthy) {
        look.healthyNote =
            qtText(state.speed ? "Wi-Fi signal and recent speed look fine."
                               : "Run a speed test to check your internet line too.");
    }
    look.testing = state.testing;
    look.speedNote =
        qtText(state.speed ? "Last tested " + relativeDate(now - state.speed->measuredAt)
                           : "See your real download and upload speed.");
    look.testError = qtText(state.testError.value_or(""));
    look.trafficLoaded = state.usageLoaded;
    look.trafficIdle = state.usageLoaded && state.usage.empty();
    return look;
}

Question testQuestion(bool isMetered) {
    Question question{
        .title = sentence("Test your internet speed?"),
        .message = sentence(
            "Pacelet uses Apple's built-in test against Apple's servers. It takes about 25 seconds "
            "and can use several hundred MB of data on fast connections."),
        .confirm = "Run test"};
    if (isMetered) {
        question.message += " Your connection is metered, so this may cost you.";
    }
    return question;
}

} // namespace pacelet
