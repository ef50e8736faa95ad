#pragma once

#include "Core/Platform/ToolRunner.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace pacelet::Linux {

/// Answers the Mac's tools by their paths. A path that nobody answers is a program that is not
/// there.
class LinuxToolRunner final : public ToolRunner {
public:
    /// Answers one tool's command lines; must be safe from any thread.
    using Answerer = std::function<Shell::Output(const std::vector<std::string>& arguments)>;

    /// For the time of set-up, before anything runs.
    void answer(std::string executable, Answerer answerer);

    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override;

private:
    std::unordered_map<std::string, Answerer> answerers_;
};

} // namespace pacelet::Linux
