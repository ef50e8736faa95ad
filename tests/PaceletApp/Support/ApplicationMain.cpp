#include "PaceletApp/Components/Typography.h"

#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    testing::InitGoogleMock(&argc, argv);
    const QApplication application{argc, argv};
    QApplication::setQuitOnLastWindowClosed(false);
    pacelet::installFonts();
    return RUN_ALL_TESTS();
}
