#include "Core/Internet/SpeedTest.h"
#include "Core/Support/Precondition.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

using namespace pacelet;

/// Ends with a status of its own, and prints the same on both of its outputs.
class Tool final : public ToolRunner {
public:
    explicit Tool(std::string_view text)
        : text_{text} {}

    Shell::Output run(const std::string&, const std::vector<std::string>&) override {
        return {text_.starts_with('!') ? 1 : 0, std::string{text_}, std::string{text_}};
    }

private:
    std::string_view text_;
};

class NoTime final : public Clock {
    TimePoint now() override { return {}; }
    MonotonicTime monotonicNow() override { return {}; }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    Tool tool{text};
    NoTime clock;
    try {
        const SpeedResult result = SpeedTest::run(tool, clock);
        precondition(std::isfinite(result.downloadMbps) && std::isfinite(result.uploadMbps),
                     "a speed that cannot be shown was read");
    } catch (const SpeedTestError& error) {
        // The answer to everything that is no summary.
        precondition(text.find(error.text()) != std::string_view::npos,
                     "an error's text was made up");
    }
    return 0;
}
