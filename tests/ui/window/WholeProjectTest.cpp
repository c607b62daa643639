// A project from its first field to its printed report, by nothing but the windows' controls, and then by the
// console program from the file that they saved.

#include <QListWidget>
#include <QPlainTextEdit>
#include <QProcess>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "Globals.h"
#include "ReportView.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using Json = nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

using Fill = std::function<void(QDialog&)>;

constexpr double kCloseness = 1e-9;  // of two figures, as a share: a file keeps 15 digits
constexpr int kPatience = 120000;    // ms for the console program, which a checked build slows down

/// A load as its user enters it, and what it comes to.
struct LoadEntry {
    std::int32_t kind;
    const char* form;
    const char* step;
    const char* name;
    Fill fill;
    double runningWatts;  ///< of one unit, by hand
};

void Type(QWidget& window, const char* name, const char* text) {
    auto& field = Find<EntryField>(window, name);
    field.SelectAllText();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

void Pick(QWidget& window, const char* name, const char* row) {
    auto& list = Find<ChoiceBox>(window, name);
    const int index = list.findText(row);
    ASSERT_GE(index, 0) << name << " lacks " << row;
    list.SelectRow(index);
}

/// Two figures alike but for the digits that a file drops; one that is not finite is null.
void ExpectFigure(const Json& told, double figure) {
    if (!std::isfinite(figure)) {
        EXPECT_TRUE(told.is_null());
        return;
    }
    ASSERT_TRUE(told.is_number());
    EXPECT_NEAR(told.get<double>(), figure, kCloseness * std::max(1.0, std::abs(figure)));
}

void ExpectFigures(const Json& told, const std::vector<double>& figures) {
    ASSERT_EQ(told.size(), figures.size());
    for (std::size_t i = 0; i < figures.size(); ++i) {
        ExpectFigure(told[i], figures[i]);
    }
}

void ExpectSet(const Json& told, const ChosenSet& set) {
    EXPECT_EQ(told["ModelNum"], set.ModelNum);
    EXPECT_EQ(told["AltNum"], set.AltNum);
    EXPECT_EQ(told["EngineNum"], set.EngineNum);
    EXPECT_EQ(told["FuelType"], set.FuelType);
    EXPECT_EQ(told["FreqDipAvail"], set.FreqDipAvail);
    const std::pair<const char*, double> figures[] = {
        {"NominalRating", set.NominalRating},   {"DeratedRating", set.DeratedRating},
        {"StartKVA35", set.StartKVA35},         {"MaxStepVoltDip", set.MaxStepVoltDip},
        {"MaxStepFreqDip", set.MaxStepFreqDip}, {"MaxStepVTHD", set.MaxStepVTHD}};
    for (const auto& [key, figure] : figures) {
        SCOPED_TRACE(key);
        ExpectFigure(told[key], figure);
    }
    const std::pair<const char*, const std::vector<double>*> steps[] = {{"VoltageDips", &set.VoltageDips},
                                                                        {"FreqDips", &set.FreqDips},
                                                                        {"StepVTHD_A", &set.StepVTHD_A},
                                                                        {"StepVTHD_B", &set.StepVTHD_B},
                                                                        {"StepVTHD_C", &set.StepVTHD_C}};
    for (const auto& [key, ofSteps] : steps) {
        SCOPED_TRACE(key);
        ExpectFigures(told[key], *ofSteps);
    }
}

void ExpectLoad(const Json& told, const Load& load) {
    SCOPED_TRACE(load.name());
    EXPECT_EQ(told["name"], load.name());
    EXPECT_EQ(told["Description"], load.Description());
    EXPECT_EQ(told["LoadType"], load.LoadType());
    EXPECT_EQ(told["Quantity"], load.Quantity());
    EXPECT_EQ(told["Phases"], load.Phases());
    EXPECT_EQ(told["Summary"], load.Summary());
    ExpectFigure(told["RunningRealPower"], load.RunningRealPower());
    ExpectFigure(told["RunningAppPower"], load.RunningAppPower());
    ExpectFigure(told["StartingRealPower"], load.StartingRealPower());
    ExpectFigure(told["StartingAppPower"], load.StartingAppPower());
    std::vector<std::string> rows;
    for (const Json& row : told["Props"]) {
        rows.push_back(row[0].get<std::string>() + '\t' + row[1].get<std::string>());
    }
    EXPECT_EQ(rows, load.GetProps());
}

/// The nine kinds, in the order in which they are added: four on the first step, five on the second.
std::vector<LoadEntry> NineLoads() {
    return {
        {4, "frmMiscLoad", "1", "Heaters",
         [](QDialog& form) {
             Type(form, "txtQty", "2");
             Type(form, "txtkW", "30");
             Type(form, "txtPF", "0.9");
         },
         30000},
        {2, "frmLightLoad", "1", "Hall lights",
         [](QDialog& form) {
             Find<QAbstractButton>(form, "optFluoro").click();
             Find<QAbstractButton>(form, "optElectronic").click();
             Type(form, "txtRunKW", "12");
             Type(form, "txtRunPF", "0.95");
         },
         12000},
        {0, "frmAirCondLoad", "1", "Office cooling",
         [](QDialog& form) {
             Find<QAbstractButton>(form, "optTonnage").click();
             Type(form, "txtPower", "5");
         },
         8624},  // 5 tons are 10 HP, which the motor table gives 8.624 kW
        {6, "frmOfficeLoad", "1", "Desks",
         [](QDialog& form) {
             Type(form, "txtPC", "10");
             Type(form, "txtPrinters", "2");
             Type(form, "txtFaxes", "1");
             Type(form, "txtCopiers", "1");
         },
         6000},  // 10 of 300 W, 3 of 600 W, 1 of 1200 W
        {1, "frmChargerLoad", "2", "Exchange battery",
         [](QDialog& form) {
             Find<QAbstractButton>(form, "optTelecom").click();
             Type(form, "txtBatVolts", "48");
             Type(form, "txtChargeCurrent", "100");
         },
         48 * 1.1 * 100 / 0.9 * 0.95},
        {5, "frmMtrLoad", "2", "Well pump",
         [](QDialog& form) {
             Type(form, "txtPower", "25");
             Pick(form, "cboStartMethod", "Autotransformer w/ 65% Tap");
         },
         20840},  // the motor table's row of 25 HP
        {7, "frmUPSLoad", "2", "Server UPS",
         [](QDialog& form) {
             Find<QAbstractButton>(form, "optOnLine").click();
             Type(form, "txtRating", "40");
             Type(form, "txtLoading", "80");
             Type(form, "txtCharging", "10");
             Find<QAbstractButton>(form, "chkInputFilter").click();
         },
         0.8 * 40000 / 0.95 * 1.1 * 0.95},
        {8, "frmVFDLoad", "2", "Fan drive",
         [](QDialog& form) {
             Type(form, "txtMtrRating", "20");
             Pick(form, "cboType", "12 pulse");
         },
         16860 / 0.9},  // the motor table's row of 20 HP, at the drive's 90 %
        {3, "frmMedLoad", "2", "Scanner",
         [](QDialog& form) {
             Type(form, "txtMaxContKVA", "20");
             Type(form, "txtContPF", "0.8");
             Type(form, "txtMaxMomentaryKVA", "40");
             Type(form, "txtMaxVoltDip", "15");
         },
         20000 * 0.8},
    };
}

class WholeProject : public WindowTest {
  protected:
    /// Presses a button that opens a dialog, and acts in it; fails if another one opened, or if it stays.
    static void In(QWidget& window, const char* button, const char* dialogName, const Fill& act) {
        bool opened = false;
        InNextDialog([&](QDialog& dialog) {
            opened = true;
            EXPECT_EQ(dialog.objectName(), dialogName);
            QApplication::setActiveWindow(&dialog);
            act(dialog);
            Click(dialog, "cmdOK");
            EXPECT_FALSE(dialog.isVisible()) << dialogName << " did not take its entries";
        });
        Click(window, button);
        EXPECT_TRUE(opened) << dialogName;
    }

    void DescribeProject() {
        Bar(0);
        ASSERT_EQ(ShownPanel(), "panProject");
        Type(Find<QWidget>(Window(), "panProject"), "txtName", "Clinic");
        Type(Find<QWidget>(Window(), "panProject"), "txtCustomer", "Vale Trust");
        Type(Find<QWidget>(Window(), "panProject"), "txtUserName", "A. Sizer");
        QTest::keyClicks(&Control<QPlainTextEdit>("panProject", "txtDescription"), "Ward and offices");
    }
    void DescribeSite() {
        Bar(1);
        ASSERT_EQ(ShownPanel(), "panPwrSys");
        QWidget& panel = Find<QWidget>(Window(), "panPwrSys");
        Pick(panel, "cboVolts", "480");
        Pick(panel, "cboConn", "3 Phase, Wye, 4 Wire");
        for (const char* option : {"optFreq60", "optDiesel"}) {
            Click(panel, option);
        }
        Type(Find<QWidget>(Window(), "panPwrSys"), "txtAltitude", "1500");
        Type(Find<QWidget>(Window(), "panPwrSys"), "txtAmbTemp", "95");
        Type(Find<QWidget>(Window(), "panPwrSys"), "txtMaxVoltDip", "25");
        for (const char* tick : {"chkEnableFreqDip", "chkEnableHarm"}) {
            auto& box = Find<QAbstractButton>(panel, tick);
            if (!box.isChecked()) {
                box.click();
            }
        }
        Type(Find<QWidget>(Window(), "panPwrSys"), "txtMaxFreqDip", "10");
        Type(Find<QWidget>(Window(), "panPwrSys"), "txtMaxHarmonics", "15");
    }
    void AddSteps() {
        Bar(2);
        ASSERT_EQ(ShownPanel(), "panLoadProfile");
        for (const auto& step : {std::pair{"Building", "20"}, std::pair{"Plant", "22"}}) {
            In(Window(), "cmdAddStep", "frmAddStep", [&step](QDialog& dialog) {
                Type(dialog, "txtDecription", step.first);
                Type(dialog, "txtDefaultMaxVoltDip", step.second);
            });
        }
        ASSERT_EQ(App().LoadProfile().NumLoadSteps(), 2);
    }
    void AddLoad(const LoadEntry& entry) {
        bool entered = false;
        In(Window(), "cmdAddLoad", "frmAddLoad", [&](QDialog& dialog) {
            Find<QListWidget>(dialog, "lstLoads").setCurrentRow(entry.kind);
            InNextDialog([&](QDialog& form) {
                entered = true;
                ASSERT_EQ(form.objectName(), entry.form);
                QApplication::setActiveWindow(&form);
                Type(form, "txtStepNum", entry.step);
                Type(form, "txtName", entry.name);
                entry.fill(form);
                Click(form, "cmdOK");
                EXPECT_FALSE(form.isVisible());
            });
        });
        EXPECT_TRUE(entered);
    }
    /// The project, as far as to the press of View Gensets.
    void EnterAll() {
        ASSERT_NO_FATAL_FAILURE(DescribeProject());
        ASSERT_NO_FATAL_FAILURE(DescribeSite());
        ASSERT_NO_FATAL_FAILURE(AddSteps());
        for (const LoadEntry& entry : NineLoads()) {
            SCOPED_TRACE(entry.form);
            platform.Take();
            AddLoad(entry);
            const auto asked = platform.Take();
            // Only the reduced-voltage starter has something to say.
            ASSERT_EQ(asked.size(), entry.kind == 5 ? 1U : 0U);
        }
        EXPECT_TRUE(g_ProjectDirty);
        Bar(3);
        ASSERT_EQ(ShownPanel(), "panRecommend");
        EXPECT_THAT(platform.Take(), IsEmpty());
    }
    std::string Save() {
        const std::string file = (folder / "clinic.prj").string();
        platform.files = {file};
        Run("mnuFileSave");
        EXPECT_EQ(platform.Take().size(), 1U);
        EXPECT_FALSE(g_ProjectDirty);
        return file;
    }
    /// What the console program writes for some arguments; fails unless it ends well.
    static std::string Console(const QStringList& arguments) {
        QProcess program;
        program.start(GENVARA_TEST_CLI, arguments);
        EXPECT_TRUE(program.waitForFinished(kPatience));
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.readAllStandardError().toStdString(), "");
        return program.readAllStandardOutput().toStdString();
    }
    [[nodiscard]] ReportView& View() { return Control<ReportView>("panRecommend", "rtfRecommend"); }
};

TEST_F(WholeProject, ItsFormsStoreWhatWasEntered) {
    EnterAll();
    const std::vector<LoadEntry> entries = NineLoads();
    const CLoadProfile& profile = App().LoadProfile();
    ASSERT_EQ(profile.NumLoadSteps(), 2);
    std::size_t next = 0;
    double watts = 0.0;
    for (const CLoadStep& step : profile) {
        for (const Load& load : step) {
            ASSERT_LT(next, entries.size());
            const LoadEntry& entry = entries[next++];
            SCOPED_TRACE(entry.form);
            EXPECT_EQ(load.name(), entry.name);
            EXPECT_EQ(load.LoadType(), entry.kind);
            EXPECT_NEAR(load.RunningRealPower(), entry.runningWatts, 1e-6);
            watts += entry.runningWatts * load.Quantity();
        }
    }
    EXPECT_EQ(next, entries.size());
    EXPECT_NEAR(App().Designer().TotalRunningKW(), watts / 1000, 1e-6);
}

TEST_F(WholeProject, TheConsoleProgramSizesItsFileAlike) {
    EnterAll();
    const CDesigner& designer = App().Designer();
    ASSERT_GT(designer.NumChosenSets(), 1);
    ASSERT_GT(designer.NumRejectedSets(), 1);
    const QString file = QString::fromStdString(Save());
    const Json told = Json::parse(Console({"size", "--json", "--db", GENVARA_TEST_DATABASE, file}));

    EXPECT_EQ(told["Project"]["ProjName"], "Clinic");
    EXPECT_EQ(told["Project"]["Customer"], "Vale Trust");
    EXPECT_EQ(told["Project"]["UserName"], "A. Sizer");
    EXPECT_EQ(told["Project"]["Description"], "Ward and offices");
    EXPECT_EQ(told["PowerSystem"]["Voltage"], 480);
    EXPECT_EQ(told["PowerSystem"]["MaxVoltageDip"], 25);
    EXPECT_EQ(told["PowerSystem"]["MaxFreqDip"], 10);
    EXPECT_EQ(told["PowerSystem"]["MaxHarmonics"], 15);
    const Json& steps = told["LoadProfile"];
    ASSERT_EQ(steps.size(), 2U);
    std::size_t number = 0;
    for (const CLoadStep& step : App().LoadProfile()) {
        const Json& toldStep = steps[number++];
        EXPECT_EQ(toldStep["Description"], step.Description());
        EXPECT_EQ(toldStep["MaxVoltageDipOverride"], step.MaxVoltageDipOverride());
        ASSERT_EQ(toldStep["Loads"].size(), static_cast<std::size_t>(step.NumLoads()));
        std::size_t place = 0;
        for (const Load& load : step) {
            ExpectLoad(toldStep["Loads"][place++], load);
        }
    }
    ExpectFigure(told["Designer"]["TotalRunningKW"], designer.TotalRunningKW());
    ExpectFigure(told["Designer"]["PeakStartingKVA"], designer.PeakStartingKVA());
    EXPECT_EQ(told["Designer"]["VTHD_CalcsValid"], designer.VTHD_CalcsValid());
    ASSERT_EQ(told["ChosenSets"].size(), designer.ChosenSets().size());
    for (std::size_t i = 0; i < designer.ChosenSets().size(); ++i) {
        SCOPED_TRACE("recommended " + std::to_string(i));
        ExpectSet(told["ChosenSets"][i], designer.ChosenSets()[i]);
    }
    ASSERT_EQ(told["RejectedSets"].size(), designer.RejectedSets().size());
    for (std::size_t i = 0; i < designer.RejectedSets().size(); ++i) {
        SCOPED_TRACE("undersized " + std::to_string(i));
        ExpectSet(told["RejectedSets"][i], designer.RejectedSets()[i]);
        EXPECT_EQ(told["RejectedSets"][i]["RejectionReason"], designer.RejectedSets()[i].RejectionReason);
    }
}

TEST_F(WholeProject, ItsReportIsPrintedSavedAndToldAlike) {
    EnterAll();
    const QString file = QString::fromStdString(Save());
    platform.printFile = folder / "clinic.pdf";
    Run("mnuFilePrint");
    EXPECT_EQ(platform.Take().at(0).what, "print");
    const std::string printed = ReadBytes(folder / "clinic.pdf");
    EXPECT_THAT(printed, StartsWith("%PDF-"));
    EXPECT_GT(printed.size(), 5000U) << "a report's fonts and text";

    platform.files = {(folder / "clinic.rtf").string()};
    Run("mnuFileSaveReport");
    EXPECT_EQ(platform.Take().size(), 1U);
    const std::string saved = ReadBytes(folder / "clinic.rtf");
    EXPECT_THAT(saved, StartsWith("{\\rtf1"));
    EXPECT_THAT(saved, HasSubstr("Clinic"));
    EXPECT_EQ(saved, View().RichText());

    // The clock of the window's application stands at this moment.
    EXPECT_EQ(saved, Console({"report", file, "--set", "0", "--now", "2026-03-04 15:06:07", "--db",
                              GENVARA_TEST_DATABASE, "-o", "-"}));
}

}  // namespace
}  // namespace genvara
