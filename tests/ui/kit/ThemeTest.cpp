#include "Theme.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QImage>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "EntryField.h"
#include "FormGrid.h"
#include "ScriptedPlatform.h"

namespace genvara {
namespace {

QPalette Light() {
    QPalette light(QColor(0xEF, 0xEF, 0xEF));
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::WindowText, Qt::black);
    return light;
}

/// The colours of dark desktops: two in common use, and one as black as a screen is.
std::vector<QPalette> DarkOnes() {
    std::vector<QPalette> palettes;
    for (const auto& [window, base, text] :
         {std::tuple{QColor(0x2B, 0x2B, 0x2B), QColor(0x1E, 0x1E, 0x1E), QColor(0xE6, 0xE6, 0xE6)},
          std::tuple{QColor(0x35, 0x35, 0x35), QColor(0x2A, 0x2A, 0x2A), QColor(0xFF, 0xFF, 0xFF)},
          std::tuple{QColor(0x00, 0x00, 0x00), QColor(0x0A, 0x0A, 0x0A), QColor(0xC0, 0xC0, 0xC0)}}) {
        QPalette dark(window, window);
        dark.setColor(QPalette::Base, base);
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
            dark.setColor(role, text);
        }
        palettes.push_back(dark);
    }
    return palettes;
}

/// Shows the program in other colours for a while.
class Themed {
  public:
    explicit Themed(const QPalette& palette) : m_before(QApplication::palette()) {
        QApplication::setPalette(palette);
    }
    ~Themed() { QApplication::setPalette(m_before); }
    Themed(const Themed&) = delete;
    Themed& operator=(const Themed&) = delete;
    Themed(Themed&&) = delete;
    Themed& operator=(Themed&&) = delete;

  private:
    QPalette m_before;
};

/// The strongest contrast with the ground that a part of a picture has.
double StrongestContrast(const QImage& picture, const QRect& part, const QColor& ground) {
    double strongest = 1.0;
    for (int y = std::max(0, part.top()); y <= std::min(picture.height() - 1, part.bottom()); ++y) {
        for (int x = std::max(0, part.left()); x <= std::min(picture.width() - 1, part.right()); ++x) {
            strongest = std::max(strongest, theme::Contrast(picture.pixelColor(x, y), ground));
        }
    }
    return strongest;
}

TEST(Theme, MeasuresContrastAsTheGuidelinesDo) {
    EXPECT_NEAR(theme::Contrast(Qt::black, Qt::white), 21.0, 1e-9);
    EXPECT_NEAR(theme::Contrast(Qt::white, Qt::black), 21.0, 1e-9);
    EXPECT_NEAR(theme::Contrast(Qt::red, Qt::red), 1.0, 1e-9);
    // 0x77 / 0xFF = 0.4667: ((0.4667 + 0.055) / 1.055)^2.4 = 0.1845; 1.05 / 0.2345 = 4.48
    EXPECT_NEAR(theme::Contrast(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(Theme, TellsDarkFromLight) {
    EXPECT_FALSE(theme::IsDark(Light()));
    for (const QPalette& dark : DarkOnes()) {
        EXPECT_TRUE(theme::IsDark(dark));
    }
}

/// A box to tick, an option button and a note on one ground.
struct Sample {
    QWidget window;
    QCheckBox* box = new QCheckBox("box");
    QRadioButton* button = new QRadioButton("button");
    QRadioButton* other = new QRadioButton("other");
    QLabel* note = FormGrid::MakeNote("note", "( 5% - 35% )");

    Sample() {
        auto* column = new QVBoxLayout(&window);
        for (QWidget* widget : std::initializer_list<QWidget*>{box, button, other, note}) {
            column->addWidget(widget);
        }
        other->setChecked(true);
        window.resize(300, 160);
        window.show();
        QCoreApplication::processEvents();
    }
};

TEST(Theme, BoxesAndButtonsThatAreOffAreSeen) {
    std::vector<QPalette> palettes = DarkOnes();
    palettes.push_back(Light());
    for (const QPalette& palette : palettes) {
        const Themed themed(palette);
        Sample sample;
        const QImage picture = sample.window.grab().toImage();
        const QColor ground = palette.color(QPalette::Window);
        constexpr int kIndicator = 18;  // pixels, at the widget's left
        for (const QWidget* widget : std::initializer_list<QWidget*>{sample.box, sample.button}) {
            const QRect indicator(widget->pos(), QSize(kIndicator, widget->height()));
            EXPECT_GE(StrongestContrast(picture, indicator, ground), theme::IsDark(palette) ? 3.0 : 1.2)
                << ground.name().toStdString();
        }
    }
}

TEST(Theme, NotesAreReadWithEase) {
    std::vector<QPalette> palettes = DarkOnes();
    palettes.push_back(Light());
    for (const QPalette& palette : palettes) {
        const Themed themed(palette);
        Sample sample;
        const QColor colour = sample.note->palette().color(QPalette::Active, QPalette::WindowText);
        EXPECT_GE(theme::Contrast(colour, palette.color(QPalette::Window)), 4.5);
        EXPECT_LT(theme::Contrast(colour, palette.color(QPalette::Window)),
                  theme::Contrast(palette.color(QPalette::WindowText), palette.color(QPalette::Window)))
            << "in a lighter tone than the text";
        const QImage picture = sample.window.grab().toImage();
        EXPECT_GE(StrongestContrast(picture, sample.note->geometry(), palette.color(QPalette::Window)), 4.0)
            << "less what the smoothing of thin strokes takes";
    }
}

TEST(Theme, NotesFollowAThemeThatChanges) {
    Sample sample;
    for (const QPalette& palette : DarkOnes()) {
        const Themed themed(palette);
        QCoreApplication::processEvents();
        EXPECT_GE(theme::Contrast(sample.note->palette().color(QPalette::Active, QPalette::WindowText),
                                  palette.color(QPalette::Window)),
                  4.5);
    }
}

TEST(Theme, TheSentenceBesideAFieldIsRead) {
    for (const QPalette& palette : {Light(), DarkOnes().front()}) {
        EXPECT_GE(theme::Contrast(theme::NoteText(palette), theme::NoteGround(palette)), 7.0);
    }
}

}  // namespace
}  // namespace genvara
