// Writes the guide pages that the program links to, as a site for any web server.

#include "Core/Knowledge/CatalogFile.h"
#include "tools/guides/GuideSite.h"

#include <cstdio>
#include <filesystem>
#include <fmt/format.h>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace pacelet;

constexpr int statusFailed = 1;
constexpr int statusUsage = 2;

void writeFile(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream stream{path, std::ios::binary};
    stream << text;
    stream.close();
    if (!stream) {
        throw guides::GuideError{fmt::format("couldn't write {}", path.string())};
    }
}

void writeSite(const fs::path& catalog, const fs::path& style, const fs::path& logo,
               const fs::path& folder) {
    const auto files = guides::guideSite(CatalogFile::read(catalog));
    for (const auto& [name, text] : files) {
        writeFile(folder / name, text);
    }
    const auto replace = fs::copy_options::overwrite_existing;
    fs::copy_file(style, folder / "guides.css", replace);
    fs::copy_file(logo, folder / "logo.svg", replace);
    fmt::print("{} guides in {}\n", files.size() - 1, folder.string());
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        fmt::print(stderr, "usage: pacelet-guides CATALOG STYLESHEET LOGO FOLDER\n");
        return statusUsage;
    }
    try {
        writeSite(argv[1], argv[2], argv[3], argv[4]);
        return 0;
    } catch (const std::exception& error) {
        fmt::print(stderr, "pacelet-guides: {}\n", error.what());
        return statusFailed;
    }
}
