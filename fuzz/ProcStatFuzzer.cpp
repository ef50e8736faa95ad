#include "Hosts/Linux/Proc/ProcStat.h"
#include "Hosts/Linux/Proc/ShownText.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Linux;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto stat = parseProcStat(text);
    // The name is a piece of the text, and what is shown of it stays on one line.
    if (stat && text.find(stat->comm) == std::string_view::npos) {
        std::abort();
    }
    if (shownPath(stat ? stat->comm : text).find('\n') != std::string::npos ||
        shownWord(text).find(' ') != std::string::npos ||
        shownArguments(text).find('\n') != std::string::npos) {
        std::abort();
    }
    return 0;
}
