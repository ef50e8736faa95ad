#include "PaceletApp/OverviewView/OverviewLook.h"

#include "Core/Sampling/Format.h"
#include "PaceletApp/OverviewView/CauseItem.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <QDateTime>
#include <QLocale>

namespace pacelet {

HeroLook heroLook(bool checked, const Finding* finding, std::span<const ProcessGroup> groups) {
    HeroLook look;
    look.checked = checked;
    if (!checked) {
        return look;
    }
    if (finding == nullptr) {
        look.headline = quietHeadline();
        look.detail = qtText(sentence("Nothing is slowing your Mac down right now."));
        return look;
    }
    look.hasFinding = true;
    look.symbol = qtText(symbol(finding->kind()));
    look.headline = qtText(finding->headline());
    look.detail = qtText(finding->detail());
    if (finding->primaryFix()) {
        look.fix = lookOf(*finding->primaryFix(), groupOf(*finding, groups));
    }
    look.note = qtText(finding->leaveNote().value_or(""));
    return look;
}

QString earlierLine(const std::optional<Spell>& earlier, const QTimeZone& zone) {
    if (!earlier) {
        return {};
    }
    const auto end = static_cast<qint64>(unixTime(earlier->end));
    return QStringLiteral("Earlier: %1, %2, until %3.")
        .arg(qtText(plainTitleOf(earlier->cause)), qtText(fullSpan(earlier->stood)),
             QLocale::c().toString(QDateTime::fromSecsSinceEpoch(end, zone),
                                   QStringLiteral("HH:mm")));
}

ReadingsLook readingsLook(const std::optional<SystemSignals>& signals) {
    ReadingsLook look;
    if (!signals) {
        look.cpuLoad = look.pressure = look.thermal = QStringLiteral("—");
        look.pressureTone = look.thermalTone = Tone::Neutral;
        return look;
    }
    look.cpuLoad = qtText(Format::percent(signals->cpuLoadPercent));
    look.pressure = qtText(label(signals->pressure));
    look.pressureTone = toneOf(signals->pressure);
    look.memoryInstalled = qtText(Format::bytes(signals->memoryTotalBytes) + " installed");
    look.thermal = qtText(label(signals->thermal));
    look.thermalTone = toneOf(signals->thermal);
    look.thermalCaption =
        qtText(signals->thermal == Thermal::normal ? sentence("Running at full speed")
                                                   : sentence("macOS reports elevated heat"));
    return look;
}

} // namespace pacelet
