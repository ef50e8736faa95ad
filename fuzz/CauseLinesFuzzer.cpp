#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"
#include "Core/Usage/CauseLines.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/MinuteRecord.h"

#include <limits>
#include <string>
#include <string_view>

// What a file's text holds is the sum of what its lines hold, and can be summed up and remembered.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    constexpr auto always = std::numeric_limits<std::int64_t>::min();
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    std::string text{input};
    CauseJournal journal;
    CauseLines::decode(text, always, journal);

    CauseJournal byLine;
    forEachLine(input, [&](std::string_view line) {
        std::string alone{line};
        CauseLines::decode(alone, always, byLine);
    });
    precondition(journal.entries().empty() ||
                     (journal.entries() == byLine.entries() && journal.causes() == byLine.causes()),
                 "lines influence each other");

    // A note comes back unchanged when it is written again.
    for (const CauseJournal::Entry& entry : journal.entries()) {
        const CauseMinute minute{entry.t,
                                 {{journal.causes()[entry.cause], entry.severity, entry.seconds,
                                   entry.mean, entry.highest}}};
        std::string line = CauseLines::encode(minute);
        CauseJournal again;
        CauseLines::decode(line, always, again);
        CauseJournal::Entry first = entry;
        first.cause = 0;
        precondition(again.entries() == std::vector{first} &&
                         again.causes().front() == journal.causes()[entry.cause],
                     "a note changed on its way through a file");
    }

    journal.sort();
    const auto& entries = journal.entries();
    if (entries.empty()) {
        return 0;
    }
    const std::int64_t end = entries.back().t + 1;
    double stood = 0;
    for (const CauseSummary& each : journal.summary(entries.front().t, end)) {
        precondition(each.spells > 0 && each.stood > Seconds{0}, "a cause without a spell");
        stood += each.stood.count();
    }
    precondition(stood <= 60.001 * static_cast<double>(entries.size()), "longer than its minutes");
    constexpr std::int64_t month = 30 * minutesPerDay;
    for (const auto& parts : journal.shares(end - month, end, 96)) {
        for (const float part : parts) {
            precondition(part >= 0 && part <= 1, "a share that is none");
        }
    }
    CauseWatch watch;
    watch.remember(journal);
    watch.latest(fromUnixTime(static_cast<double>(end) * 60));
    return 0;
}
