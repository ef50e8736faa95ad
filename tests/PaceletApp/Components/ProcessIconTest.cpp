#include "PaceletApp/Components/AppIconProvider.h"
#include "tests/PaceletApp/Support/Stage.h"
#include "tests/PaceletApp/Support/Table.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <gmock/gmock.h>

#include <atomic>

namespace pacelet {
namespace {

class IconsOnly : public Workspace {
public:
    std::vector<std::shared_ptr<RunningApplication>> runningApplications() override { return {}; }
    bool isRunning(const std::string&) override { return false; }
    bool openURL(const std::string&) override { return false; }
    std::optional<std::string> applicationPath(const std::string&) override { return {}; }
    void openApplication(const std::string&) override {}
    ObserverHandle observeSleep(std::function<void()>, std::function<void()>) override {
        return {};
    }

    std::optional<EncodedImage> icon(const std::string& path, int) override {
        ++asked;
        if (path == "/Applications/Plain.app") {
            return std::nullopt;
        }
        if (path == "/Applications/Broken.app") {
            return EncodedImage{{std::byte{1}, std::byte{2}}};
        }
        QImage image{64, 64, QImage::Format_RGB32};
        image.fill(Qt::red);
        QBuffer buffer;
        image.save(&buffer, "PNG");
        const auto* bytes = reinterpret_cast<const std::byte*>(buffer.data().constData());
        return EncodedImage{{bytes, bytes + buffer.size()}};
    }

    std::atomic<int> asked = 0;
};

TEST(ProcessIcon, showsTheIconOrElseATileAndAsksForNothingItDoesNotNeed) {
    const Table<const char*, bool, int> cases = {{"", false, 0},
                                                 {"/Applications/Plain.app", false, 1},
                                                 {"/Applications/Broken.app", false, 1},
                                                 {"/Applications/50% Ä & B?#.app", true, 1}};
    for (const auto& each : cases) {
        const auto& [path, hasIcon, asked] = each;
        IconsOnly workspace;
        Stage stage{"Loader { objectName: \"loader\"; sourceComponent: ProcessIcon {} }"};
        stage.engine().addImageProvider(QStringLiteral("appicon"), new AppIconProvider{workspace});
        QObject* icon = stage.property("loader", "item").value<QObject*>();
        icon->setProperty("appPath", QString::fromUtf8(path));
        const auto isAsExpected = [&, expected = hasIcon] {
            return (stage.view().grabWindow().pixel(3, 17) == qRgb(255, 0, 0)) == expected;
        };
        EXPECT_TRUE(QTest::qWaitFor(isAsExpected));
        QTest::qWait(50);
        EXPECT_TRUE(isAsExpected()) << path;
        EXPECT_EQ(workspace.asked, asked);
    }
}

} // namespace
} // namespace pacelet
