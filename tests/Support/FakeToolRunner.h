#pragma once

#include "Core/Platform/ToolRunner.h"

#include <functional>
#include <string>
#include <system_error>
#include <vector>

namespace pacelet::testing {

/// Answers every tool from a function, and keeps what was run.
class FakeToolRunner final : public ToolRunner {
public:
    struct Call {
        std::string executable;
        std::vector<std::string> arguments;

        bool operator==(const Call&) const = default;
    };

    std::function<Shell::Output(const Call&)> answer = [](const Call&) { return Shell::Output{}; };
    std::vector<Call> calls;

    /// From now on no tool can be started.
    void failToLaunch() {
        answer = [](const Call& call) -> Shell::Output {
            throw LaunchError{call.executable,
                              std::make_error_code(std::errc::no_such_file_or_directory)};
        };
    }

    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override {
        calls.push_back({executable, arguments});
        return answer(calls.back());
    }
};

} // namespace pacelet::testing
