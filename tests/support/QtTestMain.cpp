#include <gtest/gtest.h>

#include "GenvaraApplication.h"

/// Runs the tests of widgets, without a screen unless the caller names a platform.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const genvara::GenvaraApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
