#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Widget tests run without a display; test discovery runs this before any test environment applies.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
