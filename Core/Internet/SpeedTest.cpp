#include "Core/Internet/SpeedTest.h"

#include "Core/Internet/JsonNumbers.h"
#include "Core/Support/Text.h"

namespace pacelet {

SpeedTestError::SpeedTestError(Kind kind, const std::string& text)
    : std::runtime_error{kind == Kind::failed ? "the speed test failed: " + text
                                              : "the speed test's output is unreadable"},
      kind_{kind},
      text_{text} {}

namespace SpeedTest {

const std::vector<std::string>& arguments() {
    static const std::vector<std::string> list{"-c", "-M", "25"};
    return list;
}

SpeedResult parse(std::string_view json, TimePoint measuredAt) {
    constexpr double bitsPerMegabit = 1'000'000.0;
    const auto numbers = JsonNumbers::read(json);
    if (!numbers) {
        throw SpeedTestError::unreadable();
    }
    const auto download = numbers->number("dl_throughput");
    const auto upload = numbers->number("ul_throughput");
    if (!download || !upload) {
        throw SpeedTestError::unreadable();
    }
    SpeedResult result;
    result.downloadMbps = *download / bitsPerMegabit;
    result.uploadMbps = *upload / bitsPerMegabit;
    result.responsivenessRPM = numbers->truncated("responsiveness");
    result.baseRTTms = numbers->number("base_rtt");
    result.measuredAt = measuredAt;
    return result;
}

SpeedResult run(ToolRunner& tools, Clock& clock) {
    const Shell::Output output = tools.run("/usr/bin/networkQuality", arguments());
    if (output.status != 0) {
        throw SpeedTestError::failed(std::string{trimmed(output.stderr)});
    }
    return parse(output.stdout, clock.now());
}

} // namespace SpeedTest

} // namespace pacelet
