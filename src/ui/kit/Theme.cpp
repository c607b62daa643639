#include "Theme.h"

#include <algorithm>
#include <cmath>

namespace genvara::theme {
namespace {

/// Grounds darker than this belong to a dark theme [0..255].
constexpr int kDarkLightness = 128;

// Least contrasts of the guidelines are 4.5 for text and 3 for controls; a little more, for grounds that
// differ a little from the window's own.
constexpr double kTextContrast = 5.2;
constexpr double kControlContrast = 3.5;

/// Share of a channel in the luminance, linear in light.
double Linear(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
    return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
           0.0722 * Linear(colour.blueF());
}

QColor Mixed(const QColor& one, const QColor& other, double share) {
    const auto channel = [share](float a, float b) { return static_cast<float>(a + (b - a) * share); };
    return QColor::fromRgbF(channel(one.redF(), other.redF()), channel(one.greenF(), other.greenF()),
                            channel(one.blueF(), other.blueF()));
}

/// The palest mixture of a text's colour and its ground that keeps a contrast.
QColor Palest(const QColor& text, const QColor& ground, double contrast) {
    constexpr int kSteps = 20;
    for (int step = kSteps - 1; step > 0; --step) {
        const QColor mixed = Mixed(text, ground, static_cast<double>(step) / kSteps);
        if (Contrast(mixed, ground) >= contrast) {
            return mixed;
        }
    }
    return text;
}

}  // namespace

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Active, QPalette::Base).lightness() < kDarkLightness;
}

double Contrast(const QColor& one, const QColor& other) {
    constexpr double kFlare = 0.05;
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + kFlare) / (darker + kFlare);
}

QColor LighterText(const QPalette& palette) {
    return Palest(palette.color(QPalette::Active, QPalette::WindowText),
                  palette.color(QPalette::Active, QPalette::Window), kTextContrast);
}

QColor IndicatorOutline(const QPalette& palette) {
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const QColor onWindow = Palest(text, palette.color(QPalette::Active, QPalette::Window), kControlContrast);
    const QColor onBase = Palest(text, palette.color(QPalette::Active, QPalette::Base), kControlContrast);
    const QColor ground = palette.color(QPalette::Active, QPalette::Window);
    return Contrast(onWindow, ground) > Contrast(onBase, ground) ? onWindow : onBase;
}

QColor NoteGround(const QPalette& palette) {
    return IsDark(palette) ? QColor(0x4A, 0x1C, 0x20) : QColor(0xFF, 0xF1, 0xF1);
}

QColor NoteText(const QPalette& palette) {
    return IsDark(palette) ? QColor(Qt::white) : QColor(Qt::black);
}

}  // namespace genvara::theme
