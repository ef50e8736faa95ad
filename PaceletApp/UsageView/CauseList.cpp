#include "PaceletApp/UsageView/CauseList.h"

#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <QDateTime>
#include <QLocale>

#include <fmt/format.h>

#include <cmath>

namespace pacelet {

namespace {

constexpr qint64 daysOfAWeek = 7;

std::int64_t minuteOf(TimePoint time) {
    return std::llround(unixTime(time) / secondsPerMinute);
}

Tone severityTone(Severity severity) {
    if (severity >= Severity::high) {
        return Tone::Red;
    }
    return severity == Severity::medium ? Tone::Amber : Tone::Neutral;
}

QDateTime localTime(TimePoint time, const QTimeZone& zone) {
    return QDateTime::fromSecsSinceEpoch(static_cast<qint64>(unixTime(time)), zone);
}

/// A moment by the local clock, with its day where that is not today.
QString momentText(TimePoint time, TimePoint now, const QTimeZone& zone) {
    const QDateTime moment = localTime(time, zone);
    const qint64 daysAgo = moment.date().daysTo(localTime(now, zone).date());
    const char* const format = daysAgo == 0                           ? "HH:mm"
                               : daysAgo > 0 && daysAgo < daysOfAWeek ? "ddd HH:mm"
                                                                      : "d MMM";
    return QLocale::c().toString(moment, QString::fromLatin1(format));
}

QList<qreal> stripOf(const std::vector<float>& shares) {
    return {shares.begin(), shares.end()};
}

CauseListItem itemOf(const Cause& cause, const CauseSummary& sum, const CauseView& view) {
    CauseListItem item;
    item.id = fmt::format("{}\n{}\n{}", rawValue(cause.kind), cause.id, cause.name);
    item.symbol = qtText(symbol(cause.kind));
    item.tone = severityTone(sum.severity);
    item.name = qtText(titleOf(cause));
    item.effect = qtText(effectOf(cause.kind));
    item.stood = qtText(shortSpan(sum.stood));
    item.times = qtText(timesText(sum.spells));
    item.last = momentText(fromUnixTime(static_cast<double>(sum.lastMinute) * secondsPerMinute),
                           view.now, view.zone);
    item.spoken = QStringLiteral("%1, %2, %3, %4, last %5")
                      .arg(item.name, item.effect, item.stood, item.times, item.last);
    return item;
}

} // namespace

std::vector<ListRole<CauseListItem>> CauseListItem::roles() {
    using Item = CauseListItem;
    return {
        {"groupId", [](const Item& item) { return item.groupId; }},
        {"symbol", [](const Item& item) { return item.symbol; }},
        {"tone", [](const Item& item) { return static_cast<int>(item.tone); }},
        {"name", [](const Item& item) { return item.name; }},
        {"effect", [](const Item& item) { return item.effect; }},
        {"stood", [](const Item& item) { return item.stood; }},
        {"times", [](const Item& item) { return item.times; }},
        {"last", [](const Item& item) { return item.last; }},
        {"spoken", [](const Item& item) { return item.spoken; }},
        {"strip", [](const Item& item) { return QVariant::fromValue(item.strip); }},
    };
}

std::vector<CauseListItem> causeList(const CauseJournal& journal, const CauseView& view,
                                     std::span<const ProcessGroup> groups) {
    const auto shares =
        journal.shares(minuteOf(view.range.from), minuteOf(view.range.to), stripParts);
    std::vector<CauseListItem> items;
    for (const CauseSummary& sum :
         journal.summary(minuteOf(view.stretch.from), minuteOf(view.stretch.to))) {
        const Cause& cause = journal.causes()[sum.cause];
        CauseListItem item = itemOf(cause, sum, view);
        item.strip = stripOf(shares[sum.cause]);
        if (const ProcessGroup* const group = runningGroup(cause, groups)) {
            item.groupId = qtText(group->id);
        }
        items.push_back(std::move(item));
    }
    return items;
}

QString noCauses(const UsageRange& range, bool isNarrowed) {
    if (isNarrowed) {
        return qtText(sentence("Pacelet noted nothing that slowed your Mac then."));
    }
    return qtText(
        sentence("Pacelet noted nothing that slowed your Mac in the last {}.", range.label));
}

QString moreCausesTitle(std::size_t hidden) {
    return hidden == 0 ? QString{} : QStringLiteral("Show %1 more").arg(hidden);
}

} // namespace pacelet
