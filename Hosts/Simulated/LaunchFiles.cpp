#include "Hosts/Simulated/LaunchFiles.h"

#include "Core/Support/Text.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <plist/plist.h>
#include <system_error>

namespace pacelet::Simulated::LaunchFiles {

namespace {

namespace fs = std::filesystem;

struct FreePlist {
    void operator()(void* node) const { plist_free(node); }
};
using Plist = std::unique_ptr<void, FreePlist>;

void setText(const Plist& dictionary, const char* key, const std::string& text) {
    plist_dict_set_item(dictionary.get(), key, plist_new_string(text.c_str()));
}

void setTruth(const Plist& dictionary, const char* key, bool truth) {
    plist_dict_set_item(dictionary.get(), key, plist_new_bool(truth ? 1 : 0));
}

void save(const Plist& dictionary, PlistFormat format, const fs::path& file) {
    char* bytes = nullptr;
    std::uint32_t size = 0;
    if (format == PlistFormat::binary) {
        plist_to_bin(dictionary.get(), &bytes, &size);
    } else {
        plist_to_xml(dictionary.get(), &bytes, &size);
    }
    const std::unique_ptr<char, decltype(&std::free)> owned{bytes, &std::free};
    fs::create_directories(file.parent_path());
    std::ofstream out{file, std::ios::binary};
    out.write(bytes, static_cast<std::streamsize>(size));
    if (!out.flush()) {
        throw std::system_error{std::make_error_code(std::errc::io_error), file.string()};
    }
}

void writeBundle(const fs::path& bundle, const std::string& identifier,
                 const std::string& executable, PlistFormat format) {
    const Plist info{plist_new_dict()};
    setText(info, "CFBundleIdentifier", identifier);
    setText(info, "CFBundleExecutable", executable);
    setText(info, "CFBundleName", executable);
    setText(info, "CFBundlePackageType", "APPL");
    save(info, format, bundle / "Contents/Info.plist");
}

/// Conditional restarts are written as launchd knows them, half of the time.
void setKeepAlive(const Plist& job, const LaunchItem& item) {
    if (item.format == PlistFormat::xml) {
        setTruth(job, "KeepAlive", true);
        return;
    }
    plist_t conditions = plist_new_dict();
    plist_dict_set_item(conditions, "SuccessfulExit", plist_new_bool(0));
    plist_dict_set_item(job.get(), "KeepAlive", conditions);
}

void writeJob(const LaunchItem& item, const fs::path& folder) {
    const Plist job{plist_new_dict()};
    setText(job, "Label", item.label);
    if (item.folder == LaunchFolder::inApplication) {
        setText(job, "BundleProgram", item.program);
    } else if (item.format == PlistFormat::binary) {
        setText(job, "Program", item.program);
    } else {
        plist_t arguments = plist_new_array();
        plist_array_append_item(arguments, plist_new_string(item.program.c_str()));
        plist_array_append_item(arguments, plist_new_string("--background"));
        plist_dict_set_item(job.get(), "ProgramArguments", arguments);
    }
    setTruth(job, "RunAtLoad", item.runAtLoad);
    if (item.keepAlive) {
        setKeepAlive(job, item);
    }
    save(job, item.format, folder / (item.label + ".plist"));
}

void writeItem(const LaunchItem& item, const fs::path& root, const fs::path& home) {
    const fs::path carrier =
        root / "Applications" / (item.application + ".app") / "Contents/Library";
    switch (item.folder) {
    case LaunchFolder::userAgents:
        return writeJob(item, home / "Library/LaunchAgents");
    case LaunchFolder::systemAgents:
        return writeJob(item, root / "Library/LaunchAgents");
    case LaunchFolder::systemDaemons:
        return writeJob(item, root / "Library/LaunchDaemons");
    case LaunchFolder::inApplication:
        return writeJob(item, carrier / "LaunchAgents");
    case LaunchFolder::loginItem:
        return writeBundle(carrier / "LoginItems" / (item.program + ".app"), item.label,
                           item.program, item.format);
    }
}

} // namespace

void write(const World& world, const fs::path& root, const fs::path& home) {
    PlistFormat format = PlistFormat::xml;
    for (const InstalledApp& app : world.installed) {
        if (app.path.starts_with("/Applications/")) {
            writeBundle(root / "Applications" / lastPathComponent(app.path), app.bundleIdentifier,
                        app.name, format);
        }
        format = format == PlistFormat::xml ? PlistFormat::binary : PlistFormat::xml;
    }
    for (const LaunchItem& item : world.launchItems) {
        writeItem(item, root, home);
    }
}

} // namespace pacelet::Simulated::LaunchFiles
