#pragma once

#include "Core/Diagnosis/Finding.h"
#include "Core/Knowledge/ProcessCatalog.h"

#include <span>
#include <string>
#include <string_view>

/// One diagnosis as a short plain text.
namespace pacelet::Report {

/// How many groups are listed.
inline constexpr std::size_t mostGroups = 10;

/// Which figures are known; the others are left out.
struct Known {
    bool load = true;    ///< CPU use of the whole machine, and its cores
    bool signals = true; ///< all other readings of the machine
    bool memory = true;  ///< sizes of processes

    static const Known all;
};
inline constexpr Known Known::all{};

/// Lines joined by line feeds, none at the end. `groups` come sorted from the caller.
std::string render(const DiagnosisResult& result, std::span<const ProcessGroup> groups,
                   const ProcessCatalog& catalog, const SystemSignals& signals,
                   const Known& known = Known::all);

std::string_view statusLabel(Status status);

} // namespace pacelet::Report
