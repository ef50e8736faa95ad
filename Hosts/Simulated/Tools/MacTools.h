#pragma once

#include "Core/Platform/ToolRunner.h"
#include "Hosts/Simulated/Machine.h"

#include <functional>

namespace pacelet::Simulated {

/// Called with the time that a tool takes, before it answers, on the thread that runs it. A test
/// lets virtual time pass in it; a demonstration sleeps.
using ToolTiming = std::function<void(Seconds)>;

/// Answers the Mac's tools by their exact paths and arguments. A tool that is not on the machine
/// cannot be started, and one with other arguments ends as its own usage message would. The answer
/// tells of the moment at which the tool ends.
class MacTools : public ToolRunner {
public:
    explicit MacTools(Machine& machine)
        : machine_{machine} {}

    Shell::Output run(const std::string& executable,
                      const std::vector<std::string>& arguments) override;

    /// By default a tool takes no time at all. To be set before any tool runs.
    void setTiming(ToolTiming timing) { timing_ = std::move(timing); }

private:
    Machine& machine_;
    ToolTiming timing_;
};

} // namespace pacelet::Simulated
