#pragma once

#include "Core/Platform/Clock.h"
#include "Core/Platform/ProcessSample.h"
#include "Core/Platform/ToolRunner.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace pacelet {

/// Sampling failed: `ps` ended with a status other than 0.
class SamplerError : public std::runtime_error {
public:
    static SamplerError psFailed(std::int32_t status) { return SamplerError{status}; }

    std::int32_t status() const { return status_; }

    friend bool operator==(const SamplerError& left, const SamplerError& right) {
        return left.status_ == right.status_;
    }

private:
    explicit SamplerError(std::int32_t status);

    std::int32_t status_;
};

/// Where snapshots of the process table come from.
class ProcessSource {
public:
    virtual ~ProcessSource() = default;

    /// Throws `SamplerError` or `LaunchError`.
    virtual Snapshot sample() = 0;
};

/// Snapshots out of `/bin/ps`.
class PSProcessSource final : public ProcessSource {
public:
    PSProcessSource(ToolRunner& tools, Clock& clock)
        : tools_{tools},
          clock_{clock} {}

    Snapshot sample() override;

    /// The raw listing of pid, resident kilobytes and command line of every process; the exit
    /// status is not looked at. Throws `LaunchError`.
    static std::string argsListing(ToolRunner& tools);

    /// The pids of the running launch jobs by label; the exit status is not looked at. Throws
    /// `LaunchError`.
    static std::unordered_map<std::string, std::int32_t> launchctlList(ToolRunner& tools);

private:
    ToolRunner& tools_;
    Clock& clock_;
};

} // namespace pacelet
