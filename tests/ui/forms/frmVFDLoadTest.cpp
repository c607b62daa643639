#include "frmVFDLoad.h"

#include <gtest/gtest.h>

#include <QTest>

#include "ChoiceBox.h"
#include "FormsFixture.h"

namespace genvara {
namespace {

// The motors of these tests run at 0.8 kW a horsepower.
class VFDForm : public FormsTest {
  protected:
    std::unique_ptr<frmVFDLoad> NewRated(const char* horsepower = "100") {
        auto form = New<frmVFDLoad>();
        Type(*form, "txtMtrRating", horsepower);
        return form;
    }
    static void ExpectTypes(const QWidget& form, bool offered) {
        for (const char* name : {"lblType", "cboType", "chkInputFilter"}) {
            EXPECT_EQ(IsEnabled(form, name), offered) << name;
        }
    }
};

TEST_F(VFDForm, OpensWithUsualFigures) {
    const auto form = New<frmVFDLoad>();
    EXPECT_EQ(form->windowTitle(), "VFD Load");
    EXPECT_EQ(TextOf(*form, "txtMtrRating"), "");
    EXPECT_EQ(TextOf(*form, "txtEff"), "90");
    EXPECT_EQ(TextOf(*form, "txtStartKVALimit"), "125");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").currentText(), "6 pulse");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").count(), 4);
    EXPECT_FALSE(IsOn(*form, "chkInputFilter"));
    ExpectTypes(*form, true);
}

TEST_F(VFDForm, OffersInputStagesWithThreePhasesAlone) {
    const auto form = New<frmVFDLoad>();
    for (const char* phase : {"optPhaseA", "optPhaseB", "optPhaseC"}) {
        Click(*form, phase);
        ExpectTypes(*form, false);
        Click(*form, "opt3Phase");
        ExpectTypes(*form, true);
    }
    host.phases = 1;
    ExpectTypes(*New<frmVFDLoad>(), false);
}

TEST_F(VFDForm, StoresWhatIsShown) {
    const struct {
        const char* phases;
        const char* horsepower;
        const char* efficiency;
        const char* limit;
        std::int32_t type;
        std::int32_t inputType;
        double running;   // W: hp x 800 / efficiency
        double starting;  // VA: limit x running / 0.9
    } rows[] = {          // 80000 / 0.8 = 100000, / 0.9 x 1.25 = 138888.9
                {"opt3Phase", "100", "80", "125", 1, 1, 100000.0, 138888.889},
                // 40000 / 0.99 = 40404.04, / 0.9 x 1.5 = 67340.07
                {"opt3Phase", "50", "99", "150", 4, 4, 40404.040, 67340.067},
                // 2000 / 0.7 = 2857.14, / 0.9 = 3174.60
                {"optPhaseB", "2.5", "70", "100", 2, 5, 2857.143, 3174.603},
                // 800000 / 0.9 = 888888.9, / 0.9 x 1.25 = 1234567.9
                {"optPhaseC", "1000", "90", "125", 3, 5, 888888.889, 1234567.901}};
    for (const auto& row : rows) {
        const auto form = NewRated(row.horsepower);
        Type(*form, "txtEff", row.efficiency);
        Type(*form, "txtStartKVALimit", row.limit);
        Find<ChoiceBox>(*form, "cboType").SelectCode(row.type);
        Click(*form, "chkInputFilter");
        Click(*form, row.phases);
        Click(*form, "cmdOK");
        EXPECT_FALSE(form->isVisible());
        ASSERT_GT(Step().NumLoads(), 0);
        const auto& load = dynamic_cast<const CVFDLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.name(), "<VFD>");
        EXPECT_EQ(load.InputType(), row.inputType);
        EXPECT_EQ(load.MtrRating(), std::stod(row.horsepower));
        EXPECT_EQ(load.Efficiency(), std::stoi(row.efficiency));
        EXPECT_EQ(load.KVALimit(), std::stoi(row.limit));
        EXPECT_TRUE(load.InputFilterInstalled()) << "the box is read as it stands, grey or not";
        EXPECT_NEAR(load.RunningRealPower(), row.running, 0.001);
        EXPECT_NEAR(load.StartingAppPower(), row.starting, 0.001);
    }
}

TEST_F(VFDForm, ReportsAFieldThatCannotBeStored) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtMtrRating", "", "Parameter can not be blank."},
                {"txtMtrRating", ".", "Parameter must numeric."},
                {"txtMtrRating", "0", "Error #25\r\nMotor rating out of range."},
                {"txtMtrRating", "1000.01", "Error #25\r\nMotor rating out of range."},
                {"txtQty", "", "Parameter can not be blank."},
                {"txtQty", "300", "Error #2\r\nLoad quantity out of range"},
                {"txtEff", "", "Parameter can not be blank."},
                {"txtEff", "69", "Error #26\r\nDrive efficiency out of range."},
                {"txtEff", "100", "Error #26\r\nDrive efficiency out of range."},
                {"txtStartKVALimit", "", "Parameter can not be blank."},
                {"txtStartKVALimit", "many", "Parameter must numeric."},
                {"txtStartKVALimit", "99", "Error #27\r\nRun/Start KVA limit out of range."},
                {"txtStartKVALimit", "151", "Error #27\r\nRun/Start KVA limit out of range."}};
    for (const auto& row : rows) {
        const auto form = NewRated();
        Field(*form, row.field).setText(row.text);  // as pasted, past the key filter
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, row.message) << row.field;
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.field;
        EXPECT_TRUE(Field(*form, row.field).hasFocus()) << row.field;
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

TEST_F(VFDForm, FieldsTakeWhatTheyMayHold) {
    const auto form = New<frmVFDLoad>();
    const struct {
        const char* field;
        const char* typed;
        const char* text;
        int beeps;
    } rows[] = {{"txtMtrRating", "-1.2.5", "1.25", 2},
                {"txtEff", "0.905", "90", 3},
                {"txtStartKVALimit", "1.05", "1.0", 1}};
    for (const auto& row : rows) {
        platform.beeps = 0;
        Type(*form, row.field, row.typed);
        EXPECT_EQ(TextOf(*form, row.field), row.text);
        EXPECT_EQ(platform.beeps, row.beeps) << row.field;
    }
}

TEST_F(VFDForm, ArrowsStayWithinTheRanges) {
    const auto form = NewRated("1");
    const struct {
        const char* field;
        int least;
        int most;
    } rows[] = {{"txtEff", 70, 99}, {"txtStartKVALimit", 100, 150}};
    for (const auto& row : rows) {
        EntryField& field = Field(*form, row.field);
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(&field, Qt::Key_Down);
        }
        EXPECT_EQ(field.Content(), std::to_string(row.least));
        for (int i = 0; i < 60; ++i) {
            QTest::keyClick(&field, Qt::Key_Up);
        }
        EXPECT_EQ(field.Content(), std::to_string(row.most));
    }
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CVFDLoad>(), nullptr);
    EXPECT_EQ(Added<CVFDLoad>()->KVALimit(), 150);
}

void Fill(CVFDLoad& load, std::int32_t phases, std::int32_t inputType) {
    load.name("Fan");
    load.Phases(phases);
    load.InputType(inputType);
    load.MtrRating(12.75);
    load.Efficiency(88);
    load.KVALimit(110);
    load.InputFilterInstalled(true);
}

TEST_F(VFDForm, ShowsAStoredLoad) {
    CVFDLoad load(App().Motors());
    Fill(load, 0, input_type::kActive);
    auto form = Edit<frmVFDLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtMtrRating"), "12.75");
    EXPECT_EQ(TextOf(*form, "txtEff"), "88");
    EXPECT_EQ(TextOf(*form, "txtStartKVALimit"), "110");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").currentText(), "Active");
    EXPECT_TRUE(IsOn(*form, "chkInputFilter"));
    ExpectTypes(*form, true);
    Fill(load, 3, input_type::kSinglePhase);
    form = Edit<frmVFDLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optPhaseC"));
    ExpectTypes(*form, false);
}

TEST_F(VFDForm, OkAtOnceChangesNothing) {
    for (const std::int32_t system : {3, 1}) {
        host.phases = system;
        for (const std::int32_t phases : {0, 1, 2, 3}) {
            for (const std::int32_t inputType : {1, 2, 3, 4}) {
                CVFDLoad load(App().Motors());
                Fill(load, phases, phases == 0 ? inputType : 5);
                ExpectOkChangesNothing<frmVFDLoad>(load);
            }
        }
    }
}

TEST_F(VFDForm, OkAtOnceMendsAnInputStageThatDoesNotGoWithThePhases) {
    // On one phase there is one input stage; with three the list's first stands for one that it has not.
    const struct {
        std::int32_t phases;
        std::int32_t before;
        std::int32_t after;
    } rows[] = {{1, 2, 5}, {2, 0, 5}, {0, 5, 1}, {0, 0, 1}};
    for (const auto& row : rows) {
        CVFDLoad load(App().Motors());
        Fill(load, row.phases, row.before);
        Click(*Edit<frmVFDLoad>(load), "cmdOK");
        CVFDLoad expected(App().Motors());
        Fill(expected, row.phases, row.after);
        EXPECT_EQ(Members(load), Members(expected));
    }
}

}  // namespace
}  // namespace genvara
