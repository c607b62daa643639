#include "frmChargerLoad.h"

#include <gtest/gtest.h>

#include <QTest>
#include <random>

#include "FormsFixture.h"

namespace genvara {
namespace {

class ChargerForm : public FormsTest {
  protected:
    std::unique_ptr<frmChargerLoad> NewFilled() {
        auto form = New<frmChargerLoad>();
        Type(*form, "txtBatVolts", "24");
        Type(*form, "txtChargeCurrent", "10");
        return form;
    }
    /// The site, as it is stored and as the window shows it.
    void System(std::int32_t phases) {
        host.phases = phases;
        App().PowerSystem().Phases(phases);
    }
};

/// What of three phases, the residential button and the input stage is enabled.
std::string Enabled(const QWidget& form) {
    std::string words;
    const std::pair<const char*, char> controls[] = {
        {"opt3Phase", '3'}, {"optResidential", 'R'}, {"fraType", 'I'}, {"optSCR", 'S'}, {"optFerro", 'F'}};
    for (const auto& [name, letter] : controls) {
        words += IsEnabled(form, name) ? letter : '-';
    }
    return words;
}

TEST_F(ChargerForm, OpensForAnIndustrialFerroResonantCharger) {
    auto form = New<frmChargerLoad>();
    EXPECT_EQ(form->windowTitle(), "Battery Charger Load");
    EXPECT_TRUE(IsOn(*form, "opt3Phase"));
    EXPECT_TRUE(IsOn(*form, "optIndustrial"));
    EXPECT_TRUE(IsOn(*form, "optFerro"));
    EXPECT_EQ(Enabled(*form), "3-ISF");
    EXPECT_EQ(TextOf(*form, "txtBatVolts"), "");
    EXPECT_EQ(TextOf(*form, "txtChargeCurrent"), "");
    System(1);
    form = New<frmChargerLoad>();
    EXPECT_TRUE(IsOn(*form, "optPhaseA"));
    EXPECT_FALSE(IsEnabled(*form, "optPhaseB"));
    EXPECT_EQ(Enabled(*form), "-RISF");
}

TEST_F(ChargerForm, ShowsWhatEachClickLeadsTo) {
    const auto form = New<frmChargerLoad>();
    const struct {
        const char* click;
        const char* phases;
        const char* application;
        const char* enabled;
    } rows[] = {{"optTelecom", "opt3Phase", "optTelecom", "3----"},
                {"optPhaseB", "optPhaseB", "optTelecom", "3R---"},
                {"optResidential", "optPhaseB", "optResidential", "-R---"},
                {"optPhaseC", "optPhaseC", "optResidential", "-R---"},
                {"optIndustrial", "optPhaseC", "optIndustrial", "3RISF"},
                {"opt3Phase", "opt3Phase", "optIndustrial", "3-ISF"}};
    for (const auto& row : rows) {
        Click(*form, row.click);
        EXPECT_TRUE(IsOn(*form, row.phases)) << row.click;
        EXPECT_TRUE(IsOn(*form, row.application)) << row.click;
        EXPECT_EQ(Enabled(*form), row.enabled) << row.click;
    }
}

TEST_F(ChargerForm, GivesThreePhasesBackToAThreePhaseSiteAlone) {
    System(1);
    const auto form = New<frmChargerLoad>();
    for (const char* click : {"optResidential", "optTelecom", "optIndustrial"}) {
        Click(*form, click);
        EXPECT_FALSE(IsEnabled(*form, "opt3Phase")) << click;
    }
}

TEST_F(ChargerForm, StoresWhatIsShown) {
    const struct {
        std::vector<const char*> clicks;
        const char* volts;
        const char* amperes;
        std::int32_t phases;
        std::int32_t type;
        std::int32_t input;
        double apparent;  // V x 1.1 x A / efficiency
        double real;      // x power factor
    } rows[] = {          // 264 / 0.85 = 310.588, x 0.9
                {{}, "24", "10", 0, 1, 1, 310.588, 279.529},
                // 240 W: 240 x 0.0002777778 + 0.466667 = 0.533333672; 264 / that = 495.000, x 0.8
                {{"optPhaseA", "optSCR"}, "24", "10", 1, 1, 0, 495.000, 396.000},
                // 5280 / 0.9 = 5866.667, x 0.95
                {{"optTelecom"}, "48", "100", 0, 2, 1, 5866.667, 5573.333},
                // 13.2 x 2.5 x 1.1 = 36.3, / 0.5 = 72.6, x 0.8
                {{"optPhaseB", "optSCR", "optResidential"}, "13.2", "2.5", 2, 0, 0, 72.6, 58.08},
                // nothing is out of range
                {{}, "0", "0", 0, 1, 1, 0.0, 0.0}};
    for (const auto& row : rows) {
        const auto form = NewFilled();
        Type(*form, "txtBatVolts", row.volts);
        Type(*form, "txtChargeCurrent", row.amperes);
        for (const char* click : row.clicks) {
            Click(*form, click);
        }
        Click(*form, "cmdOK");
        EXPECT_FALSE(form->isVisible());
        ASSERT_GT(Step().NumLoads(), 0);
        const auto& load = dynamic_cast<const CBatChrgLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.name(), "<Battery Charger>");
        EXPECT_EQ(load.Phases(), row.phases);
        EXPECT_EQ(load.ChargerType(), row.type);
        EXPECT_EQ(load.ChargerInput(), row.input) << "grey or not, the option that stands";
        EXPECT_EQ(load.BatteryVoltage(), std::stod(row.volts));
        EXPECT_EQ(load.ChargeCurrent(), std::stod(row.amperes));
        EXPECT_NEAR(load.RunningAppPower(), row.apparent, 0.001);
        EXPECT_NEAR(load.RunningRealPower(), row.real, 0.001);
    }
}

TEST_F(ChargerForm, ReportsAFieldThatCannotBeStored) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtQty", "", "Parameter can not be blank."},
                {"txtQty", "0", "Error #2\r\nLoad quantity out of range"},
                {"txtBatVolts", "", "Parameter can not be blank."},
                {"txtBatVolts", ".", "Parameter must numeric."},
                {"txtChargeCurrent", "", "Parameter can not be blank."},
                {"txtChargeCurrent", "ten", "Parameter must numeric."}};
    for (const auto& row : rows) {
        const auto form = NewFilled();
        Field(*form, row.field).setText(row.text);  // as pasted, past the key filter
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, row.message) << row.field;
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.field;
        EXPECT_TRUE(Field(*form, row.field).hasFocus()) << row.field;
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(Step().NumLoads(), 0);
    }
    const auto form = NewFilled();
    Field(*form, "txtBatVolts").setText("-24");  // computed as it stands
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CBatChrgLoad>(), nullptr);
    EXPECT_EQ(Added<CBatChrgLoad>()->BatteryVoltage(), -24.0);
}

TEST_F(ChargerForm, TakesDigitsAndOneSeparator) {
    const auto form = New<frmChargerLoad>();
    for (const char* name : {"txtBatVolts", "txtChargeCurrent"}) {
        Type(*form, name, "-1.2.5");
        EXPECT_EQ(TextOf(*form, name), "1.25");
    }
    EXPECT_EQ(platform.beeps, 4);
}

struct Stored {
    std::int32_t type;
    std::int32_t phases;
    std::int32_t input;
};

void Fill(CBatChrgLoad& load, const Stored& stored) {
    load.name("Forklifts");
    load.Description("hall 3");
    load.Phases(stored.phases);
    load.ChargerType(stored.type);
    load.ChargerInput(stored.input);
    load.BatteryVoltage(26.5);
    load.ChargeCurrent(140.25);
}

TEST_F(ChargerForm, ShowsAStoredLoad) {
    CBatChrgLoad load;
    Fill(load, {.type = 2, .phases = 3, .input = 0});
    const auto form = Edit<frmChargerLoad>(load);
    EXPECT_TRUE(IsOn(*form, "optPhaseC"));
    EXPECT_TRUE(IsOn(*form, "optTelecom"));
    EXPECT_TRUE(IsOn(*form, "optSCR"));
    EXPECT_EQ(Enabled(*form), "3R---");
    EXPECT_EQ(TextOf(*form, "txtBatVolts"), "26.5");
    EXPECT_EQ(TextOf(*form, "txtChargeCurrent"), "140.25");
}

TEST_F(ChargerForm, OkAtOnceChangesNothing) {
    for (const std::int32_t system : {3, 1}) {
        System(system);
        for (const std::int32_t type : {0, 1, 2}) {
            for (const std::int32_t phases : {0, 1, 2, 3}) {
                for (const std::int32_t input : {0, 1}) {
                    if (type == charger_type::kResidential && phases == 0) {
                        continue;  // below
                    }
                    CBatChrgLoad load;
                    Fill(load, {type, phases, input});
                    ExpectOkChangesNothing<frmChargerLoad>(load);
                }
            }
        }
    }
}

TEST_F(ChargerForm, OkAtOnceMakesWhatTheFormCanShow) {
    const struct {
        Stored before;
        Stored after;
    } rows[] = {{{0, 0, 0}, {0, 1, 0}},  // a residential charger is a single-phase one
                {{7, 0, 1}, {1, 0, 1}},  // codes of no option give way to those that the form opens with
                {{1, 0, 9}, {1, 0, 1}}};
    for (const auto& row : rows) {
        CBatChrgLoad load;
        Fill(load, row.before);
        Click(*Edit<frmChargerLoad>(load), "cmdOK");
        CBatChrgLoad expected;
        Fill(expected, row.after);
        EXPECT_EQ(Members(load), Members(expected));
    }
}

TEST_F(ChargerForm, AnyClicksStoreALoadThatThereCanBe) {
    std::mt19937 random(20240812);
    const char* buttons[] = {"opt3Phase",      "optPhaseA",     "optPhaseB", "optPhaseC", "optTelecom",
                             "optResidential", "optIndustrial", "optSCR",    "optFerro"};
    for (std::int32_t round = 0; round < 60; ++round) {
        System(round % 2 == 0 ? 3 : 1);
        const auto form = NewFilled();
        for (int i = 0; i < 10; ++i) {
            const bool hadInput = IsEnabled(*form, "fraType");
            const bool wasFerro = IsOn(*form, "optFerro");
            Click(*form, buttons[random() % 9]);
            EXPECT_TRUE(hadInput || IsOn(*form, "optFerro") == wasFerro) << "a grey option stands";
        }
        const bool ferro = IsOn(*form, "optFerro");
        Click(*form, "cmdOK");
        ASSERT_EQ(Step().NumLoads(), round + 1);
        const auto& load = dynamic_cast<const CBatChrgLoad&>(*std::prev(Step().end()));
        EXPECT_TRUE(load.ChargerType() != charger_type::kResidential || load.Phases() != 0);
        EXPECT_EQ(load.ChargerInput(), ferro ? 1 : 0);
        EXPECT_TRUE(host.phases == 3 || load.Phases() == 1);
    }
}

}  // namespace
}  // namespace genvara
