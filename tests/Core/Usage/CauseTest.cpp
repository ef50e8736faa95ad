#include "Core/Usage/CauseLines.h"
#include "Core/Usage/CauseStore.h"
#include "Core/Usage/CauseWatch.h"
#include "Core/Usage/MinuteRecord.h"
#include "tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <limits>

namespace pacelet::causes {
namespace {

using ::testing::ElementsAre;

const Cause spotlight{FindingKind::spotlight, "", ""};
const Cause safari{FindingKind::cpuHog, "/Applications/Safari.app", "Safari"};
constexpr std::int64_t day = 20'000 * minutesPerDay;

TimePoint at(double seconds) {
    return fromUnixTime(static_cast<double>(day) * secondsPerMinute + seconds);
}

FoundCause found(const Cause& cause, double figure, Severity severity = Severity::low) {
    return {cause, severity, figure};
}

using Causes = std::vector<FoundCause>;

TEST(CauseWatch, CountsTheTimeSinceTheLookBefore) {
    CauseWatch watch;
    EXPECT_TRUE(watch.add(Causes{found(safari, 90)}, at(20)).empty()) << "nobody looked before";
    watch.add(Causes{found(safari, 100)}, at(50));
    EXPECT_THAT(watch.add(Causes{found(safari, 200, Severity::high), found(spotlight, 60)}, at(80)),
                ElementsAre(CauseMinute{day,
                                        {{safari, Severity::high, 40, 125, 200},
                                         {spotlight, Severity::low, 10, 60, 60}}}));
    // A look may lie more than a minute after the one before it, but says nothing of a long gap.
    EXPECT_THAT(watch.add(Causes{found(spotlight, 70)}, at(165)).size(), 1U);
    EXPECT_THAT(watch.add({}, at(255.1)),
                ElementsAre(CauseMinute{day + 2, {{spotlight, Severity::low, 45, 70, 70}}}));
    watch.add(Causes{found(safari, 90)}, at(400));
    EXPECT_TRUE(watch.add({}, at(430)).empty());
    // The clock was set back.
    watch.add(Causes{found(safari, 90)}, at(200));
    EXPECT_TRUE(watch.add({}, at(260)).empty()) << "a quiet minute is none to note";
    CauseWatch brief;
    brief.add({}, at(59.996));
    EXPECT_THAT(brief.add(Causes{found(safari, 90)}, at(60.2)),
                ElementsAre(CauseMinute{day, {{safari, Severity::low, 0.01, 90, 90}}}));
}

TEST(CauseWatch, RemembersTheLatestSpellForAnHour) {
    CauseWatch watch;
    const auto look = [&](const Causes& causes, double seconds) { watch.add(causes, at(seconds)); };
    look({found(spotlight, 60)}, 0);
    look({found(spotlight, 60)}, 30);
    EXPECT_EQ(watch.latest(at(30)), std::nullopt) << "too short to speak of";
    look({found(spotlight, 60), found(safari, 90)}, 60);
    look({found(safari, 90)}, 120);
    look({}, 180);
    EXPECT_EQ(watch.latest(at(180)), (Spell{safari, at(120), Seconds{90}}));
    // Away for five minutes, it did not end.
    look({}, 360);
    look({found(spotlight, 60)}, 390);
    EXPECT_EQ(watch.latest(at(390)), (Spell{spotlight, at(390), Seconds{90}}));
    EXPECT_EQ(watch.latest(at(390 + 3600)), watch.latest(at(390)));
    EXPECT_EQ(watch.latest(at(390 + 3601)), std::nullopt);
    EXPECT_EQ(watch.latest(at(380))->cause, safari) << "the clock was set back";

    CauseJournal earlier;
    earlier.add({day - 1, earlier.placeOf(spotlight.kind, "", ""), Severity::low, 60, 1, 1});
    watch.remember(earlier);
    EXPECT_EQ(watch.latest(at(390)), (Spell{spotlight, at(390), Seconds{150}}));
    look({}, 1000);
    look({found(spotlight, 60)}, 1060);
    EXPECT_EQ(watch.latest(at(1060)), (Spell{spotlight, at(1060), Seconds{60}}));
    watch.forget();
    watch.remember(earlier);
    EXPECT_EQ(watch.latest(at(0)), (Spell{spotlight, at(0), Seconds{60}}));
}

TEST(CausesOf, NameEachCauseOnceWithoutItsPid) {
    ProcessGroup host{.id = "/Applications/UTM.app", .displayName = "UTM"};
    host.appPath = host.id;
    host.memoryBytes = 7;
    const ProcessGroup worker{.id = "pid:7", .displayName = "mdworker", .members = {{}}};
    const auto finding = [](FindingKind kind, std::optional<std::string> group) {
        return Finding{{.kind = kind, .severity = Severity::medium, .groupID = std::move(group)}};
    };
    Diagnosis::WeighedResult result;
    result.result.findings = {
        finding(FindingKind::stuckApp, {}), finding(FindingKind::cpuHog, host.id),
        finding(FindingKind::cpuHog, host.id), finding(FindingKind::memory, host.id),
        finding(FindingKind::spotlight, worker.id)};
    result.weights = {0, 300, 200, 12, 90};
    const std::vector groups{host, worker};
    std::vector<std::string> told;
    for (const auto& [cause, severity, figure] : causesOf(result, groups, "Notes")) {
        told.push_back(fmt::format("{} {} {}", plainTitleOf(cause), cause.id, figure));
    }
    const auto runs = [&](const Cause& cause) { return runningGroup(cause, groups) != nullptr; };
    EXPECT_TRUE(runs({FindingKind::cpuHog, host.id, "UTM"}));
    EXPECT_FALSE(runs({FindingKind::cpuHog, "", "UTM"}) ||
                 runs({FindingKind::cpuHog, host.id, ""}));
    EXPECT_THAT(told, ElementsAre("Notes  0", "UTM /Applications/UTM.app 300",
                                  "low memory /Applications/UTM.app 7", "Spotlight  90"));
}

const CauseMinute example{
    29545920,
    {{safari, Severity::medium, 60, 123.45, 150}, {spotlight, Severity::low, 0.5, 60, 60}}};
const std::string exampleLine =
    R"({"t":29545920,"causes":[{"kind":"cpuHog","severity":"medium","id":"/Applications/Safari.app",)"
    R"("name":"Safari","seconds":60,"mean":123.45,"max":150},{"kind":"spotlight","severity":"low",)"
    R"("id":"","name":"","seconds":0.5,"mean":60,"max":60}]})";

CauseJournal decode(std::string text,
                    std::int64_t earliest = std::numeric_limits<std::int64_t>::min()) {
    CauseJournal journal;
    CauseLines::decode(text, earliest, journal);
    return journal;
}

TEST(CauseLines, ReadBackWhatTheyWrote) {
    EXPECT_EQ(CauseLines::encode(example), exampleLine + "\n");
    const CauseJournal journal = decode(exampleLine + "\n" + exampleLine);
    EXPECT_THAT(journal.causes(), ElementsAre(safari, spotlight));
    ASSERT_EQ(journal.entries().size(), 4U);
    EXPECT_EQ(journal.entries()[3],
              (CauseJournal::Entry{example.t, 1, Severity::low, 0.5, 60, 60}));
    EXPECT_TRUE(decode(exampleLine, example.t + 1).entries().empty());
    const CauseJournal turned =
        decode(R"({"causes":[{"max":1,"later":[],"mean":2,"seconds":3,"name":"n","id":"i",)"
               R"("severity":"low","kind":"cpuHog","more":7}],"t":29545920})");
    EXPECT_THAT(turned.causes(), ElementsAre(Cause{FindingKind::cpuHog, "i", "n"}));
    EXPECT_THAT(turned.entries(),
                ElementsAre(CauseJournal::Entry{29545920, 0, Severity::low, 3, 2, 1}));
}

TEST(CauseLines, LoseABadLineWholeAndNoOther) {
    const auto with = [](std::string_view what, std::string_view instead) {
        return std::string{exampleLine}.replace(exampleLine.find(what), what.size(), instead);
    };
    std::string text = "{\n[]\nnull\n{\"t\":1}\n\xEF\xBB\xBF\n";
    for (const auto& [what, instead] : std::initializer_list<std::pair<const char*, const char*>>{
             {"29545920", "1.5"},
             {"29545920", "99999999999999999999"},
             {"29545920", "4223371680"},
             {"\"spotlight\"", "\"a later kind\""},
             {"\"low\"", "1"},
             {"60,\"mean", "60.01,\"mean"},
             {"0.5", "0"},
             {"0.5", "1e999"},
             {",\"max\":60}", "}"},
             {"\"name\":\"Safari\"", "\"name\":null"},
             {"\"kind\":\"spotlight\",", ""},
             {"}]", "},7]"}}) {
        EXPECT_TRUE(decode(with(what, instead)).entries().empty()) << instead;
        text += with(what, instead) + "\n" + exampleLine + "\n";
    }
    EXPECT_EQ(decode(text).entries().size(), 2U * 12);
    EXPECT_TRUE(decode(exampleLine + "\n\xFF").entries().empty());
}

TEST(CauseStore, KeepsItsOwnFilesByTheRulesOfTheUsageStore) {
    const testing::TemporaryFolder folder;
    const CauseStore store{folder.path() / "Pacelet"};
    for (const std::int64_t t : {day + 5, day - 1, day + 3}) {
        store.append({t, example.causes});
    }
    folder.write("Pacelet/usage-2024-10-03.jsonl", exampleLine);
    EXPECT_EQ(folder.read("Pacelet/causes-2024-10-04.jsonl"),
              CauseLines::encode({day + 5, example.causes}) +
                  CauseLines::encode({day + 3, example.causes}));
    const CauseJournal journal = store.load(at(3 * 60 + 59));
    ASSERT_EQ(journal.entries().size(), 4U);
    EXPECT_EQ(journal.entries().front().t, day + 3);
    CauseMinute odd = example;
    odd.causes[0].mean = std::numeric_limits<double>::quiet_NaN();
    EXPECT_THROW(store.append(odd), UsageStoreError);
    store.prune(0, at(0));
    EXPECT_EQ(store.load(distantPast).entries().front().t, day + 3);
    store.clear();
    EXPECT_TRUE(store.load(distantPast).entries().empty());
    EXPECT_EQ(folder.read("Pacelet/usage-2024-10-03.jsonl"), exampleLine);
}

TEST(CauseJournal, SumsUpAStretchLongestFirst) {
    CauseJournal journal;
    const auto note = [&](const Cause& cause, std::int64_t t, float seconds) {
        journal.add({t, journal.placeOf(cause.kind, cause.id, cause.name), Severity::low, seconds,
                     1, static_cast<double>(t)});
    };
    for (const std::int64_t t : {9, 10, 16, 22, 29, 30, 40}) {
        note(safari, t, 30);
    }
    EXPECT_EQ(journal.placeOf(safari.kind, "/another", safari.name), 1U);
    note(spotlight, 39, 60);
    note(spotlight, 11, 60);
    note(spotlight, 12, 60);
    journal.sort();
    EXPECT_THAT(journal.summary(10, 40),
                ElementsAre(CauseSummary{2, Severity::low, Seconds{180}, 2, 39, 39},
                            CauseSummary{0, Severity::low, Seconds{150}, 2, 30, 30}))
        << "five minutes away is no end, six are";
    EXPECT_TRUE(journal.summary(41, 99).empty());
    const auto shares = journal.shares(10, 40, 3);
    EXPECT_THAT(shares[2], ElementsAre(0.2F, 0, 0.1F));
    EXPECT_THAT(shares[0], ElementsAre(0.1F, 0.1F, 0.05F));
    EXPECT_THAT(journal.shares(11, 14, 2)[2], ElementsAre(1, 0)) << "two minutes, and one";
}

TEST(CauseTexts, TellHowLongAndHowOften) {
    for (const auto& [seconds, brief, full] :
         std::initializer_list<std::tuple<double, const char*, const char*>>{
             {29, "< 1 min", "under a minute"},
             {31, "1 min", "1 minute"},
             {720, "12 min", "12 minutes"},
             {3599, "1 h", "1 hour"},
             {7800, "2 h 10 min", "2 hours and 10 minutes"},
             {90000, "25 h", "25 hours"}}) {
        EXPECT_EQ(shortSpan(Seconds{seconds}), brief);
        EXPECT_EQ(fullSpan(Seconds{seconds}), full);
    }
    EXPECT_EQ(timesText(1) + ", " + timesText(14), "once, 14 times");
}

} // namespace
} // namespace pacelet::causes
