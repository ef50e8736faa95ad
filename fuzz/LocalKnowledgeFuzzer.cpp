#include "Hosts/Linux/Apps/BoxedApp.h"
#include "Hosts/Linux/Knowledge/DpkgDatabase.h"
#include "Hosts/Linux/Knowledge/ManualPage.h"
#include "Hosts/Linux/Knowledge/StartFiles.h"
#include "Hosts/Linux/Proc/CommandLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    Linux::ManualPage::line(text, "x");
    Linux::parseStartFile(text);
    Linux::forEachPackage(text, [](const Linux::Package& package) {
        if (package.name.empty()) {
            std::abort();
        }
    });
    Linux::CommandLine::script(text);
    Linux::CommandLine::part(text, "x");
    if (const auto box = Linux::boxedApp("/usr/bin/x", text); box && box->app.name.empty()) {
        std::abort();
    }
    return 0;
}
