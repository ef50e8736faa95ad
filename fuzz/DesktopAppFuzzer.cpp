#include "Hosts/Linux/Apps/AppAssociation.h"
#include "Hosts/Linux/Apps/AppScope.h"
#include "Hosts/Linux/Apps/DesktopEntry.h"
#include "Hosts/Linux/Apps/ExecLine.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

/// The text is an entry, a control group and a program's path in one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace pacelet::Linux;
    const std::string_view text{reinterpret_cast<const char*>(data), size};
    const auto entry = parseDesktopEntry(text);
    if (!entry) {
        appScopeIDs(text);
        return 0;
    }
    const auto command = execCommand(entry->exec);
    DesktopApp app;
    app.id = entry->type;
    app.name = bundleName(app.id, entry->name);
    if (app.name.find_first_of("/\n") != std::string::npos) {
        std::abort();
    }
    app.program = command.empty() ? std::string{} : command.front();
    app.folder = privateFolder(app.program, "/home/ann");
    if (!app.folder.empty() && !app.program.starts_with(app.folder + '/')) {
        std::abort();
    }
    const DesktopIndex index{{app, app}};
    const ProcessFacts facts{entry->tryExec, text};
    const Association association = associate(index, facts);
    const std::string path = bundledPath(association, facts.executable);
    if (association.app != nullptr && !path.starts_with("/Applications/")) {
        std::abort();
    }
    return 0;
}
