// Takes a picture of every page of the interface, without a display.

#include "PaceletApp/Components/Typography.h"
#include "tools/gallery/Arguments.h"
#include "tools/gallery/Photographer.h"

#include <QDir>
#include <QGuiApplication>

#include <fmt/core.h>

#include <cstdio>
#include <string_view>
#include <vector>

namespace {

using pacelet::gallery::Arguments;

constexpr int badUsage = 2;

/// False when a page could not be shown or saved.
bool takeAll(const Arguments& arguments) {
    pacelet::gallery::Photographer photographer;
    bool all = true;
    const QDir pages{QStringLiteral(":/gallery/pages")};
    for (const QFileInfo& page : pages.entryInfoList(QDir::Files, QDir::Name)) {
        const QString name = page.completeBaseName();
        // A name that begins with a capital is a piece of pages.
        if (name.front().isUpper() || !name.startsWith(QString::fromStdString(arguments.only))) {
            continue;
        }
        const QString file =
            QString::fromStdString(arguments.folder) + u'/' + name + QStringLiteral(".png");
        const auto picture = photographer.picture(page.filePath());
        if (!picture || !picture->save(file)) {
            fmt::print(stderr, "pacelet-gallery: no picture of {}\n", name.toStdString());
            all = false;
        }
    }
    return all;
}

} // namespace

int main(int argc, char** argv) {
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
    const QGuiApplication application{argc, argv};
    pacelet::installFonts();
    return takeAll(arguments) ? 0 : 1;
}
