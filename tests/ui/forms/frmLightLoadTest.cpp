#include "frmLightLoad.h"

#include <gtest/gtest.h>

#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTest>

#include "FormsFixture.h"

namespace genvara {
namespace {

class LightForm : public FormsTest {
  protected:
    static void ExpectBallastEnabled(const QWidget& form, bool enabled) {
        for (const char* name : {"fraBallast", "optHighEffMagnetic", "optElectronic", "optLowDistElectronic",
                                 "lblRunPF", "txtRunPF"}) {
            EXPECT_EQ(IsEnabled(form, name), enabled) << name;
        }
    }
};

TEST_F(LightForm, OpensForIncandescentLamps) {
    const auto form = New<frmLightLoad>();
    EXPECT_EQ(form->windowTitle(), "Lighting Load");
    EXPECT_EQ(Find<QRadioButton>(*form, "opt3Phase").text().remove('&'), "Evenly Distributed");
    EXPECT_TRUE(IsOn(*form, "optIncadescent"));
    EXPECT_TRUE(IsOn(*form, "optHighEffMagnetic"));
    EXPECT_EQ(TextOf(*form, "txtRunKW"), "");
    EXPECT_EQ(TextOf(*form, "txtRunPF"), "1.00");
    EXPECT_EQ(Field(*form, "txtDescription").toolTip(), "Detailed Description of Load");
    EXPECT_EQ(Field(*form, "txtRunPF").palette().color(QPalette::Disabled, QPalette::Base),
              QColor(0xE0, 0xE0, 0xE0));
    ExpectBallastEnabled(*form, false);
}

TEST_F(LightForm, TheLampDecidesAboutBallastAndPowerFactor) {
    const auto form = New<frmLightLoad>();
    for (const char* lamp : {"optFluoro", "optHID"}) {
        Click(*form, lamp);
        ExpectBallastEnabled(*form, true);
        Type(*form, "txtRunPF", "0.8");
        Click(*form, lamp);
        EXPECT_EQ(TextOf(*form, "txtRunPF"), "0.8");
        Click(*form, "optIncadescent");
        ExpectBallastEnabled(*form, false);
        EXPECT_EQ(TextOf(*form, "txtRunPF"), "1.00");
    }
    Click(*form, "optFluoro");
    EXPECT_EQ(TextOf(*form, "txtRunPF"), "1.00") << "the text is left as it is";
}

TEST_F(LightForm, StoresRunningFiguresForTheStartToo) {
    const struct {
        const char* lamp;
        const char* ballast;
        const char* pF;
        std::int32_t lightType;
        std::int32_t storedBallast;
        double powerFactor;
    } rows[] = {{"optIncadescent", "optElectronic", "", 0, 0, 1.0},
                {"optFluoro", "optHighEffMagnetic", "0.85", 1, 1, 0.85},
                {"optFluoro", "optElectronic", "0.95", 1, 2, 0.95},
                {"optHID", "optLowDistElectronic", "0.6", 2, 3, 0.6}};
    for (const auto& row : rows) {
        const auto form = New<frmLightLoad>();
        Click(*form, "optFluoro");
        Click(*form, row.ballast);
        Click(*form, row.lamp);
        Type(*form, "txtRunKW", "7.5");
        if (IsEnabled(*form, "txtRunPF")) {
            Type(*form, "txtRunPF", row.pF);
        }
        Click(*form, "cmdOK");
        EXPECT_TRUE(platform.Take().empty());
        const auto& load = dynamic_cast<const CLightLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.name(), "<Lighting>");
        EXPECT_EQ(load.LightType(), row.lightType);
        EXPECT_EQ(load.Ballast(), row.storedBallast);
        EXPECT_EQ(load.RunningRealPower(), 7500.0);
        EXPECT_EQ(load.StartingRealPower(), 7500.0);
        EXPECT_EQ(load.RunningPowerFactor(), row.powerFactor);
        EXPECT_EQ(load.StartingPowerFactor(), row.powerFactor);
    }
}

TEST_F(LightForm, TellsABlankFromWhatIsNoNumber) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtQty", "", "Parameter can not be blank."},
                {"txtQty", " ", "Parameter must numeric."},
                {"txtRunKW", "", "Parameter can not be blank."},
                {"txtRunKW", "abc", "Parameter must numeric."},
                {"txtRunKW", "2001", "Error #17\r\nRunning real power out of range"},
                {"txtRunPF", "", "Parameter can not be blank."},
                {"txtRunPF", "1.01", "Error #16\r\nRunning power factor out of range"}};
    for (const auto& row : rows) {
        const auto form = New<frmLightLoad>();
        Click(*form, "optHID");
        Type(*form, "txtRunKW", "3");
        Field(*form, row.field).setText(row.text);  // as pasted
        QTest::keyClick(&Field(*form, "txtName"), Qt::Key_Return);
        EXPECT_EQ(platform.TakeMessage().text, row.message);
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.message;
        EXPECT_EQ(Step().NumLoads(), 0);
    }
}

TEST_F(LightForm, TheFiguresAreCheckedBeforeTheyAreLeft) {
    const auto form = New<frmLightLoad>();
    Click(*form, "optHID");
    for (const char* name : {"txtRunKW", "txtRunPF"}) {
        Type(*form, name, "1-.5.");
        EXPECT_EQ(TextOf(*form, name), "1.5");
        Field(*form, name).setText("1.5.");
        QTest::keyClick(&Field(*form, name), Qt::Key_Tab);
        EXPECT_TRUE(Field(*form, name).hasFocus());
        Field(*form, name).setText("");
        QTest::keyClick(&Field(*form, name), Qt::Key_Tab);
        EXPECT_FALSE(Field(*form, name).hasFocus());
    }
}

TEST_F(LightForm, ShowsAStoredLoad) {
    CLightLoad load;
    load.LightType(light_type::kHID);
    load.Ballast(ballast::kLowDistElectronic);
    load.RunningRealPower(12345.0);
    load.RunningPowerFactor(0.9);
    const auto form = Edit<frmLightLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optHID"));
    EXPECT_TRUE(IsOn(*form, "optLowDistElectronic"));
    EXPECT_EQ(TextOf(*form, "txtRunKW"), "12.345");
    EXPECT_EQ(TextOf(*form, "txtRunPF"), "0.90");
    ExpectBallastEnabled(*form, true);
}

TEST_F(LightForm, OkAtOnceChangesNothing) {
    // Except what the form does not offer: starting figures of their own, an incandescent lamp's ballast or a
    // lamp or ballast of no button; and digits of the power factor beyond the two that are shown.
    for (std::int32_t lamp = 0; lamp <= 2; ++lamp) {
        for (std::int32_t ballastCode = 1; ballastCode <= 3; ++ballastCode) {
            CLightLoad load;
            load.name("Hall");
            load.Description("ceiling");
            load.Quantity(12);
            load.Phases(ballastCode);
            load.LightType(lamp);
            load.Ballast(lamp == light_type::kIncandescent ? ballast::kNone : ballastCode);
            load.RunningRealPower(1234.5);
            load.StartingRealPower(1234.5);
            load.RunningPowerFactor(0.87);
            load.StartingPowerFactor(0.87);
            ExpectOkChangesNothing<frmLightLoad>(load);
        }
    }
}

}  // namespace
}  // namespace genvara
