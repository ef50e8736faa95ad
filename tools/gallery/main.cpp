// Takes pictures of the pieces of the interface and of the program in every state, without a
// display.

#include "PaceletApp/Components/Typography.h"
#include "tools/gallery/Arguments.h"
#include "tools/gallery/Photographer.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>

#include <fmt/core.h>

#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using pacelet::gallery::Arguments;

constexpr int badUsage = 2;

using pacelet::gallery::Shot;

/// Saves the pictures that are wanted.
class Album {
public:
    explicit Album(const Arguments& arguments)
        : arguments_{arguments} {}

    bool wants(const std::string& name) const { return name.starts_with(arguments_.only); }

    void add(const std::string& name, const std::optional<QImage>& picture) {
        const std::string file = arguments_.folder + "/" + name + ".png";
        if (!picture || !picture->save(QString::fromStdString(file))) {
            fmt::print(stderr, "pacelet-gallery: no picture of {}\n", name);
            complete_ = false;
        }
    }

    bool isComplete() const { return complete_; }

private:
    const Arguments& arguments_;
    bool complete_ = true;
};

void takePages(Album& album) {
    pacelet::gallery::Photographer photographer;
    const QDir pages{QStringLiteral(":/gallery/pages")};
    for (const QFileInfo& page : pages.entryInfoList(QDir::Files, QDir::Name)) {
        const std::string name = page.completeBaseName().toStdString();
        if (album.wants(name)) {
            album.add(name, photographer.picture(page.filePath()));
        }
    }
}

void takeShots(Album& album, const std::vector<Shot>& shots) {
    for (const Shot& shot : shots) {
        if (album.wants(shot.name)) {
            album.add(shot.name, pacelet::gallery::picture(shot));
        }
    }
}

bool takeAll(const Arguments& arguments) {
    Album album{arguments};
    if (!arguments.capture.empty()) {
        takeShots(album, pacelet::gallery::tourOfCapture(arguments.capture));
    } else if (arguments.scenario.empty()) {
        takePages(album);
        takeShots(album, pacelet::gallery::allShots());
    } else {
        takeShots(album, pacelet::gallery::tour(arguments.scenario));
    }
    return album.isComplete();
}

int run(int argc, char** argv) {
    const std::vector<std::string_view> words(argv + 1, argv + argc);
    const auto parsed = pacelet::gallery::parse(words);
    if (const auto* complaint = std::get_if<pacelet::gallery::Complaint>(&parsed)) {
        fmt::print(stderr, "pacelet-gallery: {}\n", complaint->text);
        return badUsage;
    }
    const auto& arguments = std::get<Arguments>(parsed);
    if (!QDir{}.mkpath(QString::fromStdString(arguments.folder))) {
        fmt::print(stderr, "pacelet-gallery: cannot make the folder \"{}\"\n", arguments.folder);
        return badUsage;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(arguments.scale));
    const QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    pacelet::installFonts();
    try {
        return takeAll(arguments) ? 0 : 1;
    } catch (const pacelet::Recorded::CaptureError& error) {
        fmt::print(stderr, "pacelet-gallery: {} {}\n", arguments.capture, error.what());
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "pacelet-gallery: %s\n", error.what());
        return 1;
    }
}
