#include "PaceletApp/Components/Typography.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleMock(&argc, argv);
    const QGuiApplication application{argc, argv};
    pacelet::installFonts();
    return RUN_ALL_TESTS();
}
