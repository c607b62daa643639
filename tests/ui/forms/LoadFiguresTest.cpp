#include <gtest/gtest.h>

#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <array>
#include <random>

#include "ChoiceBox.h"
#include "FiguresText.h"
#include "FormGrid.h"
#include "FormsFixture.h"
#include "MakeLoadForm.h"
#include "Theme.h"
#include "frmMiscLoad.h"
#include "frmMtrLoad.h"
#include "frmOfficeLoad.h"

/// The line that tells what a load will count for while it is entered.
namespace genvara {
namespace {

class LoadFigures : public FormsTest {
  protected:
    static std::string Shown(const QWidget& form) {
        QApplication::processEvents();
        return Find<NoteLabel>(form, "lblFigures").text().toStdString();
    }
    static bool IsPale(const QWidget& form) {
        const QPalette own = Find<NoteLabel>(form, "lblFigures").palette();
        return own.color(QPalette::WindowText) == theme::LighterText(QApplication::palette());
    }
};

TEST_F(LoadFigures, FollowWhatIsTyped) {
    const auto form = New<frmMiscLoad>();
    EXPECT_EQ(Shown(*form), "kW is blank. Enter 0 to 2000 kW.");
    EXPECT_TRUE(IsPale(*form));
    Type(*form, "txtkW", "12.5");
    Type(*form, "txtPF", "0.8");
    EXPECT_EQ(Shown(*form), "Running 12.50 kW, 15.63 kVA. Starting 12.50 kW, 15.63 kVA.");
    EXPECT_FALSE(IsPale(*form));
    EXPECT_EQ(Find<QPushButton>(*form, "cmdOK").accessibleDescription().toStdString(), Shown(*form));
    Type(*form, "txtQty", "2");
    EXPECT_EQ(Shown(*form).substr(0, 45), "Running 25.00 kW, 31.25 kVA (2 × 12.50, 15.6");
    Type(*form, "txtPF", "0.5");
    EXPECT_EQ(Shown(*form), "pF: 0.5 is out of range. Enter 0.60 to 1.00.");
    EXPECT_TRUE(IsPale(*form));
    EXPECT_FALSE(Field(*form, "txtPF").InError()) << "nobody has left the field yet";
    EXPECT_EQ(Step().NumLoads(), 0);
}

TEST_F(LoadFigures, MoveNothingWhenTheyCome) {
    const auto form = New<frmMiscLoad>();
    (void)Shown(*form);
    const QSize size = form->size();
    const QPoint ok = Find<QPushButton>(*form, "cmdOK").mapTo(form.get(), QPoint());
    Type(*form, "txtkW", "1999.99");
    Type(*form, "txtQty", "256");
    EXPECT_NE(Shown(*form).find("256 × "), std::string::npos);
    EXPECT_EQ(form->size(), size);
    EXPECT_EQ(Find<QPushButton>(*form, "cmdOK").mapTo(form.get(), QPoint()), ok);
}

TEST_F(LoadFigures, SayNothingOfWhatIsNotYetEntered) {
    const auto office = New<frmOfficeLoad>();
    EXPECT_EQ(Shown(*office), "Nothing is entered yet.");
    EXPECT_TRUE(platform.Take().empty());
    const auto motor = New<frmMtrLoad>();
    (void)Shown(*motor);
    for (const auto* list : motor->findChildren<ChoiceBox*>()) {
        EXPECT_FALSE(list->InError()) << list->objectName().toStdString();
    }
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(LoadFigures, LeaveANameAsItIsBeingTyped) {
    const auto form = New<frmMiscLoad>();
    Type(*form, "txtkW", "1");
    Type(*form, "txtName", " Fan ");
    (void)Shown(*form);
    EXPECT_EQ(TextOf(*form, "txtName"), " Fan ");
}

TEST_F(LoadFigures, AreThoseOfTheLoadThatOkAdds) {
    std::mt19937 random(11);  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same forms at every run
    const auto upTo = [&](auto most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
    constexpr std::array kNumbers{"1", "2", "7", "12.5", "40", "75", "99.5", "300", "0.7", "0.95"};
    std::int32_t added = 0;
    for (std::int32_t type = 0; type < load_type::kCount; ++type) {
        for (int i = 0; i < 25; ++i) {
            const auto form = MakeLoadForm(type, Services());
            form->open();
            for (auto* button : form->findChildren<QRadioButton*>()) {
                if (button->isEnabled() && upTo(3) == 0) {
                    button->click();
                }
            }
            for (auto* list : form->findChildren<QComboBox*>()) {
                list->setCurrentIndex(upTo(list->count()));
            }
            for (auto* field : form->findChildren<EntryField*>()) {
                if (field->isEnabled() && field->objectName() != "txtStepNum" && upTo(5) != 0) {
                    field->setText(kNumbers.at(static_cast<std::size_t>(upTo(kNumbers.size()))));
                }
            }
            const std::string shown = Shown(*form);
            const bool holds = !IsPale(*form);
            const std::int32_t before = Step().NumLoads();
            Click(*form, "cmdOK");
            (void)platform.Take();
            const bool stored = Step().NumLoads() > before;
            EXPECT_EQ(holds, stored) << form->objectName().toStdString() << ": " << shown;
            if (stored) {
                ++added;
                EXPECT_EQ(shown, FiguresText(*std::prev(Step().end()), EntryNumbers()));
            }
            form->close();
        }
    }
    EXPECT_GT(added, 50);
}

}  // namespace
}  // namespace genvara
