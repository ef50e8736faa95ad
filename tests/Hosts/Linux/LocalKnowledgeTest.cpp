#include "Hosts/Linux/Knowledge/LocalKnowledge.h"

#include "Hosts/Linux/Knowledge/ManualPage.h"
#include "tests/Support/Table.h"
#include "tests/Support/TemporaryFolder.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <zlib.h>

namespace pacelet::Linux {
namespace {

namespace fs = std::filesystem;
using pacelet::testing::TemporaryFolder;

TEST(ManualPage, TellsTheLineBehindTheDash) {
    for (const auto& [name, source, line] : pacelet::testing::rows<3>("Linux", "manual pages")) {
        EXPECT_EQ(ManualPage::line(source, name), line) << source;
    }
}

RC_GTEST_PROP(ManualPage, ReadsAnything, ()) {
    const auto source = *rc::gen::container<std::string>(
        rc::gen::elementOf(std::string{"a-\\f(s*\"&.\n SHNAMENdNmdeso"}));
    ManualPage::line(std::string_view{".SH NAME\n" + source}, "a");
}

/// A small machine below one folder.
class LocalKnowledgeTest : public ::testing::Test {
protected:
    LocalKnowledgeTest() {
        folder.write("dpkg/info/tools.list", "/.\n/usr\n/usr/bin/yes\n/usr/lib/tools/helper\n");
        folder.write("dpkg/info/libx:amd64.list", "/bin/old\n");
        folder.write("dpkg/status", "Package: tools\nStatus: install ok installed\n"
                                    "Description: all the tools\n of a long text\n\n"
                                    "Package: libx\nDescription: x for all\n");
        manual("man1/yes.1", ".SH NAME\nyes \\- say yes\n");
        manual("man1/helper.1", ".SH NAME\nhelper \\- of somebody else\n");
    }

    void manual(const std::string& name, const std::string& source) {
        folder.write("man/" + name, "");
        gzFile file = ::gzopen(path("man/" + name + ".gz").c_str(), "wb");
        ::gzwrite(file, source.data(), static_cast<unsigned>(source.size()));
        ::gzclose(file);
    }
    std::string path(const std::string& name) const { return (folder.path() / name).string(); }
    std::string program(const std::string& name) {
        fs::permissions(folder.write(name, "\x7f"), fs::perms::owner_all);
        return path(name);
    }
    std::shared_ptr<const ProgramFacts> about(ProcessOrigin origin) {
        asked = std::move(origin);
        return knowledge.about(std::vector{ProgramQuestion{1, asked->executable}}).front();
    }

    TemporaryFolder folder;
    DesktopPlaces places{{path("applications")}, {path("bin")}, {}, "/home/ann"};
    std::optional<ProcessOrigin> asked;
    LocalKnowledge knowledge{{places,
                              {{path("applications"), Starter::menu},
                               {path("autostart"), Starter::session},
                               {path("units"), Starter::system},
                               {path("own"), Starter::person}},
                              path("dpkg"),
                              path("man")},
                             [this](auto) { return std::vector{asked}; }};
};

TEST_F(LocalKnowledgeTest, ReadsPackagesAndManualPages) {
    const auto yes = about({"/usr/bin/yes"});
    EXPECT_EQ(*yes, (ProgramFacts{.package = "tools",
                                  .packageDescription = "all the tools",
                                  .manualLine = "say yes"}));
    EXPECT_EQ(about({"/usr/bin/yes"}), yes) << "not read again";
    EXPECT_EQ(about({"/usr/bin/old"})->package, "libx") << "listed where it lay before";
    EXPECT_EQ(*about({"/home/ann/yes"}), ProgramFacts{}) << "another program of that name";

    const auto helper = about({"/usr/lib/tools/helper"});
    EXPECT_EQ(helper->role, ProgramRole::system);
    EXPECT_EQ(helper->manualLine, "") << "the page is not of its package";
    EXPECT_EQ(about({.executable = "kworker", .reason = AssociationReason::kernelThread})->role,
              ProgramRole::kernel);

    // The files of a container are not those of the machine.
    EXPECT_EQ(
        *about({.executable = "/usr/bin/yes", .unit = "x", .reason = AssociationReason::container}),
        ProgramFacts{.entryKind = "Program in a container"});
    EXPECT_EQ(about({.executable = "/home/ann/a.py", .starter = "python3"})->entryKind,
              "Script for python3");

    // What is installed later is seen.
    EXPECT_EQ(about({"/opt/new/new"})->package, "");
    folder.write("dpkg/info/new.list", "/opt/new/new\n");
    fs::last_write_time(path("dpkg/status"),
                        fs::file_time_type::clock::now() + std::chrono::seconds{5});
    EXPECT_EQ(about({"/opt/new/new"})->package, "new");

    asked.reset();
    EXPECT_EQ(knowledge.about(std::vector{ProgramQuestion{1, "/gone"}}).front(), nullptr);
}

TEST_F(LocalKnowledgeTest, ReadsWhoStartsAProgram) {
    const std::string daemon = program("sbin/daemon");
    const std::string panel = program("bin/panel");
    const std::string tool = program("bin/tool");
    const std::string editor = program("bin/editor");
    folder.write("units/daemon.service",
                 "[Unit]\nDescription=The Daemon\n[Service]\nExecStart=-" + daemon + " --flag\n");
    folder.write("units/tidy.service",
                 "[Unit]\nDescription=Tidies\n[Service]\nType=oneshot\nExecStart=" + tool + "\n");
    folder.write("units/a@.service", "[Unit]\nDescription=For %i\n[Service]\nExecStart=" + tool);
    folder.write("own/mine.service", "[Unit]\nDescription=My own\n[Service]\nExecStart=/bin/sh x");
    folder.write("autostart/panel.desktop",
                 "[Desktop Entry]\nType=Application\nName=Panel\nComment=Bar\nExec=panel %U\n"
                 "NoDisplay=true\n");
    folder.write("applications/ed.desktop", "[Desktop Entry]\nType=Application\nName=Ed\n"
                                            "GenericName=Editor\nExec=editor\n");
    folder.write("autostart/ed.desktop", "[Desktop Entry]\nType=Application\nExec=editor -q\n");
    folder.write("autostart/broken.desktop", "\xff\n[Desktop");

    EXPECT_EQ(*about({daemon}),
              (ProgramFacts{
                  .role = ProgramRole::system, .unit = "daemon", .unitDescription = "The Daemon"}));
    EXPECT_EQ(
        *about({panel}),
        (ProgramFacts{.role = ProgramRole::session, .entryName = "Panel", .entryComment = "Bar"}));
    EXPECT_EQ(about({editor})->role, ProgramRole::program) << "starts at login, yet is in the menu";
    EXPECT_EQ(about({editor})->entryKind, "Editor");
    EXPECT_EQ(about({.executable = "/snap/x", .appID = "ed"})->entryName, "Ed");
    EXPECT_EQ(about({tool})->unitDescription, "") << "it serves others, too";
    EXPECT_EQ(about({.executable = "/home/ann/run", .unit = "mine"})->unitDescription, "My own");
    EXPECT_EQ(about({.executable = "/home/ann/run"})->unitDescription, "");
}

} // namespace
} // namespace pacelet::Linux
