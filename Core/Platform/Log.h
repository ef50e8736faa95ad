#pragma once

#include <string_view>

namespace pacelet {

enum class LogLevel { information, error };

/// The subsystem of every message of the program.
inline constexpr std::string_view logSubsystem = "app.pacelet.Pacelet";

/// The system's log. Any thread.
class Log {
public:
    virtual ~Log() = default;

    virtual void write(LogLevel level, std::string_view subsystem, std::string_view category,
                       std::string_view message) = 0;
};

} // namespace pacelet
