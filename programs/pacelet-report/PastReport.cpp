#include "programs/pacelet-report/PastReport.h"

#include "Core/Platform/HostWords.h"
#include "Core/Support/JsonWriter.h"
#include "Core/Usage/MinuteRecord.h"

#include <cmath>
#include <ctime>
#include <fmt/chrono.h>
#include <fmt/format.h>

namespace pacelet::report {

namespace {

std::int64_t minuteOf(TimePoint time) {
    return static_cast<std::int64_t>(unixTime(time) / secondsPerMinute);
}

std::time_t secondsOf(TimePoint time) {
    return static_cast<std::time_t>(unixTime(time));
}

std::time_t secondsOf(std::int64_t minute) {
    return static_cast<std::time_t>(minute * 60);
}

std::string utcText(std::time_t time) {
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(time));
}

std::vector<CauseSummary> summaryOf(const CauseJournal& journal, Seconds span, TimePoint now) {
    return journal.summary(minuteOf(now - span), minuteOf(now) + 1);
}

/// "24 hours", "7 days".
std::string spanText(Seconds span) {
    constexpr double day = 86400;
    const bool isInDays = span.count() > day && std::fmod(span.count(), day) == 0;
    return isInDays ? fmt::format("{:.0f} days", span.count() / day) : fullSpan(span);
}

} // namespace

std::string renderPast(const CauseJournal& journal, Seconds span, TimePoint now,
                       OperatingSystem system) {
    const auto causes = summaryOf(journal, span, now);
    if (causes.empty()) {
        return HostWords::say(system, "Pacelet noted nothing that slowed your Mac in the last {}.",
                              spanText(span));
    }
    std::string text =
        HostWords::say(system, "What slowed your Mac in the last {}:\n", spanText(span));
    for (const CauseSummary& sum : causes) {
        const Cause& cause = journal.causes()[sum.cause];
        text += fmt::format("\n{}  {}, {}, last {:%a %e %b %H:%M}  — {}", titleOf(cause),
                            shortSpan(sum.stood), timesText(sum.spells),
                            fmt::localtime(secondsOf(sum.lastMinute)), effectOf(cause.kind));
    }
    return text;
}

std::string renderPastJson(const CauseJournal& journal, Seconds span, TimePoint now) {
    JsonWriter json;
    json.beginObject();
    json.key("since").value(utcText(secondsOf(now - span)));
    json.key("until").value(utcText(secondsOf(now)));
    json.key("causes").beginArray();
    for (const CauseSummary& sum : summaryOf(journal, span, now)) {
        const Cause& cause = journal.causes()[sum.cause];
        json.beginObject();
        json.key("kind").value(rawValue(cause.kind));
        json.key("name").value(titleOf(cause));
        json.key("id").value(cause.id);
        json.key("severity").value(rawValue(sum.severity));
        json.key("seconds").value(std::round(sum.stood.count()));
        json.key("times").value(sum.spells);
        json.key("last").value(utcText(secondsOf(sum.lastMinute)));
        json.key("highest").value(sum.highest);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    return json.take();
}

} // namespace pacelet::report
