#include "PaceletApp/UsageView/UsageLook.h"
#include "tests/PaceletApp/Support/Table.h"
#include "tests/PaceletApp/Support/ToneText.h"

#include <gmock/gmock.h>

namespace pacelet {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t gigabyte = std::int64_t{1} << 30;

TEST(MacLine, JoinsWhatIsKnown) {
    const MacInfo air{"MacBook Air", "Apple M2", 16 * gigabyte, true};
    const Table<MacInfo, std::optional<double>, const char*> cases = {
        {air, 5e11, "MacBook Air · Apple M2 · 16 GB memory · 500 GB storage"},
        {air, {}, "MacBook Air · Apple M2 · 16 GB memory"},
        {{"", "Intel", 8 * gigabyte, false}, 0, "Intel · 8 GB memory · 0 GB storage"},
        {{"Mac14,2", "", 0, false}, {}, "Mac14,2 · 0 KB memory"},
    };
    for (const auto& [mac, disk, line] : cases) {
        std::optional<SystemSignals> signals;
        if (disk) {
            signals.emplace().diskTotalBytes = static_cast<std::int64_t>(*disk);
        }
        EXPECT_EQ(macLine(mac, signals), line);
    }
}

TEST(DiskFreeShare, CountsAsFreeWhatIsNotKnown) {
    EXPECT_EQ(diskFreeShare(std::nullopt), 1);
    const Table<std::int64_t, std::int64_t, double> cases = {
        {0, 0, 1}, {50, -1, 1}, {0, 1, 0}, {25, 100, 0.25}};
    for (const auto& [free, total, share] : cases) {
        SystemSignals signals;
        signals.diskFreeBytes = free;
        signals.diskTotalBytes = total;
        EXPECT_EQ(diskFreeShare(signals), share) << free << " of " << total;
    }
}

/// Lines as "symbol|tone|fix|text".
std::vector<std::string> written(const std::vector<VerdictLine>& lines) {
    std::vector<std::string> texts;
    for (const VerdictLine& line : lines) {
        const QStringList parts{line.symbol, toneText(line.tone), line.fix.title, line.text};
        texts.push_back(parts.join(u'|').toStdString());
    }
    return texts;
}

TEST(VerdictLines, SayEachVerdictInItsOwnWords) {
    const std::string memory =
        "memorychip|amber||Memory is holding your Mac back. It was under memory pressure 90% of "
        "the time. Your next Mac should have at least 32 GB of memory.";
    const std::string cpu = "cpu|amber||Your processor is often maxed out (21% of the time). A Mac "
                            "with a newer or bigger chip would help with your workload.";
    const std::string storage = "internaldrive|amber|Free up space|Your disk is nearly full. Free "
                                "up space with Tidyvault, or choose more storage next time.";
    const std::string healthy =
        "checkmark.seal|green||Your Mac has headroom. Over the last 7 days it rarely ran short of "
        "memory or processor power. No upgrade needed for how you use it.";
    const auto tooLittle = [](int hours) {
        return "hourglass|||Not enough data yet. Pacelet has measured " + std::to_string(hours) +
               " hours. Keep it running (turn on Start at login) and check back in a few days.";
    };
    const std::string intel =
        "exclamationmark.triangle|amber||This is an Intel Mac. It can't run macOS 27 or later, so "
        "plan an upgrade to keep getting security updates.";
    const MemoryBottleneck shortOfMemory{32, 0.896};
    const Bottlenecks all{{shortOfMemory, CPUBottleneck{0.205}, StorageBottleneck{0.1}}, 40};
    const Table<UpgradeVerdict, int, std::vector<std::string>> cases = {
        {NotEnoughData{23}, 23, {tooLittle(23)}},
        {Healthy{168}, 168, {healthy}},
        {all, 40, {memory, cpu, storage}},
        {Bottlenecks{{StorageBottleneck{0}}, 25}, 25, {storage}},
    };
    for (auto [verdict, hours, lines] : cases) {
        for (const std::optional<MacInfo>& silicon :
             {std::optional<MacInfo>{}, std::optional{MacInfo{"", "Apple M4", 0, true}},
              std::optional{MacInfo{"PC", "Intel", 0, false, false}}}) {
            EXPECT_EQ(written(verdictLines(verdict, silicon)), lines);
        }
        EXPECT_EQ(hoursNote(verdict).toStdString(),
                  "Based on " + std::to_string(hours) +
                      " hours measured while Pacelet was running. Nothing is uploaded.");
        lines.push_back(intel);
        EXPECT_EQ(written(verdictLines(verdict, MacInfo{"iMac", "Intel", 0, false})), lines);
    }
}

TEST(LoadFigure, RoundsToWholePercent) {
    EXPECT_EQ(loadFigure({}), "0%");
    EXPECT_EQ(loadDescription({}), "CPU load over the last 10 minutes, now 0 percent");
    SystemSignals signals;
    signals.cpuLoadPercent = 48.5; // half away from zero, not to even
    EXPECT_EQ(loadFigure(signals), "49%");
    EXPECT_EQ(loadDescription(signals), "CPU load over the last 10 minutes, now 49 percent");
}

TEST(MemoryLook, TellsWhatIsUsedAndWhere) {
    EXPECT_FALSE(memoryLook(std::nullopt, SystemSignals{}).known);
    const MemoryBreakdown memory{16 * gigabyte, 6 * gigabyte, 2 * gigabyte, 0,
                                 6 * gigabyte,  2 * gigabyte};
    MemoryLook look = memoryLook(memory, std::nullopt);
    EXPECT_TRUE(look.known);
    EXPECT_EQ(look.headline, "8 GB of 16 GB");
    EXPECT_EQ(look.accessibleName, "Memory used 8 GB of 16 GB");
    EXPECT_THAT(look.shares, ElementsAre(0.375, 0.125, 0, 0.375, 0.125));
    EXPECT_EQ(look.pressure + toneText(look.pressureTone) + look.swap, "—Swap: 0 KB");
    std::vector<std::string> legend;
    for (const MemorySegment& each : memorySegments(memory)) {
        legend.push_back((each.name + u' ' + each.size).toStdString());
    }
    EXPECT_THAT(legend, ElementsAre("App 6 GB", "Wired 2 GB", "Compressed 0 KB", "Cached 6 GB",
                                    "Free 2 GB"));

    const Table<Pressure, const char*> words = {{Pressure::normal, "Normal green"},
                                                {Pressure::elevated, "Elevated amber"},
                                                {Pressure::critical, "Critical red"}};
    for (const auto& [pressure, word] : words) {
        SystemSignals signals;
        signals.pressure = pressure;
        signals.swapUsedBytes = 3 * gigabyte / 2;
        look = memoryLook(memory, signals);
        EXPECT_EQ(look.pressure + u' ' + toneText(look.pressureTone), word);
        EXPECT_EQ(look.swap, "Swap: 1.5 GB");
    }
}

TEST(MemoryLook, BearsFiguresThatDoNotAddUp) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(memoryLook(MemoryBreakdown{8 * gigabyte, 7 * gigabyte, 7 * gigabyte}, {}).headline,
              "8 GB of 8 GB");
    for (const MemoryBreakdown& memory :
         {MemoryBreakdown{}, MemoryBreakdown{gigabyte, most, most, most, most, most},
          MemoryBreakdown{gigabyte, -gigabyte, gigabyte, -1, 0, gigabyte}}) {
        double sum = 0;
        for (const double share : memoryLook(memory, {}).shares) {
            EXPECT_GE(share, 0);
            sum += share;
        }
        EXPECT_THAT(sum, DoubleNear(memory == MemoryBreakdown{} ? 0 : 1, 1e-9));
    }
}

} // namespace
} // namespace pacelet
