#include "PaceletApp/Components/Look.h"

#include "Core/Support/EnumTable.h"
#include "PaceletApp/Support/QtText.h"
#include "PaceletApp/Support/Sentence.h"

#include <QCoreApplication>

#include <array>

namespace pacelet {

namespace {

struct VerdictRow {
    Verdict value;
    std::string_view symbol;
    Tone tone;
};
constexpr std::array<VerdictRow, 3> verdicts{{
    {Verdict::safe, "checkmark.circle", Tone::Green},
    {Verdict::review, "exclamationmark.triangle", Tone::Amber},
    {Verdict::leave, "checkmark.shield", Tone::Neutral},
}};

struct StatusRow {
    Status value;
    std::string_view rawValue;
    std::string_view label;
    Tone tone;
};
constexpr std::array<StatusRow, 3> statuses{{
    {Status::quiet, "quiet", "All quiet", Tone::Green},
    {Status::busy, "busy", "Busy", Tone::Amber},
    {Status::struggling, "struggling", "Struggling", Tone::Red},
}};

} // namespace

std::vector<ListRole<FixLook>> FixLook::roles() {
    return {{"look", [](const FixLook& look) { return QVariant::fromValue(look); }}};
}

PillLook lookOf(Verdict verdict) {
    const VerdictRow& row = rowOf(verdicts, verdict);
    const QString label = qtText(pacelet::label(verdict));
    return {label, qtText(row.symbol), row.tone, QStringLiteral("Verdict: ") + label};
}

PillLook lookOf(Status status) {
    const StatusRow& row = rowOf(statuses, status);
    const QString label = qtText(row.label);
    return {label, {}, row.tone, QStringLiteral("Status: ") + label};
}

FixLook lookOf(FixID fix, const ProcessGroup* group) {
    const bool purple = fix == FixID::quitApp || fix == FixID::rebuildSpotlightIndex;
    // A name is said as it is.
    const std::string caption = title(fix, group);
    return {qtText(rawValue(fix)),
            fix == FixID::quitApp ? qtText(caption)
                                  : QCoreApplication::translate("", caption.c_str()),
            qtText(symbol(fix)), purple};
}

QString quietHeadline() {
    return qtText(sentence("Your Mac is running smoothly."));
}

QString rawValue(Status status) {
    return qtText(rowOf(statuses, status).rawValue);
}

PillLook Looks::verdict(const QString& rawValue) const {
    const auto value = verdictFromRawValue(rawValue.toStdString());
    return value ? lookOf(*value) : PillLook{};
}

PillLook Looks::status(const QString& rawValue) const {
    const auto value = fromRawValue<Status>(statuses, rawValue.toStdString());
    return value ? lookOf(*value) : PillLook{};
}

} // namespace pacelet
