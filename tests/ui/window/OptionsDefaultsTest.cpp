// The dialogs of the program's options and of the user's defaults.

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "SmallCatalogue.h"
#include "Texts.h"
#include "WindowFixture.h"
#include "frmDefaults.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

EntryField& Field(QWidget& dialog, const char* name) {
    return Find<EntryField>(dialog, name);
}

std::string TextOf(QWidget& dialog, const char* label) {
    return WithoutMnemonic(Find<QLabel>(dialog, label).text()).toStdString();
}

/// Every caption of a field has a key.
void ExpectKeys(const QDialog& dialog) {
    for (const auto* label : dialog.findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            EXPECT_TRUE(label->text().contains('&')) << label->text().toStdString();
        }
    }
}

/// Highest and lowest number that the arrow keys reach, and the step between the lowest and the next.
struct Reach {
    int least;
    int most;
    int step;
};

Reach ReachOf(EntryField& field) {
    constexpr int kMoreThanAnySteps = 110;
    Reach reach{};
    const auto press = [&field](Qt::Key key, int times) {
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(&field, key);
        }
        return field.text().toInt();
    };
    reach.most = press(Qt::Key_Up, kMoreThanAnySteps);
    reach.least = press(Qt::Key_Down, kMoreThanAnySteps);
    reach.step = press(Qt::Key_Up, 1) - reach.least;
    return reach;
}

void ExpectReach(EntryField& field, Reach expected) {
    const Reach reach = ReachOf(field);
    EXPECT_EQ(reach.least, expected.least) << field.objectName().toStdString();
    EXPECT_EQ(reach.most, expected.most) << field.objectName().toStdString();
    EXPECT_EQ(reach.step, expected.step) << field.objectName().toStdString();
}

class OptionsDialog : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    void InOptions(const std::function<void(QDialog&)>& act) {
        bool acted = false;
        InNextDialog([&](QDialog& dialog) {
            acted = true;
            QApplication::setActiveWindow(&dialog);
            EXPECT_EQ(dialog.objectName(), "frmOptions");
            act(dialog);
        });
        Run("mnuToolsOptions");
        EXPECT_TRUE(acted);
    }
    /// Enters both loadings and presses OK; whether that closed the dialog.
    bool OkWithLoadings(const char* most, const char* least) {
        bool closed = false;
        InOptions([&](QDialog& dialog) {
            Field(dialog, "txtMaxLoad").setText(most);
            Field(dialog, "txtMinLoad").setText(least);
            Click(dialog, "cmdOK");
            closed = !dialog.isVisible();
            if (!closed) {
                EXPECT_TRUE(Field(dialog, "txtMaxLoad").hasFocus());
            }
        });
        return closed;
    }
};

TEST_F(OptionsDialog, ShowsTheOptionsUnderTheirCaptions) {
    App().ProjectPath("/projects");
    App().IsMetric(true);
    InOptions([](QDialog& dialog) {
        ExpectKeys(dialog);
        EXPECT_EQ(dialog.windowTitle(), "Options");
        EXPECT_EQ(TextOf(dialog, "lblProjPath"), "Project Path");
        EXPECT_EQ(TextOf(dialog, "lblNumGensets"), "Max. Number of Gensets to Recommend");
        EXPECT_EQ(TextOf(dialog, "lblNumUndersized"), "Max. Number of Undersized Gensets Shown");
        EXPECT_EQ(TextOf(dialog, "lblMaxLoad"), "Max. Genset Loading ( % of full load )");
        EXPECT_EQ(TextOf(dialog, "lblMinLoad"), "Min. Genset Loading ( % of full load )");
        EXPECT_EQ(Find<QGroupBox>(dialog, "fraUnits").title(), "Units");
        EXPECT_EQ(Find<QRadioButton>(dialog, "optEnglish").text(), "&English");
        EXPECT_EQ(Find<QRadioButton>(dialog, "optMetric").text(), "&Metric");
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdBrowseProjPath").text(), "&Browse...");
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdOK").text(), "OK");
        EXPECT_EQ(Find<QPushButton>(dialog, "cmdCancel").text(), "Cancel");
        EXPECT_EQ(Field(dialog, "txtProjPath").text(), "/projects");
        EXPECT_EQ(Field(dialog, "txtNumGensets").text(), "16");
        EXPECT_EQ(Field(dialog, "txtNumUndersized").text(), "5");
        EXPECT_EQ(Field(dialog, "txtMaxLoad").text(), "80");
        EXPECT_EQ(Field(dialog, "txtMinLoad").text(), "30");
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optMetric").isChecked());
        EXPECT_FALSE(Find<QRadioButton>(dialog, "optEnglish").isChecked());
    });
}

TEST_F(OptionsDialog, OkTakesAllOverAndTheProgramKeepsIt) {
    InOptions([](QDialog& dialog) {
        Field(dialog, "txtProjPath").setText("/projects");
        Field(dialog, "txtNumGensets").setText("7");
        Field(dialog, "txtNumUndersized").setText("2");
        Field(dialog, "txtMaxLoad").setText("95");
        Field(dialog, "txtMinLoad").setText("40");
        Find<QRadioButton>(dialog, "optMetric").click();
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(Control<QLabel>("panPwrSys", "lblAltitudeUnits").text(), "meters") << "the panel follows";
    EXPECT_EQ(Control<EntryField>("panPwrSys", "txtAltitude").text(), "152.4");
    Restart();
    EXPECT_EQ(App().ProjectPath(), "/projects");
    EXPECT_EQ(App().Designer().MaxSetsRecommended(), 7);
    EXPECT_EQ(App().Designer().MaxSetsUndersized(), 2);
    EXPECT_EQ(App().Designer().MaxLoading(), 95);
    EXPECT_EQ(App().Designer().MinLoading(), 40);
    EXPECT_TRUE(App().IsMetric());
}

TEST_F(OptionsDialog, CancelWritesNothing) {
    for (const bool escape : {false, true}) {
        InOptions([escape](QDialog& dialog) {
            Field(dialog, "txtProjPath").setText("/elsewhere");
            Field(dialog, "txtMaxLoad").setText("99");
            Find<QRadioButton>(dialog, "optMetric").click();
            if (escape) {
                QTest::keyClick(&dialog, Qt::Key_Escape);
            } else {
                Click(dialog, "cmdCancel");
            }
            EXPECT_FALSE(dialog.isVisible());
        });
        EXPECT_EQ(App().ProjectPath(), "");
        EXPECT_EQ(App().Designer().MaxLoading(), 80);
        EXPECT_FALSE(App().IsMetric());
    }
}

TEST_F(OptionsDialog, EqualLoadingsPass) {
    EXPECT_TRUE(OkWithLoadings("80", "80"));
    EXPECT_TRUE(platform.Take().empty());
    EXPECT_EQ(App().Designer().MinLoading(), 80);
}

TEST_F(OptionsDialog, AMinimumAboveTheMaximumIsToldAndWritesNothing) {
    EXPECT_FALSE(OkWithLoadings("80", "81"));
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "Minimum loading can not be greater than maximum loading.");
    EXPECT_EQ(message.icon, MessageIcon::Exclamation);
    EXPECT_EQ(message.title, "Options");
    EXPECT_EQ(App().Designer().MinLoading(), 30);
}

TEST_F(OptionsDialog, ALoadingThatIsRefusedKeepsItsFormerValueWithoutAWord) {
    EXPECT_TRUE(OkWithLoadings("101", "35"));
    EXPECT_EQ(App().Designer().MaxLoading(), 80);
    EXPECT_EQ(App().Designer().MinLoading(), 35) << "the other one is taken";
    EXPECT_TRUE(OkWithLoadings("90", "-1"));
    EXPECT_EQ(App().Designer().MaxLoading(), 90);
    EXPECT_EQ(App().Designer().MinLoading(), 35);
    EXPECT_TRUE(platform.Take().empty());
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(OptionsDialog, ATextThatIsNoNumberKeepsTheFormerValue) {
    InOptions([](QDialog& dialog) {
        Field(dialog, "txtNumGensets").setText("");
        Field(dialog, "txtNumUndersized").setText("99999999999");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(App().Designer().MaxSetsRecommended(), 16);
    EXPECT_EQ(App().Designer().MaxSetsUndersized(), 5);
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(OptionsDialog, NumbersTakeAsManyDigitsAsTheyMayHave) {
    InOptions([this](QDialog& dialog) {
        const std::pair<const char*, const char*> fields[] = {{"txtNumGensets", "123"},
                                                              {"txtNumUndersized", "12"},
                                                              {"txtMaxLoad", "123"},
                                                              {"txtMinLoad", "123"}};
        for (const auto& [name, fit] : fields) {
            EntryField& field = Field(dialog, name);
            field.clear();
            platform.beeps = 0;
            QTest::keyClicks(&field, "a1-2.3");
            // "a", "-" and "." everywhere, and the third digit where two are the limit
            EXPECT_EQ(platform.beeps, 3 + (std::string(fit).size() < 3 ? 1 : 0)) << name;
            EXPECT_EQ(field.text(), fit);
            QTest::keyClicks(&field, "4");
            EXPECT_EQ(field.text(), fit) << "full";
            field.setSelection(0, 1);
            QTest::keyClicks(&field, "9");
            EXPECT_EQ(field.text(), "9" + QString(fit).mid(1)) << "a selection is typed over";
            QTest::keyClick(&field, Qt::Key_End);
            QTest::keyClick(&field, Qt::Key_Backspace);
            EXPECT_EQ(field.text().size(), QString(fit).size() - 1) << "backspace passes";
        }
    });
}

TEST_F(OptionsDialog, ArrowsStayWithinTheirBounds) {
    InOptions([](QDialog& dialog) {
        ExpectReach(Field(dialog, "txtNumGensets"), {1, 32, 1});
        ExpectReach(Field(dialog, "txtNumUndersized"), {0, 8, 1});
        ExpectReach(Field(dialog, "txtMaxLoad"), {0, 100, 1});
        ExpectReach(Field(dialog, "txtMinLoad"), {0, 100, 1});
    });
}

TEST_F(OptionsDialog, BrowsesFromThePathThatIsShown) {
    InOptions([this](QDialog& dialog) {
        Field(dialog, "txtProjPath").setText("/from/here");
        platform.files = {"/to/there", ""};
        Click(dialog, "cmdBrowseProjPath");
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 1U);
        EXPECT_EQ(asked[0].what, "folder");
        EXPECT_EQ(asked[0].file.title, "Choose Directory");
        EXPECT_EQ(asked[0].file.initialFolder, "/from/here");
        EXPECT_EQ(Field(dialog, "txtProjPath").text(), "/to/there");
        Click(dialog, "cmdBrowseProjPath");
        EXPECT_EQ(Field(dialog, "txtProjPath").text(), "/to/there") << "no folder was chosen";
        Click(dialog, "cmdCancel");
    });
    EXPECT_EQ(App().ProjectPath(), "");
}

class DefaultsDialog : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    void InDefaults(const std::function<void(QDialog&)>& act) {
        bool acted = false;
        InNextDialog([&](QDialog& dialog) {
            acted = true;
            QApplication::setActiveWindow(&dialog);
            EXPECT_EQ(dialog.objectName(), "frmDefaults");
            Find<QTabWidget>(dialog, "tabDefaults").setCurrentIndex(1);
            act(dialog);
        });
        Run("mnuToolsDefaults");
        EXPECT_TRUE(acted);
    }
    /// What a dialog without a change in it leaves.
    void JustOk() {
        InDefaults([](QDialog& dialog) { Click(dialog, "cmdOK"); });
    }
};

TEST_F(DefaultsDialog, HasTwoPagesWithTheirCaptions) {
    InDefaults([](QDialog& dialog) {
        ExpectKeys(dialog);
        EXPECT_EQ(dialog.windowTitle(), "Defaults");
        const auto& pages = Find<QTabWidget>(dialog, "tabDefaults");
        ASSERT_EQ(pages.count(), 2);
        EXPECT_EQ(pages.tabText(0), "Project");
        EXPECT_EQ(pages.tabText(1), "Power System");
        const std::pair<const char*, const char*> labels[] = {
            {"lblUserName", "User Name"},
            {"lblCustomer", "Customer"},
            {"lblVolts", "Voltage LL"},
            {"lblConn", "Connection"},
            {"lblAltRise", "Temperature Rise / Duty"},
            {"lblParallelSets", "Gensets in Parallel"},
            {"lblAltitude", "Altitude"},
            {"lblAmbTemp", "Ambient Temperature"},
            {"lblDefaultMaxVoltDip", "Max. Voltage Dip  (%)"},
            {"lblDefaultMaxFreqDip", "Max. Frequency Dip  (%)"},
            {"lblDefaultMaxHarmonics", "Max. Harmonics  (%)"}};
        for (const auto& [name, caption] : labels) {
            EXPECT_EQ(TextOf(dialog, name), caption);
        }
        EXPECT_EQ(TextOf(dialog, "lblParallelSetsRange"), "( 1 - 16 )");
        const auto& rise = Find<ChoiceBox>(dialog, "cboAltTempRise");
        ASSERT_EQ(rise.count(), 5);
        for (int row = 0; row < 5; ++row) {
            EXPECT_EQ(rise.itemData(row).toInt(), 4 - row);
        }
        EXPECT_EQ(rise.itemText(1), "130C Standby");
    });
}

TEST_F(DefaultsDialog, ShowsTheFactoryDefaultsInEnglishUnits) {
    InDefaults([](QDialog& dialog) {
        EXPECT_EQ(Field(dialog, "txtAltitude").text(), "500");  // 152.4 m
        EXPECT_EQ(TextOf(dialog, "lblAltitudeUnits"), "feet");
        EXPECT_EQ(Field(dialog, "txtAmbTemp").text(), "70");  // 21.1 C
        EXPECT_EQ(TextOf(dialog, "lblAmbTempUnits"), "F");
        EXPECT_EQ(Field(dialog, "txtUserName").text(), "");
        EXPECT_EQ(Field(dialog, "txtParallelSets").text(), "1");
        EXPECT_EQ(Field(dialog, "txtDefaultMaxVoltDip").text(), "20");
        EXPECT_EQ(Field(dialog, "txtDefaultMaxFreqDip").text(), "20");
        EXPECT_EQ(Field(dialog, "txtDefaultMaxHarmonics").text(), "15");
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optFreq60").isChecked());
        EXPECT_TRUE(Find<QRadioButton>(dialog, "optDiesel").isChecked());
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboVolts").currentText(), "480");
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboConn").Code(), 1);
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboAltTempRise").Code(), 3);
    });
}

TEST_F(DefaultsDialog, FollowsTheUnitsOfTheOptions) {
    InNextDialog([](QDialog& dialog) {
        Find<QRadioButton>(dialog, "optMetric").click();
        Click(dialog, "cmdOK");
    });
    Run("mnuToolsOptions");
    InDefaults([](QDialog& dialog) {
        EXPECT_EQ(TextOf(dialog, "lblAltitudeUnits"), "meters");
        EXPECT_EQ(TextOf(dialog, "lblAmbTempUnits"), "C");
        EXPECT_EQ(Field(dialog, "txtAltitude").text(), "152.4");
        EXPECT_EQ(Field(dialog, "txtAmbTemp").text(), "21.1");
    });
}

TEST_F(DefaultsDialog, OkAtOnceChangesNothing) {
    JustOk();
    EXPECT_EQ(App().Defaults().Altitude(), 152.4);
    EXPECT_EQ(App().Defaults().AmbTemp(), 21.1111111111) << "more digits than the field shows";
    EXPECT_EQ(App().Defaults().VoltageLL(), 480);
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(DefaultsDialog, OkTakesAllOverAndTheStoreKeepsIt) {
    InDefaults([](QDialog& dialog) {
        Field(dialog, "txtUserName").setText("Ann");
        Field(dialog, "txtCustomerName").setText("Mill");
        Find<ChoiceBox>(dialog, "cboVolts").SelectCode(208);
        Find<ChoiceBox>(dialog, "cboConn").SelectCode(2);
        Find<ChoiceBox>(dialog, "cboAltTempRise").SelectCode(0);
        Find<QRadioButton>(dialog, "optFreq50").click();
        Find<QRadioButton>(dialog, "optLP").click();
        Field(dialog, "txtParallelSets").setText("3");
        Field(dialog, "txtAltitude").setFocus();
        Field(dialog, "txtAltitude").setText("1000");
        Field(dialog, "txtAmbTemp").setFocus();
        Field(dialog, "txtAmbTemp").setText("150.8");
        Field(dialog, "txtDefaultMaxVoltDip").setFocus();
        Field(dialog, "txtDefaultMaxVoltDip").setText("35");
        Field(dialog, "txtDefaultMaxFreqDip").setText("5");
        Field(dialog, "txtDefaultMaxHarmonics").setText("10");
        Click(dialog, "cmdOK");
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_TRUE(platform.ends.empty());
    Restart();
    const CDefaults& defaults = App().Defaults();
    EXPECT_EQ(defaults.UserName(), "Ann");
    EXPECT_EQ(defaults.CustomerName(), "Mill");
    EXPECT_EQ(defaults.VoltageLL(), 208);
    EXPECT_EQ(defaults.ConnectCode(), 2);
    EXPECT_EQ(defaults.Duty(), 0);
    EXPECT_EQ(defaults.Freq(), 50);
    EXPECT_EQ(defaults.Fuel(), 3);
    EXPECT_EQ(defaults.NumParallelSets(), 3);
    EXPECT_NEAR(defaults.Altitude(), 304.8, 1e-9);  // 1000 ft x 0.3048
    EXPECT_EQ(defaults.AmbTemp(), 66.0);            // (150.8 - 32) x 5 / 9
    EXPECT_EQ(defaults.MaxVoltageDip(), 35);
    EXPECT_EQ(defaults.MaxFreqDip(), 5);
    EXPECT_EQ(defaults.MaxHarmonics(), 10);
}

TEST_F(DefaultsDialog, AValueStillInItsFieldIsNotTakenOverByEnter) {
    InDefaults([](QDialog& dialog) {
        EntryField& altitude = Field(dialog, "txtAltitude");
        altitude.setFocus();
        altitude.setText("1000");
        QTest::keyClick(&altitude, Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_EQ(App().Defaults().Altitude(), 152.4);
}

TEST_F(DefaultsDialog, OkByTheMouseTakesTheFieldOver) {
    InDefaults([](QDialog& dialog) {
        EntryField& altitude = Field(dialog, "txtAltitude");
        altitude.setFocus();
        altitude.setText("1000");
        QTest::mouseClick(&Find<QPushButton>(dialog, "cmdOK"), Qt::LeftButton);
        EXPECT_FALSE(dialog.isVisible());
    });
    EXPECT_NEAR(App().Defaults().Altitude(), 304.8, 1e-9);
}

TEST_F(DefaultsDialog, AFieldThatIsNoNumberKeepsTheFormerValue) {
    App().IsMetric(true);
    InDefaults([](QDialog& dialog) {
        EntryField& altitude = Field(dialog, "txtAltitude");
        for (const char* text : {"1200", "a lot", ""}) {
            altitude.setFocus();
            altitude.setText(text);
            QTest::keyClick(&altitude, Qt::Key_Tab);
        }
        Click(dialog, "cmdOK");
    });
    EXPECT_EQ(App().Defaults().Altitude(), 1200.0);
    EXPECT_TRUE(platform.Take().empty()) << "no message";
}

TEST_F(DefaultsDialog, WithoutAVoltageOkEndsInTheLastChanceHandlerAndTheDialogStays) {
    App().Defaults().VoltageLL(481);
    InDefaults([this](QDialog& dialog) {
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboVolts").currentIndex(), -1);
        Field(dialog, "txtUserName").setText("Ann");
        Field(dialog, "txtParallelSets").setText("9");
        Click(dialog, "cmdOK");
        EXPECT_TRUE(dialog.isVisible());
        ASSERT_EQ(platform.ends.size(), 1U);
        EXPECT_EQ(platform.ends[0].Number(), 13);
        EXPECT_EQ(platform.ends[0].Description(), "Type mismatch");
    });
    EXPECT_EQ(App().Defaults().UserName(), "Ann") << "what stands before it is written";
    EXPECT_EQ(App().Defaults().NumParallelSets(), 1) << "what stands behind it is not";
}

TEST_F(DefaultsDialog, ARefusedValueEndsInTheLastChanceHandlerAndTheDialogStays) {
    struct Refused {
        const char* field;
        const char* text;
        int number;
        const char* source;
    };
    for (const Refused& row : {Refused{"txtParallelSets", "17", 6, "CDefaults::GensetsInParallel"},
                               Refused{"txtDefaultMaxVoltDip", "36", 11, "CDefaults::MaxVoltageDip"},
                               Refused{"txtDefaultMaxFreqDip", "4", 12, "CDefaults::MaxFreqDip"},
                               Refused{"txtDefaultMaxHarmonics", "21", 10, "CDefaults::MaxHarmonics"}}) {
        platform.ends.clear();
        InDefaults([&](QDialog& dialog) {
            Field(dialog, row.field).setText(row.text);
            Click(dialog, "cmdOK");
            EXPECT_TRUE(dialog.isVisible()) << row.field;
            ASSERT_EQ(platform.ends.size(), 1U) << row.field;
            EXPECT_EQ(platform.ends[0].Number(), row.number);
            EXPECT_EQ(platform.ends[0].Source(), row.source);
        });
    }
    platform.ends.clear();
    InDefaults([this](QDialog& dialog) {
        Field(dialog, "txtAltitude").setFocus();
        Field(dialog, "txtAltitude").setText("16000");  // 4876.8 m
        Field(dialog, "txtAmbTemp").setFocus();
        Click(dialog, "cmdOK");
        ASSERT_EQ(platform.ends.size(), 1U);
        EXPECT_EQ(platform.ends[0].Number(), 3);
    });
}

TEST_F(DefaultsDialog, AValueInNoRowSelectsNothing) {
    App().Defaults().Duty(9);
    App().Defaults().ConnectCode(77);
    App().Defaults().Freq(55);
    App().Defaults().Fuel(8);
    InDefaults([](QDialog& dialog) {
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboAltTempRise").currentIndex(), -1);
        EXPECT_EQ(Find<ChoiceBox>(dialog, "cboConn").currentIndex(), -1);
        for (const auto* button : dialog.findChildren<QRadioButton*>()) {
            EXPECT_FALSE(button->isChecked()) << button->objectName().toStdString();
        }
        Click(dialog, "cmdOK");
    });
    EXPECT_EQ(App().Defaults().Freq(), 60) << "60 unless 50 is on";
    EXPECT_EQ(App().Defaults().Fuel(), 0);
}

TEST_F(DefaultsDialog, ACatalogueThatCannotBeReadIsToldAndLeavesTheListsEmpty) {
    const TemporaryFolder unfit;
    BuildSmallCatalogue(unfit);
    DropTable(unfit, "Connections");
    CApplication application({.programFolder = unfit.Path(), .settingsFile = unfit / "settings.json"});
    ASSERT_TRUE(application.Run([](CApplication&) {}));
    frmDefaults dialog(platform, application, &Window());
    EXPECT_EQ(Find<ChoiceBox>(dialog, "cboVolts").count(), 0);
    EXPECT_EQ(Find<ChoiceBox>(dialog, "cboConn").count(), 0);
    EXPECT_EQ(Field(dialog, "txtAltitude").text(), "500") << "the rest is shown";
    const Message message = platform.TakeMessage();
    const std::string sentence =
        "An error occured while attempting to populate the voltage and connection dropdown boxes.\r\n";
    EXPECT_THAT(message.text, StartsWith(sentence));
    EXPECT_GT(message.text.size(), sentence.size()) << "the failure's own text follows";
}

TEST_F(DefaultsDialog, CancelAndEscapeWriteNothing) {
    for (const bool escape : {false, true}) {
        InDefaults([escape](QDialog& dialog) {
            Field(dialog, "txtUserName").setText("Ann");
            Field(dialog, "txtAltitude").setFocus();
            Field(dialog, "txtAltitude").setText("1000");
            Field(dialog, "txtAmbTemp").setFocus();
            if (escape) {
                QTest::keyClick(&dialog, Qt::Key_Escape);
            } else {
                Click(dialog, "cmdCancel");
            }
            EXPECT_FALSE(dialog.isVisible());
        });
        EXPECT_EQ(App().Defaults().UserName(), "");
        EXPECT_EQ(App().Defaults().Altitude(), 152.4);
    }
}

TEST_F(DefaultsDialog, ArrowsStayWithinTheirBounds) {
    InDefaults([](QDialog& dialog) {
        ExpectReach(Field(dialog, "txtParallelSets"), {1, 16, 1});
        ExpectReach(Field(dialog, "txtDefaultMaxVoltDip"), {5, 35, 5});
        ExpectReach(Field(dialog, "txtDefaultMaxFreqDip"), {5, 25, 5});
        ExpectReach(Field(dialog, "txtDefaultMaxHarmonics"), {5, 20, 5});
    });
}

}  // namespace
}  // namespace genvara
