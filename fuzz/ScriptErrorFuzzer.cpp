#include "Core/Browser/OSAScriptRunner.h"
#include "Core/Fixes/FixRunner.h"
#include "Core/Support/Precondition.h"

#include <cstddef>
#include <cstdint>

using namespace pacelet;

/// Reads any error output as both sides of the program do.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const FixOutcome outcome = FixRunner::outcome(1, text);
    precondition(outcome.kind() == FixOutcome::Kind::failed ||
                     text.find("128)") != std::string_view::npos,
                 "a failure was taken for something else");
    precondition(outcome.reason().size() <= size, "a reason is longer than its message");
    const BrowserError error = OSAScriptRunner::error(text);
    precondition(text.find(error.text()) != std::string_view::npos, "an error's text was made up");
    return 0;
}
