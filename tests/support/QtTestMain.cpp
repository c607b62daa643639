#include <gtest/gtest.h>

#include <QPalette>

#include "GenvaraApplication.h"

namespace {

/// The colours of a dark desktop, for pictures.
QPalette DarkPalette() {
    const QColor ground(0x2B, 0x2B, 0x2B);
    const QColor text(0xE6, 0xE6, 0xE6);
    QPalette dark(QColor(0x3A, 0x3A, 0x3A), ground);
    dark.setColor(QPalette::Base, QColor(0x1E, 0x1E, 0x1E));
    dark.setColor(QPalette::AlternateBase, ground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        dark.setColor(role, text);
        dark.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    }
    dark.setColor(QPalette::PlaceholderText, QColor(0xA0, 0xA0, 0xA0));
    dark.setColor(QPalette::Highlight, QColor(0x2F, 0x7F, 0xC1));
    dark.setColor(QPalette::HighlightedText, Qt::white);
    return dark;
}

}  // namespace

/// Runs the tests of widgets, without a screen unless the caller names a platform.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const genvara::GenvaraApplication application(argc, argv);
    if (qEnvironmentVariableIsSet("GENVARA_DARK")) {
        QApplication::setPalette(DarkPalette());
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
