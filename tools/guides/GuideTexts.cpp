#include "tools/guides/GuideTexts.h"

#include "Core/Support/EnumTable.h"

namespace pacelet::guides {

namespace {

struct VerdictAdvice {
    Verdict value;
    std::string_view text;
};
constexpr std::array<VerdictAdvice, 3> verdicts{{
    {Verdict::safe, "You can quit it whenever you like. Save your work in it first."},
    {Verdict::review, "It depends on whether you use what it belongs to. Find that out before you "
                      "stop it."},
    {Verdict::leave, "The system needs it. It mostly settles down by itself."},
}};

struct FixAdvice {
    FixID value;
    std::string_view text;
};
constexpr std::array<FixAdvice, 12> fixes{{
    {FixID::explain, "Read on here."},
    {FixID::openSpotlightSettings,
     "Choose what Spotlight looks through. Leave out folders that change all the time."},
    {FixID::openLoginItemsSettings, "Turn off what need not start when you log in."},
    {FixID::openDisplaySettings, "Fewer displays, and lower resolutions, leave less to draw."},
    {FixID::openAccessibilityDisplay, "Plain surfaces are easier to draw than see-through ones."},
    {FixID::openBatterySettings, "See whether Low Power Mode is what holds the machine back."},
    {FixID::openWiFiSettings, "See which network you are on, or move to another one."},
    {FixID::quitApp, "Pacelet asks first, and so does the app when there is work to save."},
    {FixID::rebuildSpotlightIndex,
     "For an index that is stuck. Spotlight reads everything anew, which takes a while."},
    {FixID::reviewTabs, "Close the tabs that you have open twice, and bring windows together."},
    {FixID::openTidyvault, "Make room on a disk that is nearly full."},
    {FixID::restartMac, "Clears what nothing else does. Save your work first."},
}};

} // namespace

std::string_view advice(Verdict verdict) {
    return rowOf(verdicts, verdict).text;
}

std::string_view advice(FixID fix) {
    return rowOf(fixes, fix).text;
}

} // namespace pacelet::guides
