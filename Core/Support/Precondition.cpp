#include "Core/Support/Precondition.h"

#include <cstdio>
#include <cstdlib>

namespace pacelet {

void invariantBreach(std::string_view message) {
    std::fprintf(stderr, "pacelet: %.*s\n", static_cast<int>(message.size()), message.data());
    std::abort();
}

} // namespace pacelet
