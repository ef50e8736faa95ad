#pragma once

#include "Core/Platform/Log.h"

namespace pacelet::Mac {

/// The unified log.
class MacLog final : public Log {
public:
    void write(LogLevel level, std::string_view subsystem, std::string_view category,
               std::string_view message) override;
};

} // namespace pacelet::Mac
