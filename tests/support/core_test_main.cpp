#include <QCoreApplication>
#include <gtest/gtest.h>

// Tests of logic that shows nothing run without Qt Gui.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    QCoreApplication app(argc, argv);
    return RUN_ALL_TESTS();
}
