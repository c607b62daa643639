// The main window: start, panels, report commands, help and end.

#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QTest>
#include <QToolBar>
#include <array>
#include <set>

#include "EntryField.h"
#include "Globals.h"
#include "LastChance.h"
#include "RaisedErrorMatcher.h"
#include "ReportView.h"
#include "StringTable.h"
#include "WindowFixture.h"
#include "ctlSideBar.h"
#include "panLoadProfile.h"
#include "panPwrSys.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class MainWindow : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }
    void ExpectReportCommands(bool enabled) {
        for (const char* action : {"mnuFileSaveReport", "mnuFileSaveReportPdf", "mnuFilePrint",
                                   "mnuFileExport", "butPrint", "butExport"}) {
            EXPECT_EQ(Enabled(action), enabled) << action;
        }
    }
};

TEST_F(MainWindow, StartsOnTheProjectPanelWithAnEmptyProject) {
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_EQ(Window().windowTitle(), "Morvane Genvara");
    EXPECT_EQ(Window().ProjectFile(), "");
    EXPECT_FALSE(g_ProjectDirty);
    ExpectReportCommands(false);
    EXPECT_EQ(Control<QLabel>("panProject", "lblCreated").text(), "Created: March 4, 2026; 03:06:07 PM");
    EXPECT_EQ(Control<QLabel>("panProject", "lblModified").text(), "Last Saved: March 4, 2026; 03:06:07 PM");
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(MainWindow, TakesItsCaptionsFromTheStringTable) {
    const std::pair<const char*, int> menus[] = {{"mnuFile", 50},  {"mnuFileSend", 57}, {"mnuEdit", 70},
                                                 {"mnuTools", 75}, {"mnuHelp", 85},     {"mnuHelpWeb", 87}};
    for (const auto& [name, id] : menus) {
        EXPECT_EQ(Find<QMenu>(Window(), name).title().toStdString(), StringTable::Text(id)) << name;
    }
    const std::pair<const char*, int> items[] = {
        {"mnuFileNew", 51},      {"mnuFileOpen", 52},       {"mnuFileSave", 53},     {"mnuFileSaveAs", 54},
        {"mnuFilePrint", 55},    {"mnuFilePrintSetup", 56}, {"mnuFileSendMail", 58}, {"mnuFileExit", 59},
        {"mnuEditCut", 71},      {"mnuEditCopy", 72},       {"mnuEditPaste", 73},    {"mnuToolsDefaults", 76},
        {"mnuToolsOptions", 77}, {"mnuHelpTopics", 86},     {"mnuHelpAbout", 89}};
    for (const auto& [name, id] : items) {
        EXPECT_EQ(Find<QAction>(Window(), name).text().toStdString(), StringTable::Text(id)) << name;
    }
    const std::array<const char*, 9> buttons{"butNew", "butOpen", "butSave",  "butPrint", "butExport",
                                             "butCut", "butCopy", "butPaste", "butHelp"};
    for (std::size_t button = 0; button < buttons.size(); ++button) {
        EXPECT_EQ(Find<QAction>(Window(), buttons[button]).toolTip().toStdString(),
                  StringTable::Text(100 + static_cast<int>(button)));
    }
}

TEST_F(MainWindow, HasTheFileMenuInItsOrder) {
    std::vector<std::string> names;
    for (const QAction* action : Find<QMenu>(Window(), "mnuFile").actions()) {
        names.push_back(
            (action->menu() != nullptr ? action->menu()->objectName() : action->objectName()).toStdString());
    }
    EXPECT_THAT(names,
                ElementsAre("mnuFileNew", "mnuFileOpen", "mnuFileSave", "mnuFileSaveAs", "mnuFileSep1",
                            "mnuFileExport", "mnuFileSaveReport", "mnuFileSaveReportPdf", "mnuFileSep2",
                            "mnuFilePrint", "mnuFilePrintSetup", "mnuFileSep3", "mnuFileSend",
                            "mnuFileRecover", "mnuFileImport", "mnuFileSep4", "mnuFileMRU0", "mnuFileMRU1",
                            "mnuFileMRU2", "mnuFileMRU3", "mnuFileSep5", "mnuFileExit"));
    for (const char* hidden : {"mnuFileSep4", "mnuFileMRU0", "mnuFileMRU3"}) {
        EXPECT_FALSE(Find<QAction>(Window(), hidden).isVisible()) << hidden;
    }
}

TEST_F(MainWindow, NoTwoCommandsShareAKey) {
    std::map<std::string, std::string> keys;
    std::set<std::string> ofWidgets;  // one widget's own, as are those of text fields
    for (const QAction* action : Window().findChildren<QAction*>()) {
        for (const QKeySequence& shortcut : action->shortcuts()) {
            const std::string key = shortcut.toString().toStdString();
            if (action->shortcutContext() != Qt::WindowShortcut) {
                ofWidgets.insert(key);
                continue;
            }
            EXPECT_TRUE(keys.emplace(key, action->objectName().toStdString()).second) << key;
        }
    }
    for (const QShortcut* shortcut : Window().findChildren<QShortcut*>()) {
        const std::string key = shortcut->key().toString().toStdString();
        EXPECT_TRUE(keys.emplace(key, "panel").second) << key;
    }
    for (const std::string& key : ofWidgets) {
        EXPECT_FALSE(keys.contains(key)) << key;
    }
}

TEST_F(MainWindow, ShowsThePanelOfAnItemUnderTheProjectsName) {
    Control<EntryField>("panProject", "txtName").setText("Mill");
    EXPECT_EQ(Window().windowTitle(), "Morvane Genvara - Mill");
    Bar(1);
    EXPECT_EQ(ShownPanel(), "panPwrSys");
    EXPECT_EQ(Control<QLabel>("panPwrSys", "lblProjName").text(), "Mill");
    EXPECT_EQ(App().Project().ProjName(), "Mill") << "stored by the click";
    Bar(2);
    EXPECT_EQ(ShownPanel(), "panLoadProfile");
    EXPECT_EQ(Control<QLabel>("panLoadProfile", "lblProjName").text(), "Mill");
    Bar(0);
    EXPECT_EQ(ShownPanel(), "panProject");
    ExpectReportCommands(false);
    EXPECT_FALSE(g_ProjectDirty) << "an edit of the project panel raises no prompt";
}

TEST_F(MainWindow, AnotherIndexOnlyStores) {
    Control<EntryField>("panProject", "txtName").setText("Mill");
    Window().SideBarClicked(7);
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_EQ(App().Project().ProjName(), "Mill");
}

TEST_F(MainWindow, RefusesToRecommendWithoutALoadOnTheFirstStep) {
    const auto refused = [this] {
        platform.beeps = 0;
        Bar(3);
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, "At least one load and load step must be entered.");
        EXPECT_EQ(message.icon, MessageIcon::Exclamation);
        EXPECT_EQ(message.title, "");
        EXPECT_EQ(platform.beeps, 1);
        EXPECT_EQ(ShownPanel(), "panProject");
        ExpectReportCommands(false);
    };
    refused();
    Find<panLoadProfile>(Window(), "panLoadProfile")
        .DisplayNewStep(1, App().LoadProfile().AddLoadStep("empty", 20, 0));
    refused();
    AddStepWithLoad();  // the second step
    refused();
}

TEST_F(MainWindow, RecommendsAndEnablesTheReportCommands) {
    AddStepWithLoad();
    Bar(3);
    EXPECT_EQ(ShownPanel(), "panRecommend");
    ExpectReportCommands(true);
    EXPECT_GT(Control<QComboBox>("panRecommend", "cboAvailGensets").count(), 0);
    EXPECT_THAT(Control<ReportView>("panRecommend", "rtfRecommend").RichText(), HasSubstr("{\\rtf1"));
    Bar(1);
    ExpectReportCommands(false);
}

TEST_F(MainWindow, EveryVisitOfTheRecommendationsComputesAnew) {
    AddStepWithLoad();
    Bar(3);
    auto& sets = Control<QComboBox>("panRecommend", "cboAvailGensets");
    const QString first = sets.itemText(0);
    App().LoadProfile().LoadStep(1).begin()->Quantity(5);  // 250 kW in place of 50
    Bar(2);
    Bar(3);
    EXPECT_NE(sets.itemText(0), first);
}

TEST_F(MainWindow, SwitchesPanelsByKeysUnlessAFieldHoldsTheFocus) {
    QTest::keyClick(&Window(), Qt::Key_2, Qt::ControlModifier);
    EXPECT_EQ(ShownPanel(), "panPwrSys");
    auto& altitude = Control<EntryField>("panPwrSys", "txtAltitude");
    altitude.setFocus();
    altitude.setText("a lot");
    QTest::keyClick(&Window(), Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(ShownPanel(), "panPwrSys");
    EXPECT_EQ(platform.TakeMessage().text, "Invalid altitude entered");
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(MainWindow, AFailedStoreLeavesTheClickButNoClickGetsThere) {
    Bar(1);
    auto& dip = Control<EntryField>("panPwrSys", "txtMaxFreqDip");
    dip.setText("");  // passes its own check, but reads as 0
    EXPECT_THAT([this] { Window().SideBarClicked(2); },
                Raises(12, "panPwrSys::Store", "Invalid maximum frequency dip"));
    Bar(2);
    EXPECT_EQ(ShownPanel(), "panLoadProfile");
    EXPECT_TRUE(platform.ends.empty());
}

TEST_F(MainWindow, AFailureThatNobodyForesawEndsTheProgramAndKeepsTheProject) {
    Control<EntryField>("panProject", "txtName").setText("Precious");
    RunEvent([] { throw RaisedError(12, "panPwrSys::Store", "Invalid maximum frequency dip"); });
    ASSERT_EQ(platform.ends.size(), 1U);
    EXPECT_EQ(platform.ends.front().Number(), 12);
    const std::string rescued = platform.asked.back().text;
    EXPECT_THAT(ReadBytes(rescued), HasSubstr("\"Precious\""));
}

TEST_F(MainWindow, AnEmptiedLimitGetsItsRecordsValueBackBeforeItIsStored) {
    struct Limit {
        const char* field;
        const char* tick;
        std::int32_t (CPwrSys::*held)() const noexcept;
        std::int32_t value;
    };
    CPwrSys& site = App().PowerSystem();
    site.MaxVoltageDip(22);
    site.MaxFreqDip(13);
    site.MaxHarmonics(9);
    site.Display(Find<panPwrSys>(Window(), "panPwrSys"), false);
    const Limit limits[] = {{"txtMaxVoltDip", nullptr, &CPwrSys::MaxVoltageDip, 22},
                            {"txtMaxFreqDip", "chkEnableFreqDip", &CPwrSys::MaxFreqDip, 13},
                            {"txtMaxHarmonics", "chkEnableHarm", &CPwrSys::MaxHarmonics, 9}};
    const std::function<void()> ways[] = {
        [this] { Bar(2); }, [this] { QTest::keyClick(&Window(), Qt::Key_1, Qt::ControlModifier); },
        [this] { Open(Sample("farm.prj")); },
        [this] {
            platform.files = {(folder / "a.prj").string()};
            Run("mnuFileSaveAs");
        },
        [this] { Run("butSave"); }};
    for (const bool ticked : {true, false}) {
        for (const Limit& limit : limits) {
            for (std::size_t way = 0; way < std::size(ways); ++way) {
                SCOPED_TRACE(std::string(limit.field) + " by way " + std::to_string(way));
                site.MaxVoltageDip(22);
                site.MaxFreqDip(13);
                site.MaxHarmonics(9);
                site.MaxFreqDipEnabled(ticked);
                site.MaxHarmonicsEnabled(ticked);
                site.Display(Find<panPwrSys>(Window(), "panPwrSys"), false);
                Bar(1);
                auto& field = Control<EntryField>("panPwrSys", limit.field);
                field.setFocus();
                field.setText(way % 2 == 0 ? "" : "  ");
                platform.files.clear();
                ways[way]();
                EXPECT_TRUE(platform.ends.empty());
                for (const auto& asked : platform.Take()) {
                    EXPECT_NE(asked.what, "message") << asked.message.text;
                }
                if (way != 2) {  // which shows another project
                    EXPECT_EQ(field.text().toInt(), limit.value);
                    EXPECT_EQ((site.*limit.held)(), limit.value);
                }
            }
        }
    }
}

TEST_F(MainWindow, WhateverElseIsEmptiedIsFilledAsOnLeavingIt) {
    CPwrSys& site = App().PowerSystem();
    Bar(1);
    for (const char* name : {"txtAltitude", "txtAmbTemp", "txtParallelSets"}) {
        Control<EntryField>("panPwrSys", name).setText("");
    }
    platform.files = {(folder / "a.prj").string()};
    Run("mnuFileSaveAs");
    EXPECT_TRUE(platform.ends.empty());
    EXPECT_EQ(site.Altitude(), 0.0);
    EXPECT_DOUBLE_EQ(site.AmbTemp(), -160.0 / 9.0) << "0 degrees Fahrenheit";
    EXPECT_EQ(site.GensetsInParallel(), 1);
}

TEST_F(MainWindow, ABadFieldKeepsItsUserWhereverTheFocusIs) {
    for (const bool disabled : {false, true}) {
        Bar(1);
        Control<QAbstractButton>("panPwrSys", "chkEnableFreqDip").setChecked(true);
        auto& dip = Control<EntryField>("panPwrSys", "txtMaxFreqDip");
        dip.setText("99");
        if (disabled) {
            Control<QAbstractButton>("panPwrSys", "chkEnableFreqDip").setChecked(false);
        }
        Find<QWidget>(Window(), "barMain").setFocus();
        platform.Take();
        Find<ctlSideBar>(Window(), "barMain").Press(3);
        if (disabled) {
            EXPECT_EQ(ShownPanel(), "panLoadProfile") << "what plays no part is no reason to stay";
            EXPECT_EQ(dip.text(), "20");
        } else {
            EXPECT_EQ(ShownPanel(), "panPwrSys");
            EXPECT_EQ(platform.TakeMessage().text, "Invalid frequecy dip entered");
            EXPECT_TRUE(dip.InError());
            EXPECT_TRUE(dip.hasFocus());
            dip.setText("20");
        }
        EXPECT_TRUE(platform.ends.empty());
    }
}

TEST_F(MainWindow, TheHelpCommandClosesTheHelpAndOpensItAsTheKeyDoes) {
    for (const char* command : {"mnuHelpTopics", "butHelp"}) {
        Run(command);
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 2U);
        EXPECT_EQ(asked[0].what, "closehelp");
        EXPECT_EQ(asked[1].what, "help");
    }
    Run("helpContents");
    EXPECT_EQ(platform.Take().at(0).what, "help");
    platform.helpFails = true;
    for (const char* command : {"mnuHelpTopics", "helpContents"}) {
        Run(command);
        const auto asked = platform.Take();
        ASSERT_EQ(asked.size(), 2U);
        EXPECT_EQ(asked[1].message.text, "Help not available.");
        EXPECT_EQ(asked[1].message.icon, MessageIcon::Stop);
        EXPECT_EQ(asked[1].message.title, "ERROR");
    }
}

TEST_F(MainWindow, ShowsTheMakersPages) {
    Run("mnuHelpWebSite1");
    EXPECT_EQ(platform.Take().at(0).text, "https://www.morvane.example/");
    platform.webFails = true;
    Run("mnuHelpWebSite2");
    const auto asked = platform.Take();
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[1].message.text, "Unable to run Internet Explorer.");
    EXPECT_EQ(asked[1].message.icon, MessageIcon::Stop);
    EXPECT_EQ(asked[1].message.title, "ERROR");
}

TEST_F(MainWindow, AsksBeforeItLosesChangesAtItsEnd) {
    g_ProjectDirty = true;
    platform.answers = {MessageAnswer::No};
    Run("mnuFileExit");
    EXPECT_TRUE(Window().isVisible());
    const Message message = platform.TakeMessage();
    EXPECT_EQ(message.text, "The project has been changed.\r\nExit anyway?");
    EXPECT_EQ(message.icon, MessageIcon::Question);
    EXPECT_EQ(message.buttons, MessageButtons::YesNo);
    EXPECT_EQ(message.title, "Genvara");
    platform.answers = {MessageAnswer::Yes};
    Run("mnuFileExit");
    EXPECT_FALSE(Window().isVisible());
}

TEST_F(MainWindow, EndsWithoutAQuestionWhereNothingIsLost) {
    Control<EntryField>("panProject", "txtName").setText("only a name");
    EXPECT_TRUE(Window().close());
    EXPECT_EQ(platform.Take().at(0).what, "closehelp");
}

/// A window that has been loaded and not shown yet.
class Starting : public MainWindow {
  protected:
    void SetUp() override {
        platform.Take();
        ASSERT_TRUE(window.Load());
        ASSERT_NE(Splash(), nullptr);
        EXPECT_TRUE(Splash()->isVisible());
        EXPECT_GT(Splash()->SeenFor(), 0) << "on the screen before the program goes on";
    }
    frmSplash* Splash() { return window.findChild<frmSplash*>("frmSplash"); }

    frmMain window{App(), platform};
};

TEST_F(Starting, TheSplashIsSeenAndGoesAsTheWindowComes) {
    EXPECT_EQ(Splash()->size(), QSize(507, 362));
    int appeared = 0;
    window.Appear([&] { ++appeared; });
    EXPECT_FALSE(window.isVisible());
    QTest::qWait(500);
    ASSERT_NE(Splash(), nullptr);
    EXPECT_FALSE(window.isVisible()) << "the splash lies over no window";
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.isVisible(); }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return Splash() == nullptr; }, 100));
    QTest::qWait(100);
    EXPECT_EQ(appeared, 1);
}

TEST_F(Starting, AClickOnTheSplashShowsTheWindowAtOnce) {
    int appeared = 0;
    window.Appear([&] { ++appeared; });
    QTest::mouseClick(Splash(), Qt::LeftButton);
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(QTest::qWaitFor([this] { return Splash() == nullptr; }, 500));
    EXPECT_EQ(appeared, 1);
    QTest::qWait(1200);
    EXPECT_EQ(appeared, 1);
}

TEST_F(Starting, TheSplashIsGoneAfterThreeSecondsWhateverGoesOn) {
    QTest::qWait(2500);
    EXPECT_NE(Splash(), nullptr);
    QTest::qWait(800);
    EXPECT_EQ(Splash(), nullptr);
    window.Appear({});
    EXPECT_TRUE(window.isVisible());
}

TEST_F(MainWindow, IsAsLargeAsItWasMeantUnlessItsContentNeedsMore) {
    EXPECT_EQ(Window().height(), 567);
    EXPECT_LE(Window().width(), 1280);
    EXPECT_GE(Window().width(), 800);
}

class SecondBrand : public WindowTest {
  protected:
    SecondBrand() : WindowTest(brand::kCaldrix) {}
};

TEST_F(SecondBrand, ShowsItsOwnWords) {
    EXPECT_EQ(Window().windowTitle(), "Caldrix Ohmvane");
    EXPECT_EQ(Find<QMenu>(Window(), "mnuHelpWeb").title(), "Caldrix on the &Web");
    EXPECT_EQ(Find<QAction>(Window(), "mnuHelpWebSite1").text(), "https://www.caldrix.example/");
    g_ProjectDirty = true;
    platform.Take();
    platform.answers = {MessageAnswer::No};
    Window().close();
    EXPECT_EQ(platform.TakeMessage().title, "Ohmvane");
}

class NoBrand : public WindowTest {
  protected:
    NoBrand() : WindowTest(7) {}
};

TEST_F(NoBrand, HasAnEmptyLabel) {
    EXPECT_EQ(Window().windowTitle(), "");
    Control<EntryField>("panProject", "txtName").setText("Mill");
    EXPECT_EQ(Window().windowTitle(), " - Mill");
    EXPECT_EQ(Find<QMenu>(Window(), "mnuHelpWeb").title(), "Caldrix on the &Web");
}

}  // namespace
}  // namespace genvara
