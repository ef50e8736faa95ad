#include "Core/Inspectors/BackgroundItemsReader.h"
#include "Core/Support/Precondition.h"
#include "Core/Support/Text.h"

#include <string_view>

// Whatever the bytes, an item has valid texts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view bytes{reinterpret_cast<const char*>(data), size};
    const auto item = BackgroundItemsReader::parse(bytes, "/source", ItemScope::appBundled,
                                                   "/Applications/A.app");
    if (item) {
        precondition(repairedUTF8(item->label) == item->label, "a label is not UTF-8");
        precondition(!item->program || repairedUTF8(*item->program) == *item->program,
                     "a program is not UTF-8");
        BackgroundItemsReader::ownerApp(item->program, item->label, {{"com.vendor.App", "App"}});
    }
    return 0;
}
