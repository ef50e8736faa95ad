#include "Core/Support/Precondition.h"
#include "Hosts/Linux/Background/AutostartFile.h"
#include "Hosts/Linux/Background/UnitFile.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    Linux::UnitFile unit = Linux::parseUnitFile(text);
    Linux::filledIn(unit.description, "a@b.service");
    // The second half is a piece that changes the unit, and then says nothing new.
    const Linux::UnitFile piece = Linux::parseUnitFile(text.substr(size / 2));
    Linux::change(unit, piece);
    Linux::UnitFile again = unit;
    Linux::change(again, piece);
    precondition(again == unit, "a piece changes a unit twice");
    precondition(Linux::pieceFolders(text.substr(0, 32)).size() <= 32 + 3, "too many folders");
    const std::string base = Linux::templateOf(text);
    precondition(base.size() <= text.size(), "a template's name is longer than its instance's");
    if (const auto file = Linux::parseAutostartFile(text)) {
        Linux::isDesktopPart(*file);
        Linux::startsAtLogin(*file, {{}, {}, "/nowhere"});
    }
    return 0;
}
