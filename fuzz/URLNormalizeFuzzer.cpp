#include "Core/Browser/TabCleanup.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"

#include <cstddef>
#include <cstdint>

using namespace pacelet;

/// The comparison form is the address itself, cut at its end and lowered here and there.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string url{reinterpret_cast<const char*>(data), size};
    const std::string normal = TabCleanup::normalize(url);
    precondition(asciiLowercased(url).starts_with(asciiLowercased(normal)),
                 "more than letters' case and the end has changed");
    precondition(normal.ends_with('/') || TabCleanup::normalize(normal) == normal,
                 "normalizing twice gives something new");
    const std::string host = BrowserTab{"", "", "", "", url, false}.host();
    precondition(url.find(host) != std::string::npos, "a host does not stand in its address");
    return 0;
}
