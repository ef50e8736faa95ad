#pragma once

#include "Core/Diagnosis/Diagnosis.h"
#include "Core/Platform/HostWords.h"

#include <string_view>
#include <unordered_set>
#include <vector>

/// The single rules of `Diagnosis::run`, in running order.
namespace pacelet::Diagnosis::Rules {

/// About an application, whose name stands in its place, that nothing could end.
inline constexpr std::string_view stuckHeadline = "{} won't quit. Restart your Mac to clear it.";

/// A finding with what ranks it among others of its severity.
struct Weighted {
    Finding finding;
    double weight = 0;
};

/// What the rules share during one run.
struct Run {
    const DiagnosisInput& input;
    const ProcessCatalog& catalog;
    /// Ids of groups that a special rule has accounted for; they are never plain CPU hogs. The
    /// views point into `input.groups`.
    std::unordered_set<std::string_view> handled{};
    std::vector<Weighted> findings{};

    /// The sentence in the words of this machine, and the data in its places.
    template<typename... Data>
    std::string say(fmt::format_string<const Data&...> sentence, const Data&... data) const {
        return HostWords::say(catalog.system, sentence, data...);
    }

    bool offers(FixID fix) const { return offered(fix, catalog.abilities).has_value(); }

    /// A fix that does not work here is left out.
    void add(Finding::Fields fields, double weight) {
        if (fields.primaryFix) {
            fields.primaryFix = offered(*fields.primaryFix, catalog.abilities);
        }
        findings.push_back(Weighted{Finding{std::move(fields)}, weight});
    }
};

void stuckApp(Run& run);
void heat(Run& run);
void memory(Run& run);
void spotlight(Run& run);
void photos(Run& run);
void windowServer(Run& run);
void browsers(Run& run);
void cpuHogs(Run& run);
void disk(Run& run);
void lowPowerMode(Run& run);
void longUptime(Run& run);

} // namespace pacelet::Diagnosis::Rules
