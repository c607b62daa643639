// The keys of captions, in every window: each is pressed, and what happens is looked at.

#include <QCheckBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>
#include <set>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "Load.h"
#include "MakeLoadForm.h"
#include "WindowFixture.h"
#include "frmMtrLoad.h"
#include "frmSSCurrentLimit.h"

namespace genvara {
namespace {

/// The key that a caption marks; none for a caption without a mark.
Qt::Key KeyOf(const QString& caption) {
    const qsizetype mark = caption.indexOf('&');
    return mark < 0 ? Qt::Key_unknown : static_cast<Qt::Key>(caption.at(mark + 1).toUpper().unicode());
}

class AltKeys : public WindowTest {
  protected:
    void SetUp() override {
        Open(Sample("hospital.prj"));
        platform.Take();
    }
    static void Press(QWidget& window, Qt::Key key) { QTest::keyClick(&window, key, Qt::AltModifier); }

    /// The key of a label takes the focus to its control, from wherever it was.
    static void ExpectFocus(QWidget& window, const QLabel& label, QWidget& from) {
        QWidget* control = label.buddy();
        if (!control->isEnabled()) {
            return;
        }
        from.setFocus();
        Press(window, KeyOf(label.text()));
        EXPECT_TRUE(control->hasFocus()) << label.text().toStdString() << " leads to "
                                         << QApplication::focusWidget()->objectName().toStdString();
    }
    /// The key of a button clicks it. What a command does is tested elsewhere.
    static void ExpectClick(QWidget& window, QAbstractButton& button) {
        if (!button.isEnabled()) {
            return;
        }
        int clicks = 0;
        auto* radio = qobject_cast<QRadioButton*>(&button);
        const bool was = button.isChecked();
        if (!button.isCheckable()) {
            button.disconnect(SIGNAL(clicked(bool)));
        }
        const auto watch = QObject::connect(&button, &QAbstractButton::clicked, [&clicks] { ++clicks; });
        Press(window, KeyOf(button.text()));
        EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }, 1000)) << button.text().toStdString();
        if (button.isCheckable()) {
            EXPECT_EQ(button.isChecked(), radio != nullptr || !was) << button.text().toStdString();
        }
        QObject::disconnect(watch);
    }
    /// Presses the key of each caption that is seen.
    /// @return the keys.
    static std::string PressAll(QWidget& window, const QWidget& within, QWidget& from) {
        std::string keys;
        for (const auto* label : within.findChildren<QLabel*>()) {
            if (label->isVisible() && label->buddy() != nullptr && label->text().contains('&')) {
                keys += static_cast<char>(KeyOf(label->text()));
                ExpectFocus(window, *label, from);
            }
        }
        for (auto* button : within.findChildren<QAbstractButton*>()) {
            if (button->isVisible() && button->text().contains('&')) {
                keys += static_cast<char>(KeyOf(button->text()));
                ExpectClick(window, *button);
            }
        }
        return keys;
    }
    static void ExpectDistinct(const std::string& keys) {
        EXPECT_EQ(std::set<char>(keys.begin(), keys.end()).size(), keys.size()) << keys;
    }
    static void ExpectHas(const std::string& keys, const std::string& expected) {
        for (const char key : expected) {
            EXPECT_NE(keys.find(key), std::string::npos) << key << " of " << keys;
        }
    }
    void InDialog(const char* name, const std::function<void()>& open,
                  const std::function<void(QDialog&)>& act) {
        bool acted = false;
        InNextDialog([&](QDialog& dialog) {
            acted = true;
            EXPECT_EQ(dialog.objectName(), name);
            QApplication::setActiveWindow(&dialog);
            act(dialog);
        });
        open();
        EXPECT_TRUE(acted) << name;
    }
    [[nodiscard]] LoadFormServices Services() {
        return {
            .owner = &Window(),
            .platform = platform,
            .host = Window(),
            .project = {
                .profile = App().LoadProfile(), .site = App().PowerSystem(), .catalogue = App().Catalogue()}};
    }
};

TEST_F(AltKeys, OfTheOptions) {
    InDialog(
        "frmOptions", [this] { Run("mnuToolsOptions"); },
        [](QDialog& dialog) {
            const std::string keys = PressAll(dialog, dialog, Find<QPushButton>(dialog, "cmdCancel"));
            ExpectDistinct(keys);
            ExpectHas(keys, "PNOGL");
        });
}

TEST_F(AltKeys, OfTheDefaults) {
    InDialog(
        "frmDefaults", [this] { Run("mnuToolsDefaults"); },
        [](QDialog& dialog) {
            auto& pages = Find<QTabWidget>(dialog, "tabDefaults");
            for (int page = 0; page < pages.count(); ++page) {
                pages.setCurrentIndex(page);
                const std::string keys = PressAll(dialog, dialog, Find<QPushButton>(dialog, "cmdCancel"));
                ExpectDistinct(keys);
                EXPECT_GE(keys.size(), 2U);
                if (page == 1) {
                    ExpectHas(keys, "IXFH");
                }
            }
        });
}

TEST_F(AltKeys, OfTheStepsDialogs) {
    Bar(2);
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    tree.setCurrentItem(tree.topLevelItem(0));
    for (const char* name : {"frmAddStep", "frmEditStep", "frmAddLoad"}) {
        const char* button = name == std::string("frmAddStep")    ? "cmdAddStep"
                             : name == std::string("frmEditStep") ? "cmdEdit"
                                                                  : "cmdAddLoad";
        InDialog(
            name, [this, button] { Click(Window(), button); },
            [name](QDialog& dialog) {
                const std::string keys = PressAll(dialog, dialog, Find<QPushButton>(dialog, "cmdCancel"));
                ExpectDistinct(keys);
                EXPECT_EQ(keys.size(), name == std::string("frmAddStep")    ? 3U
                                       : name == std::string("frmEditStep") ? 2U
                                                                            : 1U)
                    << keys;
            });
    }
}

TEST_F(AltKeys, OfTheAboutBox) {
    InDialog(
        "frmAbout", [this] { Run("mnuHelpAbout"); },
        [](QDialog& dialog) {
            EXPECT_EQ(PressAll(dialog, dialog, Find<QPushButton>(dialog, "cmdOK")), "S");
        });
}

TEST_F(AltKeys, OfThePanelsBesideThoseOfTheMenus) {
    const struct {
        int index;
        const char* panel;
        std::size_t keys;
    } rows[] = {{0, "panProject", 4}, {1, "panPwrSys", 16}, {2, "panLoadProfile", 7}, {3, "panRecommend", 3}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.panel);
        Bar(row.index);
        auto& panel = Find<QWidget>(Window(), row.panel);
        const std::string keys = PressAll(Window(), panel, Find<QWidget>(Window(), "barMain"));
        EXPECT_EQ(keys.size(), row.keys) << keys;
        ExpectDistinct(keys + "FETH");
    }
    EXPECT_TRUE(platform.ends.empty());
}

class AltKeysOfAForm : public AltKeys, public testing::WithParamInterface<std::int32_t> {};

TEST_P(AltKeysOfAForm, LeadToItsFieldsAndABCToThePhases) {
    const auto form = MakeLoadForm(GetParam(), Services());
    form->show();
    QApplication::setActiveWindow(form.get());
    for (const auto& [key, button] : {std::pair{Qt::Key_A, "optPhaseA"}, std::pair{Qt::Key_B, "optPhaseB"},
                                      std::pair{Qt::Key_C, "optPhaseC"}}) {
        auto& phase = Find<QRadioButton>(*form, button);
        EXPECT_EQ(KeyOf(phase.text()), key);
        phase.setEnabled(true);  // the fast UPS starts on three phases alone
        Press(*form, key);
        EXPECT_TRUE(QTest::qWaitFor([&] { return phase.isChecked(); }, 1000)) << button;
    }
    const auto again = MakeLoadForm(GetParam(), Services());
    form->hide();
    again->show();
    QApplication::setActiveWindow(again.get());
    const std::string keys = PressAll(*again, *again, Find<QPushButton>(*again, "cmdCancel"));
    ExpectDistinct(keys);
    ExpectHas(keys, "SQNDABC");
    for (const auto* field : again->findChildren<EntryField*>()) {
        if (field->isVisible()) {
            EXPECT_TRUE(field->text().isEmpty() || !field->text().at(0).isLetter())
                << field->objectName().toStdString() << " was typed into";
        }
    }
    EXPECT_TRUE(platform.ends.empty());
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, AltKeysOfAForm,
                         testing::Range(load_type::kAirConditioning, load_type::kVFD + 1));

TEST_F(AltKeys, OfAMotorBySolidStateStarter) {
    const auto form = MakeLoadForm(load_type::kMotor, Services());
    form->show();
    QApplication::setActiveWindow(form.get());
    Find<ChoiceBox>(*form, "cboStartMethod").SelectRow(5);
    auto& advanced = Find<QPushButton>(*form, "cmdAdvanced");
    ASSERT_TRUE(advanced.isEnabled());
    ExpectClick(*form, advanced);
    Press(*form, Qt::Key_A);
    EXPECT_TRUE(QTest::qWaitFor([&] { return Find<QRadioButton>(*form, "optPhaseA").isChecked(); }, 1000));
    frmSSCurrentLimit limit(form.get(), platform);
    limit.ParentForm(dynamic_cast<frmMtrLoad&>(*form));
    limit.open();
    QApplication::setActiveWindow(&limit);
    EXPECT_EQ(PressAll(limit, limit, Find<QPushButton>(limit, "cmdCancel")).size(), 1U);
}

TEST_F(AltKeys, ALetterThatNobodyHasIsNotTyped) {
    Bar(1);
    auto& altitude = Control<EntryField>("panPwrSys", "txtAltitude");
    const QString before = altitude.text();
    altitude.setFocus();
    std::set<Qt::Key> used{Qt::Key_F, Qt::Key_E, Qt::Key_T, Qt::Key_H};
    for (const auto* label : Window().findChildren<QLabel*>()) {
        used.insert(KeyOf(label->text()));
    }
    for (const auto* button : Window().findChildren<QAbstractButton*>()) {
        used.insert(KeyOf(button->text()));
    }
    int pressed = 0;
    for (int key = Qt::Key_A; key <= Qt::Key_Z; ++key) {
        if (!used.contains(static_cast<Qt::Key>(key))) {
            ++pressed;
            QTest::keyClick(&altitude, static_cast<Qt::Key>(key), Qt::AltModifier);
        }
    }
    EXPECT_GT(pressed, 0);
    EXPECT_EQ(altitude.text(), before);
    EXPECT_TRUE(altitude.hasFocus());
}

}  // namespace
}  // namespace genvara
