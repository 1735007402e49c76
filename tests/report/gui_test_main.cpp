// GoogleTest with a QGuiApplication: fonts and text measures need one.
#include <QGuiApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Discovery runs the program outside ctest's environment: no screen is needed anyway.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
