#pragma once

#include "Core/Platform/ToolRunner.h"

#include <optional>

namespace pacelet {

/// A tool that prints what it is told to, or cannot be started, and remembers how it was called.
class CannedTool final : public ToolRunner {
public:
    explicit CannedTool(std::optional<Shell::Output> output) : output_{std::move(output)} {}

    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override {
        commandLine = executable;
        for (const std::string& argument : arguments) {
            commandLine += " " + argument;
        }
        if (!output_) {
            throw LaunchError{executable,
                              std::make_error_code(std::errc::no_such_file_or_directory)};
        }
        return *output_;
    }

    std::string commandLine;

private:
    std::optional<Shell::Output> output_;
};

} // namespace pacelet
