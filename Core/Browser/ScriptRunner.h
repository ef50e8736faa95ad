#pragma once

#include <string>

namespace pacelet {

/// Runs scripts. Any thread; may take long.
class ScriptRunner {
public:
    virtual ~ScriptRunner() = default;

    /// The script's result as text. Throws whatever tells the failure.
    virtual std::string run(const std::string& script) = 0;
};

} // namespace pacelet
