#include "Core/Diagnosis/InternetDiagnosis.h"

#include "Core/Internet/Responsiveness.h"
#include "Core/Support/Precondition.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <utility>

namespace pacelet::InternetDiagnosis {

namespace {

constexpr std::int64_t weakestFineSignal = -70;
constexpr double slowLineBelowMbps = 10.0;
constexpr double hogFromBytesPerSecond = 1'000'000.0;

using Findings = std::vector<Finding>;

Finding offline(const HostAbilities& abilities) {
    return Finding{{.kind = FindingKind::offline,
                    .severity = Severity::high,
                    .headline = "You're offline.",
                    .detail = "Check Wi-Fi or your network cable.",
                    .primaryFix = offered(FixID::openWiFiSettings, abilities)}};
}

void wifiQuality(const WiFiLink& wifi, const HostAbilities& abilities, Findings& findings) {
    Finding::Fields fields;
    if (wifi.rssi < weakestFineSignal) {
        const bool isFair = wifi.quality() == SignalQuality::fair;
        fields.kind = FindingKind::weakWiFi;
        fields.severity = isFair ? Severity::medium : Severity::high;
        fields.headline = isFair ? "Your Wi-Fi signal is only fair." : "Your Wi-Fi signal is weak.";
        fields.detail =
            "Move closer to your router or remove obstacles. Signal: " + std::to_string(wifi.rssi) +
            " dBm.";
        fields.primaryFix = offered(FixID::openWiFiSettings, abilities);
    } else if (wifi.band == WiFiBand::ghz2_4) {
        fields.kind = FindingKind::band24;
        fields.severity = Severity::low;
        fields.headline = "You're on 2.4 GHz Wi-Fi.";
        fields.detail = "5 GHz is usually much faster if your router supports it.";
    } else {
        return;
    }
    findings.emplace_back(std::move(fields));
}

/// Where a slow line's fault lies. The signal counts whatever the kind of link.
std::string slowLineCause(LinkType link, const std::optional<WiFiLink>& wifi) {
    if (link == LinkType::ethernet) {
        return "Your wired connection is fine, so the slowdown is your internet line or router.";
    }
    if (wifi && wifi->rssi >= weakestFineSignal) {
        return "Your Wi-Fi is fine, so the slowdown is your internet line or router.";
    }
    return "Weak Wi-Fi may be part of it.";
}

void lineQuality(const SpeedResult& speed, LinkType link, const std::optional<WiFiLink>& wifi,
                 Findings& findings) {
    if (speed.downloadMbps < slowLineBelowMbps) {
        findings.push_back(Finding{
            {.kind = FindingKind::slowLine,
             .severity = Severity::high,
             .headline = "Your internet is slow: " + megabits(speed.downloadMbps) + " down.",
             .detail = slowLineCause(link, wifi)}});
    }
    if (speed.responsivenessRPM &&
        responsiveness(*speed.responsivenessRPM) == Responsiveness::low) {
        findings.push_back(
            Finding{{.kind = FindingKind::laggy,
                     .severity = Severity::medium,
                     .headline = "Your connection gets laggy when it's busy.",
                     .detail = "Video calls and games may stutter while something else "
                               "downloads."}});
    }
}

void bandwidthHog(const NetUsage& usage, const AppName& appName, Findings& findings) {
    precondition(std::isfinite(usage.total()), "a network rate is not finite");
    if (usage.total() < hogFromBytesPerSecond) {
        return;
    }
    findings.push_back(Finding{{.kind = FindingKind::bandwidthHog,
                                .severity = Severity::medium,
                                .headline = appName(usage.pid).value_or(usage.name) + " is using " +
                                            byteRate(usage.total()) + " of your connection.",
                                .detail = "Down " + byteRate(usage.bytesInPerSec) + ", up " +
                                          byteRate(usage.bytesOutPerSec) + ".",
                                .groupID = "pid:" + std::to_string(usage.pid)}});
}

} // namespace

std::vector<Finding> run(LinkType link, const std::optional<WiFiLink>& wifi,
                         const std::optional<SpeedResult>& speed, std::span<const NetUsage> usage,
                         const AppName& appName, const HostAbilities& abilities) {
    Findings findings;
    if (link == LinkType::offline) {
        findings.push_back(offline(abilities));
        return findings;
    }
    if (link == LinkType::wifi && wifi) {
        wifiQuality(*wifi, abilities, findings);
    }
    if (speed) {
        lineQuality(*speed, link, wifi, findings);
    }
    for (const NetUsage& process : usage) {
        bandwidthHog(process, appName, findings);
    }
    std::ranges::stable_sort(findings, std::greater{}, &Finding::severity);
    return findings;
}

} // namespace pacelet::InternetDiagnosis
