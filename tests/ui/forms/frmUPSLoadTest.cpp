#include "frmUPSLoad.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QTest>
#include <random>

#include "ChoiceBox.h"
#include "FormsFixture.h"

namespace genvara {
namespace {

class UPSForm : public FormsTest {
  protected:
    std::unique_ptr<frmUPSLoad> NewRated(const char* rating = "100") {
        auto form = New<frmUPSLoad>();
        Type(*form, "txtRating", rating);
        return form;
    }
    static void Select(const QWidget& form, const char* text) {
        auto& list = Find<ChoiceBox>(form, "cboType");
        list.SelectRow(list.findText(text));
    }
    const CUPSLoad& Last() const { return dynamic_cast<const CUPSLoad&>(*std::prev(Step().end())); }
};

/// What of the four phase buttons, the fast family, the power figures, the list and the filter is enabled.
std::string Enabled(const QWidget& form) {
    std::string words;
    const std::pair<const char*, char> controls[] = {
        {"opt3Phase", '0'},      {"optPhaseA", 'A'},  {"optPhaseB", 'B'}, {"optPhaseC", 'C'},
        {"optHarborRelay", 'F'}, {"txtLoading", 'P'}, {"cboType", 'T'},   {"chkInputFilter", 'I'}};
    for (const auto& [name, letter] : controls) {
        words += IsEnabled(form, name) ? letter : '-';
    }
    return words;
}

bool Warns(const QWidget& form) {
    return Find<QLabel>(form, "lblWarning").isVisible();
}

TEST_F(UPSForm, OpensForTheFastFamilyInAThreePhaseSystem) {
    const auto form = New<frmUPSLoad>();
    EXPECT_EQ(form->windowTitle(), "UPS Load");
    EXPECT_TRUE(IsOn(*form, "opt3Phase"));
    EXPECT_TRUE(IsOn(*form, "optHarborRelay"));
    EXPECT_EQ(Enabled(*form), "0---F---");
    EXPECT_EQ(TextOf(*form, "txtRating"), "");
    EXPECT_EQ(TextOf(*form, "txtLoading"), "100");
    EXPECT_EQ(TextOf(*form, "txtCharging"), "10");
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").currentText(), "6 pulse");
    EXPECT_FALSE(IsOn(*form, "chkInputFilter"));
    EXPECT_TRUE(Warns(*form));
    EXPECT_EQ(Find<QLabel>(*form, "lblWarning").text(),
              "IMPORTANT\nTo properly size Harbor Relay and Off Line UPS loads, all protected loads must be "
              "seperately entered, ON THE SAME LOAD STEP AS THE UPS.");
}

TEST_F(UPSForm, OpensOffLineInASinglePhaseSystem) {
    host.phases = 1;
    const auto form = New<frmUPSLoad>();
    EXPECT_TRUE(IsOn(*form, "optPhaseA"));
    EXPECT_TRUE(IsOn(*form, "optOffLine"));
    EXPECT_EQ(Enabled(*form), "-A------");
    EXPECT_TRUE(Warns(*form));
    Click(*form, "optOnLine");
    EXPECT_EQ(Enabled(*form), "-A---P--");
    EXPECT_FALSE(Warns(*form));
}

TEST_F(UPSForm, GreysWhatDoesNotApplyWithItsLabelsAndArrows) {
    const auto form = New<frmUPSLoad>();
    const char* power[] = {"lblLoading",  "txtLoading",  "updLoading",  "lblLoadingUnits",
                           "lblCharging", "txtCharging", "updCharging", "lblChargingUnits"};
    const char* type[] = {"lblType", "cboType"};
    const QColor grey(0xE0, 0xE0, 0xE0);
    for (const char* name : power) {
        EXPECT_FALSE(IsEnabled(*form, name)) << name;
    }
    for (const char* name : type) {
        EXPECT_FALSE(IsEnabled(*form, name)) << name;
    }
    EXPECT_EQ(Field(*form, "txtLoading").palette().color(QPalette::Disabled, QPalette::Base), grey);
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").palette().color(QPalette::Disabled, QPalette::Button), grey);
    Click(*form, "optOnLine");
    for (const char* name : power) {
        EXPECT_TRUE(IsEnabled(*form, name)) << name;
    }
    for (const char* name : type) {
        EXPECT_TRUE(IsEnabled(*form, name)) << name;
    }
}

TEST_F(UPSForm, ShowsWhatEachClickLeadsTo) {
    const auto form = New<frmUPSLoad>();
    const struct {
        const char* click;
        const char* phases;
        const char* family;
        const char* enabled;
        bool warns;
    } rows[] = {{"optOnLine", "opt3Phase", "optOnLine", "0ABCFPTI", false},
                {"optPhaseB", "optPhaseB", "optOnLine", "0ABCFP--", false},
                {"optOffLine", "optPhaseB", "optOffLine", "0ABCF---", true},
                {"opt3Phase", "opt3Phase", "optOffLine", "0ABCF--I", true},
                {"optHarborRelay", "opt3Phase", "optHarborRelay", "0---F---", true},
                {"optOffLine", "opt3Phase", "optOffLine", "0ABCF--I", true},
                {"optPhaseC", "optPhaseC", "optOffLine", "0ABCF---", true},
                {"optHarborRelay", "opt3Phase", "optHarborRelay", "0---F---", true}};
    for (const auto& row : rows) {
        Click(*form, row.click);
        EXPECT_TRUE(IsOn(*form, row.phases)) << row.click;
        EXPECT_TRUE(IsOn(*form, row.family)) << row.click;
        EXPECT_EQ(Enabled(*form), row.enabled) << row.click;
        EXPECT_EQ(Warns(*form), row.warns) << row.click;
    }
}

TEST_F(UPSForm, StoresWhatIsShown) {
    const struct {
        std::vector<const char*> clicks;
        const char* rating;
        const char* loading;
        const char* charging;
        const char* type;
        std::int32_t phases;
        std::int32_t family;
        std::int32_t inputType;
        double outputRating;     // kVA x 1000
        double runningAppPower;  // VA
        double runningRealPower;
    } rows[] = {
        // 100000 / 0.9 x 1.1 = 122222.2, x 0.95 = 116111.1
        {{}, "100", nullptr, nullptr, "6 pulse", 0, 0, 1, 100000.0, 122222.222, 116111.111},
        // 100000 / 0.95 x 1.1 = 115789.5, x 0.95 = 110000
        {{"optOnLine"}, "100", "100", "10", "6 pulse", 0, 1, 1, 100000.0, 115789.474, 110000.0},
        // 100000 / 0.9 x 1.1 = 122222.2, x 0.85 = 103888.9
        {{"optOnLine", "optPhaseA"}, "100", "100", "10", nullptr, 1, 1, 5, 100000.0, 122222.222, 103888.889},
        // 0.5 x 2500000 / 0.95 x 1.25 = 1644736.8, x 0.95 = 1562500
        {{"optOnLine"}, "2500", "50", "25", "Active", 0, 1, 4, 2500000.0, 1644736.842, 1562500.0},
        // 0.8 x 20000 / 0.9 x 1 = 17777.8, x 0.85 = 15111.1
        {{"optOnLine", "optPhaseC"}, "20", "80", "0", nullptr, 3, 1, 5, 20000.0, 17777.778, 15111.111},
        // 1000 / 0.9 x 1.1 = 1222.2, x 0.95 = 1161.1, also on one phase
        {{"optOffLine", "optPhaseB"}, "1", nullptr, nullptr, nullptr, 2, 2, 5, 1000.0, 1222.222, 1161.111},
        {{"optOffLine"}, "1", nullptr, nullptr, ">12 pulse", 0, 2, 3, 1000.0, 1222.222, 1161.111}};
    for (const auto& row : rows) {
        const auto form = NewRated(row.rating);
        for (const char* click : row.clicks) {
            Click(*form, click);
        }
        if (row.loading != nullptr) {
            Type(*form, "txtLoading", row.loading);
            Type(*form, "txtCharging", row.charging);
        }
        if (row.type != nullptr) {
            Select(*form, row.type);
        }
        Click(*form, "cmdOK");
        EXPECT_FALSE(form->isVisible());
        ASSERT_GT(Step().NumLoads(), 0);
        EXPECT_EQ(Last().name(), "<UPS>");
        EXPECT_EQ(Last().Phases(), row.phases);
        EXPECT_EQ(Last().Family(), row.family);
        EXPECT_EQ(Last().InputType(), row.inputType);
        EXPECT_EQ(Last().OutputRating(), row.outputRating);
        EXPECT_EQ(Last().Loading(), row.loading == nullptr ? 100 : std::stoi(row.loading));
        EXPECT_EQ(Last().Charging(), row.charging == nullptr ? 10 : std::stoi(row.charging));
        EXPECT_FALSE(Last().InputFilterInstalled());
        EXPECT_NEAR(Last().RunningAppPower(), row.runningAppPower, 0.001);
        EXPECT_NEAR(Last().RunningRealPower(), row.runningRealPower, 0.001);
    }
}

TEST_F(UPSForm, ReadsGreyControlsAsTheyStand) {
    const auto form = NewRated();
    Click(*form, "optOnLine");
    Type(*form, "txtLoading", "70");
    Type(*form, "txtCharging", "5");
    Select(*form, "12 pulse");
    Click(*form, "chkInputFilter");
    Click(*form, "optHarborRelay");
    EXPECT_EQ(Enabled(*form), "0---F---");
    Click(*form, "cmdOK");
    const CUPSLoad* load = Added<CUPSLoad>();
    ASSERT_NE(load, nullptr);
    EXPECT_EQ(load->Loading(), 70);
    EXPECT_EQ(load->Charging(), 5);
    EXPECT_EQ(load->InputType(), 2);
    EXPECT_TRUE(load->InputFilterInstalled());
    // 100000 / 0.9 x 1.1 x 0.95, through the filter although the family has none
    EXPECT_NEAR(load->ThreePhaseTwelvePulseRectFilteredPower(), 116111.111, 0.001);
}

TEST_F(UPSForm, ReportsAFieldThatCannotBeStored) {
    const struct {
        const char* field;
        const char* text;
        const char* message;
    } rows[] = {{"txtRating", "", "Parameter can not be blank."},
                {"txtRating", "abc", "Parameter must numeric."},
                {"txtRating", " ", "Parameter must numeric."},
                {"txtRating", "2501", "Error #22\r\nOutput rating out of range."},
                {"txtRating", "0", "Error #22\r\nOutput rating out of range."},
                {"txtQty", "", "Parameter can not be blank."},
                {"txtQty", "0", "Error #2\r\nLoad quantity out of range"},
                {"txtLoading", "", "Parameter can not be blank."},
                {"txtLoading", "49", "Error #23\r\nPercent loading out of range."},
                {"txtLoading", "101", "Error #23\r\nPercent loading out of range."},
                {"txtCharging", "26", "Error #24\r\nPercent battery charging out of range."},
                {"txtCharging", "9x", "Parameter must numeric."}};
    for (const auto& row : rows) {
        const auto form = NewRated();
        Click(*form, "optOnLine");
        Field(*form, row.field).setText(row.text);  // as pasted, past the key filter
        Click(*form, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, row.message) << row.field;
        EXPECT_EQ(message.title, "ERROR");
        EXPECT_EQ(message.icon, MessageIcon::Stop);
        EXPECT_TRUE(Field(*form, row.field).InError()) << row.field;
        EXPECT_TRUE(Field(*form, row.field).hasFocus()) << row.field;
        EXPECT_TRUE(form->isVisible());
        EXPECT_EQ(Step().NumLoads(), 0);
    }
    EXPECT_FALSE(host.changed);
}

TEST_F(UPSForm, TheRatingIsStoredBeforeTheQuantityAndThatBeforeThePercentages) {
    const auto form = New<frmUPSLoad>();
    Click(*form, "optOnLine");
    const struct {
        const char* field;
        const char* good;
    } rows[] = {{"txtRating", "100"}, {"txtQty", "2"}, {"txtLoading", "90"}, {"txtCharging", "0"}};
    for (const auto& row : rows) {
        Field(*form, row.field).setText("");
    }
    for (const auto& row : rows) {
        Click(*form, "cmdOK");
        EXPECT_EQ(platform.TakeMessage().text, "Parameter can not be blank.");
        EXPECT_TRUE(Field(*form, row.field).hasFocus()) << row.field;
        Type(*form, row.field, row.good);
    }
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CUPSLoad>(), nullptr);
    EXPECT_EQ(Added<CUPSLoad>()->Charging(), 0);
}

TEST_F(UPSForm, FieldsTakeWhatTheyMayHold) {
    const auto form = New<frmUPSLoad>();
    Click(*form, "optOnLine");
    const struct {
        const char* field;
        const char* typed;
        const char* text;
        int beeps;
    } rows[] = {{"txtRating", "0.1-05", "105", 3},
                {"txtLoading", "0x1005", "100", 3},
                {"txtCharging", "0-99", "09", 2}};
    for (const auto& row : rows) {
        platform.beeps = 0;
        Type(*form, row.field, row.typed);
        EXPECT_EQ(TextOf(*form, row.field), row.text);
        EXPECT_EQ(platform.beeps, row.beeps) << row.field;
    }
}

TEST_F(UPSForm, ArrowsStayWithinTheRanges) {
    const auto form = New<frmUPSLoad>();
    Click(*form, "optOnLine");
    const struct {
        const char* field;
        int least;
        int most;
    } rows[] = {{"txtLoading", 50, 100}, {"txtCharging", 0, 25}};
    for (const auto& row : rows) {
        EntryField& field = Field(*form, row.field);
        for (int i = 0; i < 120; ++i) {
            QTest::keyClick(&field, Qt::Key_Up);
        }
        EXPECT_EQ(field.Content(), std::to_string(row.most));
        for (int i = 0; i < 120; ++i) {
            QTest::keyClick(&field, Qt::Key_Down);
        }
        EXPECT_EQ(field.Content(), std::to_string(row.least));
    }
    Type(*form, "txtRating", "1");
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CUPSLoad>(), nullptr);
    EXPECT_EQ(Added<CUPSLoad>()->Loading(), 50);
}

/// A stored UPS as a project file may hold it.
struct Stored {
    std::int32_t family;
    std::int32_t phases;
    std::int32_t inputType;
    bool filter;
};

void Fill(CUPSLoad& load, const Stored& stored) {
    load.name("Server room");
    load.Quantity(3);
    load.Phases(stored.phases);
    load.Family(stored.family);
    load.InputType(stored.inputType);
    load.OutputRating(12345.0);
    load.Loading(65);
    load.Charging(7);
    load.InputFilterInstalled(stored.filter);
}

TEST_F(UPSForm, ShowsAStoredLoad) {
    CUPSLoad load;
    Fill(load, {.family = 1, .phases = 0, .inputType = 3, .filter = true});
    const auto form = Edit<frmUPSLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtRating"), "12.345");
    EXPECT_EQ(TextOf(*form, "txtLoading"), "65");
    EXPECT_EQ(TextOf(*form, "txtCharging"), "7");
    EXPECT_TRUE(IsOn(*form, "optOnLine"));
    EXPECT_EQ(Find<ChoiceBox>(*form, "cboType").currentText(), ">12 pulse");
    EXPECT_TRUE(IsOn(*form, "chkInputFilter"));
    EXPECT_EQ(Enabled(*form), "0ABCFPTI");
    EXPECT_FALSE(Warns(*form));
}

TEST_F(UPSForm, OkAtOnceChangesNothing) {
    for (const std::int32_t family : {0, 1, 2}) {
        for (const std::int32_t phases : {0, 1, 2, 3}) {
            for (const bool filter : {false, true}) {
                for (const std::int32_t inputType : {1, 2, 3, 4}) {
                    // Not here, but below: the fast family on one phase; in a single-phase system the other
                    // families on anything but phase A; input stages that do not go with the phases.
                    if (family == 0 && phases != 0) {
                        continue;
                    }
                    CUPSLoad load;
                    Fill(load, {family, phases, phases == 0 ? inputType : 5, filter});
                    for (const std::int32_t system : {3, 1}) {
                        if (system == 3 || (family == 0 && phases == 0) || phases == 1) {
                            host.phases = system;
                            ExpectOkChangesNothing<frmUPSLoad>(load);
                        }
                    }
                }
            }
        }
    }
}

TEST_F(UPSForm, OkAtOnceMakesWhatTheFormCanShow) {
    const struct {
        std::int32_t system;
        Stored before;
        Stored after;
    } rows[] = {// The fast family exists as a three-phase load only.
                {3, {0, 2, 5, false}, {0, 0, 1, false}},
                {1, {0, 1, 5, true}, {0, 0, 1, true}},
                // The click on the other families selects phase A in a single-phase system.
                {1, {1, 0, 2, false}, {1, 1, 5, false}},
                {1, {1, 3, 5, false}, {1, 1, 5, false}},
                {1, {2, 0, 2, true}, {2, 1, 5, true}},
                {1, {2, 2, 5, false}, {2, 1, 5, false}},
                // A single-phase load has its own input stage, and the list's first stands for a code that it
                // has not.
                {3, {1, 1, 2, false}, {1, 1, 5, false}},
                {3, {1, 0, 5, false}, {1, 0, 1, false}},
                {3, {1, 0, 0, false}, {1, 0, 1, false}},
                // A code of no family gives way to the one that the form opens with.
                {3, {7, 0, 1, false}, {0, 0, 1, false}}};
    for (const auto& row : rows) {
        host.phases = row.system;
        CUPSLoad load;
        Fill(load, row.before);
        CUPSLoad expected;
        Fill(expected, row.after);
        Click(*Edit<frmUPSLoad>(load), "cmdOK");
        EXPECT_EQ(Members(load), Members(expected));
    }
}

TEST_F(UPSForm, AnyClicksStoreALoadThatThereCanBe) {
    std::mt19937 random(20240811);
    const char* buttons[] = {"opt3Phase",      "optPhaseA",  "optPhaseB", "optPhaseC",
                             "optHarborRelay", "optOffLine", "optOnLine", "chkInputFilter"};
    for (std::int32_t round = 0; round < 60; ++round) {
        host.phases = round % 2 == 0 ? 3 : 1;
        const auto form = NewRated();
        for (int i = 0; i < 10; ++i) {
            Click(*form, buttons[random() % 8]);
            Find<ChoiceBox>(*form, "cboType").SelectRow(static_cast<int>(random() % 4));
        }
        const bool warned = Warns(*form);
        Click(*form, "cmdOK");
        ASSERT_EQ(Step().NumLoads(), round + 1);
        const CUPSLoad& load = Last();
        EXPECT_TRUE(load.Family() != ups_family::kFastTransfer || load.Phases() == 0);
        EXPECT_EQ(load.InputType() == input_type::kSinglePhase, load.Phases() != 0);
        EXPECT_EQ(warned, load.Family() != ups_family::kOnLine);
        EXPECT_TRUE(host.phases == 3 || load.Phases() == 1);
    }
}

}  // namespace
}  // namespace genvara
