#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"
#include "Core/Usage/HistoryLines.h"

#include <limits>
#include <string>
#include <string_view>
#include <vector>

// What a file's text holds is the sum of what its lines hold, and comes back unchanged when it is
// written again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    constexpr auto always = std::numeric_limits<std::int64_t>::min();
    const std::string_view input{reinterpret_cast<const char*>(data), size};
    std::string text{input};
    std::vector<MinuteRecord> records;
    HistoryLines::decode(text, always, records);

    std::vector<MinuteRecord> byLine;
    forEachLine(input, [&](std::string_view line) {
        std::string alone{line};
        HistoryLines::decode(alone, always, byLine);
    });
    precondition(records.empty() || records == byLine, "lines influence each other");

    std::string again;
    for (const MinuteRecord& record : records) {
        again += HistoryLines::encode(record);
    }
    std::vector<MinuteRecord> reread;
    HistoryLines::decode(again, always, reread);
    precondition(reread == records, "a record changed on its way through a file");
    return 0;
}
