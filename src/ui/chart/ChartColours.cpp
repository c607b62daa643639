#include "ChartColours.h"

#include "Theme.h"

namespace genvara {
namespace {

QColor Between(const QColor& one, const QColor& other, double share) {
    const auto mix = [share](int a, int b) { return a + qRound((b - a) * share); };
    return {mix(one.red(), other.red()), mix(one.green(), other.green()), mix(one.blue(), other.blue())};
}

constexpr double kGridShare = 0.16;  ///< how far grid lines stand out from the ground

ChartColours Light(const QColor& ground, const QColor& text) {
    return {.ground = ground,
            .text = text,
            .faint = Between(ground, text, 0.68),
            .grid = Between(ground, text, kGridShare),
            .value = QColor(0x44, 0x77, 0xAA),
            .fails = QColor(0xC9, 0x8A, 0x10),
            .limit = QColor(0xB0, 0x3A, 0x52),
            .other = QColor(0x77, 0x7F, 0x86),
            .selected = QColor(0x00, 0x2F, 0x5F),
            .isDark = false};
}

ChartColours Dark(const QColor& ground, const QColor& text) {
    return {.ground = ground,
            .text = text,
            .faint = Between(ground, text, 0.74),
            .grid = Between(ground, text, kGridShare),
            .value = QColor(0x6C, 0xA3, 0xD9),
            .fails = QColor(0xE5, 0xBE, 0x5C),
            .limit = QColor(0xF0, 0x8C, 0xA0),
            .other = QColor(0x9A, 0xA4, 0xAC),
            .selected = QColor(0xCF, 0xE8, 0xFF),
            .isDark = true};
}

}  // namespace

ChartColours ColoursOf(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    return theme::IsDark(palette) ? Dark(ground, text) : Light(ground, text);
}

ChartColours ColoursOnPaper() {
    return Light(Qt::white, Qt::black);
}

QColor MapColour(const ChartColours& colours, double share) {
    const QColor pale = Between(colours.ground, colours.value, 0.22);
    const QColor deep = colours.isDark ? QColor(0xBF, 0xDD, 0xF7) : QColor(0x0F, 0x3A, 0x66);
    return share < 0.5 ? Between(pale, colours.value, share * 2.0)
                       : Between(colours.value, deep, share * 2.0 - 1.0);
}

QColor TextOn(const QColor& ground) {
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return theme::Contrast(ground, black) > theme::Contrast(ground, white) ? black : white;
}

}  // namespace genvara
