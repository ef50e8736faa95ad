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

/// Lines joined by line feeds, none at the end. `groups` come sorted from the caller.
std::string render(const DiagnosisResult& result, std::span<const ProcessGroup> groups,
                   const ProcessCatalog& catalog, const SystemSignals& signals);

std::string_view statusLabel(Status status);

} // namespace pacelet::Report
