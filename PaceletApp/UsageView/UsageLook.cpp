#include "PaceletApp/UsageView/UsageLook.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace pacelet {

namespace {

std::string percent(double share) {
    return Format::percent(share * 100);
}

VerdictLine lineOf(const MemoryBottleneck& memory) {
    return {"memory",
            QStringLiteral("memorychip"),
            Tone::Amber,
            qtText(sentence("Memory is holding your Mac back. It was under memory pressure {} "
                            "of the time. Your next Mac should have at least {} GB of memory.",
                            percent(memory.pressureShare), memory.recommendedGB)),
            {}};
}

VerdictLine lineOf(const CPUBottleneck& cpu) {
    return {"cpu",
            QStringLiteral("cpu"),
            Tone::Amber,
            qtText(sentence("Your processor is often maxed out ({} of the time). A Mac with a "
                            "newer or bigger chip would help with your workload.",
                            percent(cpu.busyShare))),
            {}};
}

VerdictLine lineOf(const StorageBottleneck&) {
    return {
        "storage", QStringLiteral("internaldrive"), Tone::Amber,
        qtText(sentence("Your disk is nearly full. Free up space with Tidyvault, or choose more "
                        "storage next time.")),
        lookOf(FixID::openTidyvault, nullptr)};
}

std::vector<VerdictLine> linesOf(const NotEnoughData& verdict) {
    return {{"notEnoughData",
             QStringLiteral("hourglass"),
             Tone::None,
             qtText(fmt::format("Not enough data yet. Pacelet has measured {} hours. Keep it "
                                "running (turn on Start at login) and check back in a few days.",
                                verdict.hoursMeasured)),
             {}}};
}

std::vector<VerdictLine> linesOf(const Healthy&) {
    return {{"healthy",
             QStringLiteral("checkmark.seal"),
             Tone::Green,
             qtText(sentence("Your Mac has headroom. Over the last 7 days it rarely ran short of "
                             "memory or processor power. No upgrade needed for how you use it.")),
             {}}};
}

std::vector<VerdictLine> linesOf(const Bottlenecks& verdict) {
    std::vector<VerdictLine> lines;
    for (const Bottleneck& each : verdict.list) {
        lines.push_back(
            std::visit([](const auto& bottleneck) { return lineOf(bottleneck); }, each));
    }
    return lines;
}

VerdictLine intelLine() {
    return {"intel",
            QStringLiteral("exclamationmark.triangle"),
            Tone::Amber,
            QStringLiteral("This is an Intel Mac. It can't run macOS 27 or later, so plan an "
                           "upgrade to keep getting security updates."),
            {}};
}

struct SegmentRow {
    const char* name;
    std::int64_t MemoryBreakdown::*bytes;
};
constexpr std::array<SegmentRow, 5> segments{{
    {"App", &MemoryBreakdown::app},
    {"Wired", &MemoryBreakdown::wired},
    {"Compressed", &MemoryBreakdown::compressed},
    {"Cached", &MemoryBreakdown::cached},
    {"Free", &MemoryBreakdown::free},
}};

/// All 0 where there is no memory at all.
QList<qreal> shares(const MemoryBreakdown& memory) {
    QList<qreal> sizes;
    double sum = 0;
    for (const SegmentRow& row : segments) {
        sizes.append(std::max(0.0, static_cast<double>(memory.*row.bytes)));
        sum += sizes.back();
    }
    for (qreal& each : sizes) {
        each = sum > 0 ? each / sum : 0;
    }
    return sizes;
}

} // namespace

std::vector<ListRole<VerdictLine>> VerdictLine::roles() {
    using Line = VerdictLine;
    return {
        {"symbol", [](const Line& line) { return line.symbol; }},
        {"tone", [](const Line& line) { return static_cast<int>(line.tone); }},
        {"text", [](const Line& line) { return line.text; }},
        {"fix", [](const Line& line) { return QVariant::fromValue(line.fix); }},
    };
}

std::vector<ListRole<MemorySegment>> MemorySegment::roles() {
    using Segment = MemorySegment;
    return {
        {"name", [](const Segment& segment) { return segment.name; }},
        {"size", [](const Segment& segment) { return segment.size; }},
    };
}

QString macLine(const MacInfo& mac, const std::optional<SystemSignals>& signals) {
    const std::string storage =
        signals ? Format::storage(signals->diskTotalBytes) + " storage" : std::string{};
    std::string line;
    for (const std::string& part :
         {mac.name, mac.chip, Format::bytes(mac.memoryBytes) + " memory", storage}) {
        if (!part.empty()) {
            line += (line.empty() ? "" : " · ") + part;
        }
    }
    return qtText(line);
}

double diskFreeShare(const std::optional<SystemSignals>& signals) {
    if (!signals || signals->diskTotalBytes < 1) {
        return 1;
    }
    return static_cast<double>(signals->diskFreeBytes) /
           static_cast<double>(signals->diskTotalBytes);
}

std::vector<VerdictLine> verdictLines(const UpgradeVerdict& verdict,
                                      const std::optional<MacInfo>& mac,
                                      const HostAbilities& abilities) {
    auto lines = std::visit([](const auto& each) { return linesOf(each); }, verdict);
    for (VerdictLine& line : lines) {
        const auto fix = fixIDFromRawValue(line.fix.fix.toStdString());
        if (fix && !offered(*fix, abilities)) {
            line.fix = {};
        }
    }
    if (mac && mac->isMac && !mac->isAppleSilicon) {
        lines.push_back(intelLine());
    }
    return lines;
}

QString hoursNote(const UpgradeVerdict& verdict) {
    return qtText(fmt::format("Based on {} hours measured while Pacelet was running. Nothing is "
                              "uploaded.",
                              hoursMeasured(verdict)));
}

QString loadFigure(const std::optional<SystemSignals>& signals) {
    return qtText(Format::percent(signals ? signals->cpuLoadPercent : 0));
}

QString loadDescription(const std::optional<SystemSignals>& signals) {
    const double load = signals ? signals->cpuLoadPercent : 0;
    return qtText(
        fmt::format("CPU load over the last 10 minutes, now {:.0f} percent", std::round(load)));
}

std::vector<MemorySegment> memorySegments(const MemoryBreakdown& memory) {
    std::vector<MemorySegment> result;
    for (const SegmentRow& row : segments) {
        result.push_back({qtText(row.name), qtText(Format::bytes(memory.*row.bytes))});
    }
    return result;
}

MemoryLook memoryLook(const std::optional<MemoryBreakdown>& memory,
                      const std::optional<SystemSignals>& signals) {
    if (!memory) {
        return {};
    }
    MemoryLook look;
    look.known = true;
    const QString amount =
        qtText(Format::bytes(memory->used()) + " of " + Format::bytes(memory->total));
    look.headline = amount;
    look.accessibleName = QStringLiteral("Memory used ") + amount;
    look.pressure = signals ? qtText(label(signals->pressure)) : QStringLiteral("—");
    look.pressureTone = signals ? toneOf(signals->pressure) : Tone::None;
    look.swap =
        QStringLiteral("Swap: ") + qtText(Format::bytes(signals ? signals->swapUsedBytes : 0));
    look.shares = shares(*memory);
    return look;
}

} // namespace pacelet
