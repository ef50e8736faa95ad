#include "Core/Support/Precondition.h"
#include "Hosts/Linux/Background/AutostartFile.h"
#include "Hosts/Linux/Background/UnitFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const Linux::UnitFile unit = Linux::parseUnitFile(text);
    Linux::filledIn(unit.description, "a@b.service");
    const std::string base = Linux::templateOf(text);
    precondition(base.size() <= text.size(), "a template's name is longer than its instance's");
    if (const auto file = Linux::parseAutostartFile(text)) {
        Linux::isDesktopPart(*file);
        Linux::startsAtLogin(*file, {{}, {}, "/nowhere"});
    }
    return 0;
}
