#include "frmMedLoad.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTest>

#include "ChoiceBox.h"
#include "FormsFixture.h"

namespace genvara {
namespace {

class MedForm : public FormsTest {
  protected:
    std::unique_ptr<frmMedLoad> NewFilled() {
        auto form = New<frmMedLoad>();
        Type(*form, "txtMaxContKVA", "50");
        Type(*form, "txtContPF", "0.8");
        Type(*form, "txtMaxMomentaryKVA", "300");
        return form;
    }
    static bool Warns(const QWidget& form) { return Find<QLabel>(form, "lblWarning").isVisible(); }
};

TEST_F(MedForm, OpensWithUsualPowerFactorsAndDip) {
    const auto form = New<frmMedLoad>();
    EXPECT_EQ(form->windowTitle(), "Medical Imaging Load");
    EXPECT_EQ(TextOf(*form, "txtMaxContKVA"), "");
    EXPECT_EQ(TextOf(*form, "txtContPF"), "0.90");
    EXPECT_EQ(TextOf(*form, "txtMaxMomentaryKVA"), "");
    EXPECT_EQ(TextOf(*form, "txtPeakPF"), "0.90");
    EXPECT_EQ(TextOf(*form, "txtMaxVoltDip"), "6");
    EXPECT_FALSE(Warns(*form));
    EXPECT_EQ(Find<QLabel>(*form, "lblWarning").text(),
              "WARNING: Voltage dip during peak demand effects image quality.");
    EXPECT_FALSE(Find<ChoiceBox>(*form, "cboType").isVisible());
    EXPECT_FALSE(Find<QLabel>(*form, "lblType").isVisible());
}

TEST_F(MedForm, StoresKilovoltamperesInVoltamperes) {
    const auto form = NewFilled();
    Type(*form, "txtMaxVoltDip", "4");
    Click(*form, "cmdOK");
    const CMedEquipLoad* load = Added<CMedEquipLoad>();
    ASSERT_NE(load, nullptr);
    EXPECT_EQ(load->name(), "<Medical Imaging>");
    EXPECT_EQ(load->ContVA(), 50000.0);
    EXPECT_EQ(load->ContPowerFactor(), 0.8);
    EXPECT_EQ(load->PeakVA(), 300000.0);
    EXPECT_EQ(load->PeakPowerFactor(), 0.9);
    EXPECT_EQ(load->MaxPeakDemandVoltDip(), 4);
    EXPECT_EQ(load->RunningRealPower(), 40000.0);    // 50 x 0.8
    EXPECT_EQ(load->StartingRealPower(), 270000.0);  // 300 x 0.9
}

TEST_F(MedForm, AFigureOutOfRangeIsNotLeft) {
    const struct {
        const char* field;
        const char* good;
        const char* bad;
    } rows[] = {{"txtMaxContKVA", "500", "500.1"},
                {"txtMaxContKVA", "0.1", "0"},
                {"txtContPF", "1.00", "1.01"},
                {"txtContPF", "1", "0"},
                {"txtMaxMomentaryKVA", "5000", "5000.1"},
                {"txtPeakPF", "0.01", "0.0"},
                {"txtPeakPF", "1", "2"}};
    for (const auto& row : rows) {
        const auto form = New<frmMedLoad>();
        EntryField& field = Field(*form, row.field);
        Type(*form, row.field, row.bad);
        platform.beeps = 0;
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_TRUE(field.hasFocus()) << row.bad;
        EXPECT_TRUE(field.InError()) << row.bad;
        EXPECT_EQ(platform.beeps, 1);
        EXPECT_EQ(field.Content(), row.bad);
        EXPECT_TRUE(field.statusTip().contains("is out of range. Enter a number above 0, up to "));
        Type(*form, row.field, row.good);
        QTest::keyClick(&field, Qt::Key_Tab);
        EXPECT_FALSE(field.hasFocus()) << row.good;
        EXPECT_FALSE(field.InError()) << row.good;
        EXPECT_EQ(field.Content(), row.good) << "stays as typed";
    }
    EXPECT_TRUE(platform.asked.empty()) << "without a message";
}

TEST_F(MedForm, ABlankPassesAndIsTrimmed) {
    const auto form = New<frmMedLoad>();
    EntryField& field = Field(*form, "txtMaxContKVA");
    field.setText("  ");
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Tab);
    EXPECT_FALSE(field.hasFocus());
    EXPECT_EQ(field.Content(), "");
    field.setText(" 12 ");
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Tab);
    EXPECT_EQ(field.Content(), "12");
}

TEST_F(MedForm, NeitherEnterNorOkGetsPastAFigureOutOfRange) {
    const auto form = NewFilled();
    Type(*form, "txtPeakPF", "1.2");
    QTest::keyClick(&Field(*form, "txtPeakPF"), Qt::Key_Return);
    EXPECT_TRUE(form->isVisible());
    EXPECT_TRUE(Field(*form, "txtPeakPF").InError());
    QTest::mouseClick(&Find<QPushButton>(*form, "cmdOK"), Qt::LeftButton);
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Step().NumLoads(), 0);
    EXPECT_TRUE(platform.asked.empty());
    QTest::mouseClick(&Find<QPushButton>(*form, "cmdCancel"), Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
}

TEST_F(MedForm, TheArrowsWarnOfADipThatSpoilsTheImage) {
    const auto form = New<frmMedLoad>();
    EntryField& dip = Field(*form, "txtMaxVoltDip");
    QTest::keyClick(&dip, Qt::Key_Up);
    EXPECT_EQ(dip.Content(), "7");
    EXPECT_TRUE(Warns(*form));
    QTest::keyClick(&dip, Qt::Key_Down);
    EXPECT_EQ(dip.Content(), "6");
    EXPECT_FALSE(Warns(*form));
    CMedEquipLoad load;
    load.MaxPeakDemandVoltDip(8);
    EXPECT_TRUE(Warns(*Edit<frmMedLoad>(load)));
}

TEST_F(MedForm, TheDipHasTwoDigits) {
    const auto form = New<frmMedLoad>();
    Type(*form, "txtMaxVoltDip", "1.234");
    EXPECT_EQ(TextOf(*form, "txtMaxVoltDip"), "12");
    EntryField& dip = Field(*form, "txtMaxVoltDip");
    dip.setText("99");
    QTest::keyClick(&dip, Qt::Key_Up);
    EXPECT_EQ(dip.Content(), "99");
}

TEST_F(MedForm, TellsABlankFromWhatIsNoNumber) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtMaxContKVA", "", "Parameter can not be blank."},
                {"txtMaxMomentaryKVA", "", "Parameter can not be blank."},
                {"txtContPF", "x", "Parameter must numeric."},
                {"txtPeakPF", "", "Parameter can not be blank."},
                {"txtMaxVoltDip", "", "Parameter can not be blank."},
                {"txtQty", "257", "Error #2\r\nLoad quantity out of range"}};
    for (const auto& row : rows) {
        const auto form = NewFilled();
        Field(*form, row.field).setText(row.text);  // as pasted
        QTest::keyClick(&Field(*form, "txtName"), Qt::Key_Return);
        EXPECT_EQ(platform.TakeMessage().text, row.message) << row.field;
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.field;
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

TEST_F(MedForm, TheHiddenInputTypeFollowsThePhasesAndIsNotStored) {
    const auto form = NewFilled();
    auto& type = Find<ChoiceBox>(*form, "cboType");
    EXPECT_EQ(type.count(), 4);
    EXPECT_TRUE(type.isEnabled());
    Click(*form, "optPhaseB");
    EXPECT_FALSE(type.isEnabled());
    Click(*form, "opt3Phase");
    EXPECT_TRUE(type.isEnabled());
    type.SelectRow(3);
    Click(*form, "cmdOK");
    EXPECT_EQ(Added<CMedEquipLoad>()->InputType(), 1);
}

TEST_F(MedForm, OkAtOnceChangesNothing) {
    for (std::int32_t i = 0; i < 20; ++i) {
        CMedEquipLoad load;
        load.name("CT");
        load.Quantity(1 + i);
        load.Phases(i % 4);
        load.ContVA(i *
                    54321.125);  // beyond the form's limit too: a field that is not touched is not checked
        load.PeakVA(i * 1234.5);
        load.ContPowerFactor(1.0 / (i + 1));
        load.PeakPowerFactor(0.0123456789 * i);
        load.MaxPeakDemandVoltDip(i * 7);
        load.InputType(i);
        ExpectOkChangesNothing<frmMedLoad>(load);
    }
}

TEST_F(MedForm, APowerFactorBeyondOneOfAFileIsNotStoredAgain) {
    const struct {
        double continuous;
        double peak;
        const char* field;
        const char* sentence;
    } rows[] = {{1.25, 0.9, "txtContPF",
                 "pF @ Continuous Power Demand: 1.25 is out of range. Enter a number above 0, up to 1."},
                {0.9, 1.25, "txtPeakPF",
                 "pF @ Max. Power Demand: 1.25 is out of range. Enter a number above 0, up to 1."}};
    for (const auto& row : rows) {
        CMedEquipLoad load;
        load.ContVA(50000.0);
        load.PeakVA(300000.0);
        load.ContPowerFactor(row.continuous);
        load.PeakPowerFactor(row.peak);
        const auto form = Edit<frmMedLoad>(load);
        Type(*form, "txtName", "CT");
        Click(*form, "cmdOK");
        EXPECT_TRUE(platform.Take().empty());
        EXPECT_TRUE(form->isVisible());
        EXPECT_TRUE(Field(*form, row.field).InError());
        EXPECT_TRUE(Field(*form, row.field).hasFocus());
        EXPECT_EQ(Field(*form, row.field).statusTip(), row.sentence);
        EXPECT_EQ(load.name(), "") << "nothing is written";
    }
}

}  // namespace
}  // namespace genvara
