// Runs that cannot be worked out: what the window says, and that it stays where it was.

#include <QAction>
#include <QTest>
#include <QTreeWidget>
#include <array>
#include <string>
#include <vector>

#include "CMtrLoad.h"
#include "ChoiceBox.h"
#include "DamagedCatalogue.h"
#include "ReportView.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// Loads of a project file: 100 kW; a motor whose starting power factor has no sine; one whose torque,
/// which only the load summary asks for, would be a division by its starting kVA of 0.
constexpr const char* kHeater = "1,4,\"Heater\",\"\",1,0\r\n100000,0.9\r\n";
constexpr const char* kBadPump =
    "1,5,\"Pump\",\"\",1,0\r\n0,\"F\",1,#TRUE#,#FALSE#\r\n25\r\n132500,1.2,300\r\n";
constexpr const char* kNoTorque =
    "1,5,\"Fan\",\"\",1,0\r\n0,\"F\",6,#TRUE#,#FALSE#\r\n25\r\n132500,0.4,0\r\n";

constexpr std::array<const char*, 6> kReportCommands{
    "mnuFileSaveReport", "mnuFileSaveReportPdf", "mnuFilePrint", "butPrint", "mnuFileExport", "butExport"};

class ViewGensets : public WindowTest {
  protected:
    void SetUp() override { platform.Take(); }

    /// Opens a project with a step of one heater and one of a heater and a load of its own.
    void OpenWith(const std::string& load) {
        WriteBytes(
            folder / "odd.prj",
            "8,0,0,1\r\n#2026-01-02 03:04:05#,\"\",\"\",#2026-01-02 03:04:05#,\"Odd\",\"\"\r\n"
            "0,25,1,60,1,1\r\n20,#FALSE#,15,#FALSE#\r\n20,3,3,480\r\n2\r\n\"A\",15\r\n\"B\",15\r\n1\r\n" +
                std::string(kHeater) + "2\r\n" + kHeater + load);
        Open(folder / "odd.prj");
        ASSERT_EQ(App().LoadProfile().NumLoadSteps(), 2);
    }
    void BreakTheProfile() {
        CLoadStep& step = App().LoadProfile().LoadStep(1);
        auto motor = std::make_unique<CMtrLoad>();
        motor->name("Pump");
        motor->RunningRealPower(10000.0);
        motor->RunningAppPower(12000.0);
        motor->StartingAppPower(50000.0);
        motor->StartingPF(1.2);
        step.AddLoad(std::move(motor));
    }
    /// Replaces the catalogue by a damaged copy, and starts the program again.
    void Damage(const char* damage) {
        DamageCatalogue(folder / "program", damage);
        Restart();
        platform.Take();
    }
    std::string Told() {
        const auto asked = platform.Take();
        EXPECT_EQ(asked.size(), 1U);
        return asked.empty() ? "nothing" : asked[0].message.text;
    }
    std::vector<std::string> EnabledReportCommands() {
        std::vector<std::string> enabled;
        for (const char* name : kReportCommands) {
            if (Window().findChild<QAction*>(name)->isEnabled()) {
                enabled.emplace_back(name);
            }
        }
        return enabled;
    }
    std::string Report() {
        return Control<ReportView>("panRecommend", "rtfRecommend").Layout().Text().toStdString();
    }
};

constexpr const char* kBlamesThePump =
    "The gensets cannot be worked out because of the starting power factor of load 2 of step 2, \"Pump\": "
    "Invalid procedure call or argument\r\nEdit it, or delete it and add it anew.";

TEST_F(ViewGensets, NamesTheLoadThatCannotBeWorkedOutAndStaysOnEveryPanel) {
    OpenWith(kBadPump);
    for (const int panel : {0, 1, 2}) {
        Bar(panel);
        const std::string before = ShownPanel();
        const bool report = Enabled("mnuFileSaveReport");
        Bar(3);
        EXPECT_EQ(Told(), kBlamesThePump);
        EXPECT_EQ(ShownPanel(), before);
        EXPECT_EQ(Enabled("mnuFileSaveReport"), report);
        QTest::keyClick(&Window(), Qt::Key_4, Qt::ControlModifier);
        EXPECT_EQ(Told(), kBlamesThePump) << "by its key too";
        EXPECT_EQ(ShownPanel(), before);
    }
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(ViewGensets, WorksAgainOnceTheLoadIsGone) {
    OpenWith(kBadPump);
    Bar(3);
    Told();
    Bar(2);
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    tree.setCurrentItem(tree.topLevelItem(1)->child(1));
    Click(Window(), "cmdDeleteLoad");
    ASSERT_EQ(App().LoadProfile().LoadStep(2).NumLoads(), 1);
    platform.Take();
    Bar(3);
    EXPECT_EQ(ShownPanel(), "panRecommend");
    EXPECT_THAT(platform.Take(), IsEmpty());
    EXPECT_THAT(Report(), HasSubstr("Odd"));
}

TEST_F(ViewGensets, KeepsTheResultsOfTheRunBefore) {
    Open(Sample("farm.prj"));
    Bar(3);
    const std::int32_t chosen = App().Designer().NumChosenSets();
    const std::string report = Report();
    ASSERT_GT(chosen, 0);
    BreakTheProfile();
    Bar(3);
    EXPECT_THAT(Told(), HasSubstr("of step 1, \"Pump\""));
    EXPECT_EQ(ShownPanel(), "panRecommend");
    EXPECT_EQ(App().Designer().NumChosenSets(), chosen);
    EXPECT_EQ(Report(), report);
    Control<ChoiceBox>("panRecommend", "cboAvailGensets").SelectRow(chosen - 1);
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(ViewGensets, NamesTheRowOfTheCatalogue) {
    Damage("UPDATE [Alternators] SET [SubtransReact] = 0");
    Open(Sample("hospital.prj"));
    Bar(3);
    const std::string told = Told();
    EXPECT_THAT(told, StartsWith("The gensets cannot be worked out because of the set "));
    EXPECT_THAT(told, HasSubstr(" of [Gensets]: "));
    EXPECT_THAT(told, HasSubstr("\r\nSuch a set can only be corrected in the catalogue."));
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(ViewGensets, SaysThatATableIsGone) {
    Damage("DROP TABLE [Alternators]");
    Open(Sample("hospital.prj"));
    Bar(3);
    EXPECT_EQ(Told(), "The gensets cannot be worked out: no such table: Alternators") << "and no row's fault";
    EXPECT_EQ(ShownPanel(), "panProject");
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(ViewGensets, AReportThatCannotBeWorkedOutNamesTheLoadAndLeavesTheOtherReport) {
    OpenWith(kNoTorque);
    Bar(3);
    ASSERT_EQ(ShownPanel(), "panRecommend");
    EXPECT_THAT(platform.Take(), IsEmpty());
    const std::string sizing = Report();
    auto& reports = Control<ChoiceBox>("panRecommend", "cboAvailReports");
    reports.setFocus();
    QTest::keyClick(&reports, Qt::Key_Down);
    EXPECT_EQ(
        Told(),
        "The report cannot be worked out because of the current limit of the solid-state starter of load 2 "
        "of step 2, \"Fan\": Division by zero\r\n"
        "Edit it, or delete it and add it anew.");
    EXPECT_EQ(Report(), "") << "nothing of another report";
    EXPECT_THAT(EnabledReportCommands(), ElementsAre("mnuFileExport", "butExport"))
        << "the set is still there";
    QTest::keyClick(&reports, Qt::Key_Up);
    EXPECT_EQ(Report(), sizing);
    EXPECT_THAT(EnabledReportCommands(), SizeIs(kReportCommands.size()));
    EXPECT_THAT(platform.ends, IsEmpty());
}

}  // namespace
}  // namespace genvara
