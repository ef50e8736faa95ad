// What is set to run on a Linux desktop: units and autostart entries of a machine that has many.

#include "Hosts/Linux/Background/DesktopItems.h"
#include "tests/Support/TemporaryFolder.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <fmt/format.h>

namespace pacelet::Linux {
namespace {

/// 300 enabled units among 1,000, a third of them changed by pieces, and 50 entries.
void fill(const testing::TemporaryFolder& folder) {
    constexpr int units = 1000;
    constexpr int enabled = 300;
    constexpr int entries = 50;
    std::filesystem::permissions(folder.write("bin/tool", ""), std::filesystem::perms::owner_all);
    folder.write("dpkg/status", "");
    for (int number = 0; number < units; ++number) {
        const std::string name = fmt::format("vendor-{}.service", number);
        folder.write("lib/" + name,
                     fmt::format("[Unit]\nDescription=Serves {}\nAfter=network.target"
                                 "\n\n[Service]\nType=notify\nExecStart={}/bin/tool "
                                 "--number {}\nRestart=on-failure\n\n[Install]\n"
                                 "WantedBy=multi-user.target\n",
                                 number, folder.path().string(), number));
        if (number >= enabled) {
            continue;
        }
        folder.link("system/multi-user.target.wants/" + name, folder.path() / "lib" / name);
        if (number % 3 == 0) {
            folder.write("system/" + name + ".d/override.conf", "[Service]\nRestart=no\n");
        }
    }
    for (int number = 0; number < entries; ++number) {
        folder.write(
            fmt::format("config/autostart/entry-{}.desktop", number),
            fmt::format("[Desktop Entry]\nType=Application\nName=Entry {}\nExec=tool\n", number));
    }
}

void scan(benchmark::State& state) {
    const testing::TemporaryFolder folder;
    fill(folder);
    const auto path = [&](const char* name) { return (folder.path() / name).string(); };
    DesktopItems items{{{{path("applications")}, {path("bin")}, {}, path("home")},
                        path("config"),
                        {},
                        {{{path("system"), ItemScope::systemDaemon}},
                         {path("system"), path("lib")},
                         {".service", ".timer"}},
                        {},
                        path("dpkg")},
                       [] { return std::make_shared<const DesktopIndex>(); }};
    std::size_t found = items.items().size();
    for ([[maybe_unused]] auto _ : state) {
        found = items.items().size();
    }
    state.counters["items"] = static_cast<double>(found);
}
BENCHMARK(scan)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace pacelet::Linux
