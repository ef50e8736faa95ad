#pragma once

#include "Core/Platform/Platform.h"
#include "Hosts/Recorded/Capture.h"
#include "programs/pacelet-report/Answer.h"

#include <cstdint>
#include <string>

namespace pacelet::report {

inline constexpr std::int64_t usualLooks = 10;

/// What the user is told before anything is kept.
std::string captureNotice(const std::string& file, std::int64_t looks);

/// Looks at a machine so many times, `betweenLooks` apart, and keeps in a new file what it answers:
/// all that the answer needs, and what the screens ask, but for speed tests and browsers' tabs.
/// Hands over the last look. Throws `FileError`.
Look captureMachine(const Platform& machine, const ProcessCatalog& catalog, const std::string& file,
                    std::int64_t looks);

/// Throws `FileError`.
Recorded::Capture openCapture(const std::string& file);

/// The last look at a captured machine, after all the others.
Look lookAtCapture(Recorded::Capture capture, const ProcessCatalog& catalog);

} // namespace pacelet::report
