#include "PaceletApp/Components/AppIconProvider.h"
#include "tests/PaceletApp/Support/Stage.h"

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
    struct Case {
        QByteArray path;
        bool icon;
        int asked;
    };
    const Case cases[] = {
        {"", false, 0},
        {"/Applications/Plain.app", false, 1},
        {"/Applications/Broken.app", false, 1},
        {"/Applications/50% Ä & B?#.app", true, 1},
    };
    for (const Case& each : cases) {
        IconsOnly workspace;
        Stage stage{"Loader { objectName: \"loader\"; sourceComponent: ProcessIcon {} }"};
        stage.engine().addImageProvider(QStringLiteral("appicon"), new AppIconProvider{workspace});
        QObject* icon = stage.property("loader", "item").value<QObject*>();
        icon->setProperty("appPath", QString::fromUtf8(each.path));
        const auto centre = [&] { return stage.view().grabWindow().pixel(3, 17); };
        const QRgb red = qRgb(255, 0, 0);
        EXPECT_EQ(QTest::qWaitFor([&] { return (centre() == red) == each.icon; }), true);
        QTest::qWait(50);
        EXPECT_EQ(centre() == red, each.icon) << each.path.constData();
        EXPECT_EQ(workspace.asked, each.asked);
    }
}

} // namespace
} // namespace pacelet
