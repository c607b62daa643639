// The power system panel.

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTest>

#include "ChoiceBox.h"
#include "EntryField.h"
#include "RaisedErrorMatcher.h"
#include "StringTable.h"
#include "Texts.h"
#include "UpDown.h"
#include "WindowFixture.h"
#include "panPwrSys.h"

namespace genvara {
namespace {

using testing::ElementsAre;

const QColor kLightRed(0xFF, 0x80, 0x80);

class SitePanel : public WindowTest {
  protected:
    void SetUp() override {
        platform.Take();
        Bar(1);
    }
    panPwrSys& Panel() { return Find<panPwrSys>(Window(), "panPwrSys"); }
    CPwrSys& Site() { return App().PowerSystem(); }
    EntryField& Field(const char* name) { return Control<EntryField>("panPwrSys", name); }
    ChoiceBox& List(const char* name) { return Control<ChoiceBox>("panPwrSys", name); }
    QCheckBox& Tick(const char* name) { return Control<QCheckBox>("panPwrSys", name); }
    QRadioButton& Option(const char* name) { return Control<QRadioButton>("panPwrSys", name); }
    std::string Label(const char* name) {
        return FromQt(WithoutMnemonic(Control<QLabel>("panPwrSys", name).text()));
    }
    std::string Button(const char* name) {
        return FromQt(WithoutMnemonic(Control<QAbstractButton>("panPwrSys", name).text()));
    }

    /// Enters a text and leaves the field by Tab.
    EntryField& Leave(const char* name, const char* text) {
        EntryField& field = Field(name);
        field.setFocus();
        field.setText(text);
        QTest::keyClick(&field, Qt::Key_Tab);
        QCoreApplication::processEvents();
        return field;
    }
    /// Picks the row of a code as the user does, by the keyboard.
    void PickConnection(std::int32_t code) {
        ChoiceBox& list = List("cboConn");
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_Home);
        for (int row = 0; row < list.count() && list.Code() != code; ++row) {
            QTest::keyClick(&list, Qt::Key_Down);
        }
        ASSERT_EQ(list.Code(), code);
    }
    /// The texts of all six fields, so that each is within its range.
    void ShowGoodTexts() {
        Field("txtAltitude").setText("0");
        Field("txtAmbTemp").setText("77");
        Field("txtParallelSets").setText("2");
        Field("txtMaxVoltDip").setText("30");
        Field("txtMaxFreqDip").setText("10");
        Field("txtMaxHarmonics").setText("5");
    }
};

TEST_F(SitePanel, TakesItsCaptionsFromTheStringTable) {
    const std::pair<const char*, int> labels[] = {
        {"lblVolts", 140},    {"lblConn", 141},    {"lblAltRise", 150},      {"lblParallelSets", 151},
        {"lblAltitude", 152}, {"lblAmbTemp", 153}, {"lblEnableVoltDip", 154}};
    for (const auto& [name, id] : labels) {
        EXPECT_EQ(Label(name), StringTable::Text(id)) << name;
    }
    const std::pair<const char*, int> buttons[] = {
        {"chkEnableFreqDip", 155}, {"chkEnableHarm", 156}, {"optDiesel", 145},
        {"optGas", 146},           {"optLP", 147},         {"optGasoline", 148},
        {"optAnyFuel", 149},
    };
    for (const auto& [name, id] : buttons) {
        EXPECT_EQ(Button(name), StringTable::Text(id));
    }
    EXPECT_EQ(Button("optFreq60"), "60 Hz");
    EXPECT_EQ(Button("optFreq50"), "50 Hz");
    EXPECT_EQ(Control<QGroupBox>("panPwrSys", "fraFreq").title(), "Frequency");
    EXPECT_EQ(Control<QGroupBox>("panPwrSys", "fraFuel").title(), "Fuel");
    EXPECT_EQ(Label("lblParallelSetsRange"), "( 1 - 16 )");
}

TEST_F(SitePanel, ListsRisesFromTheHottest) {
    const ChoiceBox& list = List("cboAltTempRise");
    ASSERT_EQ(list.count(), 5);
    for (int row = 0; row < 5; ++row) {
        EXPECT_EQ(list.itemText(row).toStdString(), StringTable::Text(524 - row));
        EXPECT_EQ(list.itemData(row).toInt(), 4 - row);
    }
}

TEST_F(SitePanel, ListsVoltagesAndConnectionsInTheOrderThatItIsGiven) {
    Panel().Voltages({600, 208, 480});
    const ChoiceBox& volts = List("cboVolts");
    EXPECT_THAT((std::vector<QString>{volts.itemText(0), volts.itemText(1), volts.itemText(2)}),
                ElementsAre("600", "208", "480"));
    EXPECT_EQ(volts.count(), 3) << "the former rows are gone";
    Panel().Connections(
        {{.ID = 9, .caption = "Star", .phases = 3}, {.ID = 7, .caption = "Two wires", .phases = 1}});
    EXPECT_EQ(Panel().Phases(), 0) << "nothing is selected";
    Panel().ConnectionCode(7);
    EXPECT_EQ(List("cboConn").currentText(), "Two wires");
    EXPECT_EQ(Panel().Phases(), 1);
    Panel().ConnectionCode(9);
    EXPECT_EQ(Panel().Phases(), 3);
    EXPECT_EQ(Panel().ConnectionCode(), 9);
}

TEST_F(SitePanel, ShowsTheCatalogue) {
    GensetDatabase catalogue(App().DatabaseFile());
    const auto volts = catalogue.VoltagesLL();
    const auto connections = catalogue.Connections();
    ASSERT_EQ(static_cast<std::size_t>(List("cboVolts").count()), volts.size());
    ASSERT_EQ(static_cast<std::size_t>(List("cboConn").count()), connections.size());
    EXPECT_GT(connections.size(), 1U);
    for (std::size_t row = 0; row < connections.size(); ++row) {
        Panel().ConnectionCode(connections[row].ID);
        EXPECT_EQ(List("cboConn").currentText().toStdString(), connections[row].caption);
        EXPECT_EQ(Panel().Phases(), connections[row].phases);
    }
}

TEST_F(SitePanel, AValueThatNoRowHasLeavesTheSelection) {
    Panel().Voltage(208);
    Panel().Voltage(481);
    EXPECT_EQ(Panel().Voltage(), 208);
    Panel().ConnectionCode(2);
    Panel().ConnectionCode(77);
    EXPECT_EQ(Panel().ConnectionCode(), 2);
    Panel().RiseDuty(0);
    Panel().RiseDuty(5);
    EXPECT_EQ(Panel().RiseDuty(), 0);
}

TEST_F(SitePanel, AFrequencyThatIsNotOfferedSelectsNoneAndReadsAsFifty) {
    Panel().Freq(60);
    EXPECT_TRUE(Option("optFreq60").isChecked());
    Panel().Freq(55);
    EXPECT_FALSE(Option("optFreq60").isChecked());
    EXPECT_FALSE(Option("optFreq50").isChecked());
    EXPECT_EQ(Panel().Freq(), 50);
    Panel().Freq(50);
    EXPECT_TRUE(Option("optFreq50").isChecked());
    EXPECT_EQ(Panel().Freq(), 50);
}

TEST_F(SitePanel, AFuelThatIsNotOfferedSelectsNoneAndReadsAsAny) {
    const std::pair<const char*, int> fuels[] = {
        {"optDiesel", 1}, {"optGas", 2}, {"optLP", 3}, {"optGasoline", 4}, {"optAnyFuel", 0}};
    for (const auto& [name, code] : fuels) {
        Panel().Fuel(code);
        EXPECT_TRUE(Option(name).isChecked()) << name;
        EXPECT_EQ(Panel().Fuel(), code);
    }
    Panel().Fuel(9);
    for (const auto& [name, code] : fuels) {
        EXPECT_FALSE(Option(name).isChecked()) << name;
    }
    EXPECT_EQ(Panel().Fuel(), 0);
}

TEST_F(SitePanel, ConvertsWhatItShowsAndBack) {
    EXPECT_EQ(Label("lblAltitudeUnits"), "feet");
    EXPECT_EQ(Label("lblAmbTempUnits"), "F");
    Panel().MetricUnits(true);
    EXPECT_EQ(Label("lblAltitudeUnits"), "meters");
    EXPECT_EQ(Label("lblAmbTempUnits"), "C");
    Panel().Altitude(100.0);
    Panel().AmbTemp(25.04);
    EXPECT_EQ(Field("txtAmbTemp").text(), "25");
    Panel().MetricUnits(false);
    EXPECT_EQ(Field("txtAltitude").text(), "328.1");  // 100 m x 3.28084 = 328.084 ft
    EXPECT_EQ(Field("txtAmbTemp").text(), "77");      // 9 / 5 x 25 + 32
    Panel().MetricUnits(false);
    EXPECT_EQ(Field("txtAltitude").text(), "328.1") << "the same units again";
    Panel().MetricUnits(true);
    EXPECT_EQ(Field("txtAltitude").text(), "100");  // 328.1 ft x 0.3048 = 100.005 m
    EXPECT_EQ(Field("txtAmbTemp").text(), "25");
}

TEST_F(SitePanel, ShowsValuesInItsUnitsToOneDecimal) {
    Panel().Altitude(152.4);
    Panel().AmbTemp(21.1111111111);
    EXPECT_EQ(Field("txtAltitude").text(), "500");
    EXPECT_EQ(Field("txtAmbTemp").text(), "70");
    Panel().MetricUnits(true);
    Panel().Altitude(152.46);
    Panel().AmbTemp(-3.25);
    EXPECT_EQ(Field("txtAltitude").text(), "152.5");
    EXPECT_EQ(Field("txtAmbTemp").text(), "-3.3") << "half away from zero";
    EXPECT_EQ(Panel().Altitude(), 152.5);
    EXPECT_EQ(Panel().AmbTemp(), -3.3);
}

TEST_F(SitePanel, ATextThatCannotBeConvertedBecomesEmpty) {
    Field("txtAltitude").setText("a lot");
    Field("txtAmbTemp").setText("77");
    Panel().MetricUnits(true);
    EXPECT_EQ(Field("txtAltitude").text(), "");
    EXPECT_EQ(Field("txtAmbTemp").text(), "25");
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(SitePanel, StartsInTheUnitsOfTheOptions) {
    App().IsMetric(true);
    Restart();
    EXPECT_EQ(Label("lblAltitudeUnits"), "meters");
    EXPECT_EQ(Field("txtAltitude").text(), "152.4");
}

/// A field with texts that it refuses and one that it takes, with what that makes of the record. English
/// units.
struct Checked {
    const char* field;
    const char* complaint;
    const char* wanted;  ///< end of the sentence beside the field
    std::vector<const char*> refused;
    const char* taken;
    double stored;
    double (*of)(const CPwrSys& site);
};

const Checked kChecked[] = {
    // 15001 ft x 0.3048 = 4572.3 m, -1641 ft = -500.2 m; 15000 ft = 4572 m
    {"txtAltitude",
     "Invalid altitude entered",
     "Enter -1640.4 to 15000 feet.",
     {"a lot", "15001", "-1641", "1 2"},
     " 15000 ",
     4572.0,
     [](const CPwrSys& site) { return site.Altitude(); }},
    // 150.9 F = 66.06 C, -41 F = -40.6 C; 150.8 F = 66 C
    {"txtAmbTemp",
     "Invalid ambient temperature entered",
     "Enter -40 to 150.8 F.",
     {"hot", "150.9", "-41"},
     "150.8",
     66.0,
     [](const CPwrSys& site) { return site.AmbTemp(); }},
    {"txtMaxFreqDip",
     "Invalid frequecy dip entered",
     "Enter 5 to 25 %.",
     {"4", "26", "20.5", "x"},
     "25",
     25.0,
     [](const CPwrSys& site) { return static_cast<double>(site.MaxFreqDip()); }},
    {"txtMaxHarmonics",
     "Invalid harmonic limit entered",
     "Enter 5 to 20 %.",
     {"4", "21", "7.00001", "x"},
     " 20",
     20.0,
     [](const CPwrSys& site) { return static_cast<double>(site.MaxHarmonics()); }},
    {"txtMaxVoltDip",
     "Invalid voltage dip entered",
     "Enter 5 to 35 %.",
     {"4", "36", "20.5", "99999999999"},
     "34.9999995",
     35.0,
     [](const CPwrSys& site) { return static_cast<double>(site.MaxVoltageDip()); }},
    {"txtParallelSets",
     "Invalid number of gensets entered",
     "Enter 1 to 16.",
     {"0", "17", "1.5", "-1", "two"},
     "16",
     16.0,
     [](const CPwrSys& site) { return static_cast<double>(site.GensetsInParallel()); }},
};

TEST_F(SitePanel, ABadTextKeepsTheFocusUntilItIsRight) {
    Tick("chkEnableFreqDip").setChecked(true);
    Tick("chkEnableHarm").setChecked(true);
    for (const Checked& row : kChecked) {
        SCOPED_TRACE(row.field);
        const double before = row.of(Site());
        for (const char* text : row.refused) {
            SCOPED_TRACE(text);
            platform.beeps = 0;
            const EntryField& field = Leave(row.field, text);
            const Message message = platform.TakeMessage();
            EXPECT_EQ(message.text, row.complaint);
            EXPECT_EQ(message.icon, MessageIcon::Stop);
            EXPECT_EQ(message.title, "ERROR");
            EXPECT_EQ(platform.beeps, 1);
            EXPECT_TRUE(field.hasFocus());
            EXPECT_EQ(field.palette().color(QPalette::Base), kLightRed);
            EXPECT_TRUE(field.statusTip().endsWith(row.wanted)) << field.statusTip().toStdString();
            EXPECT_EQ(row.of(Site()), before) << "a refused value leaves the record";
        }
        const EntryField& field = Leave(row.field, row.taken);
        EXPECT_TRUE(platform.Take().empty());
        EXPECT_FALSE(field.hasFocus());
        EXPECT_NE(field.palette().color(QPalette::Base), kLightRed);
        EXPECT_EQ(field.text(), QString(row.taken).trimmed());
        EXPECT_EQ(row.of(Site()), row.stored);
    }
}

TEST_F(SitePanel, ChecksMetricTextsAsTheyStand) {
    Panel().MetricUnits(true);
    EXPECT_EQ(Leave("txtAltitude", "5000").palette().color(QPalette::Base), kLightRed);
    EXPECT_EQ(platform.TakeMessage().text, "Invalid altitude entered");
    Leave("txtAltitude", "4572");
    Leave("txtAmbTemp", "-40");
    EXPECT_TRUE(platform.Take().empty());
    EXPECT_EQ(Site().Altitude(), 4572.0);
    EXPECT_EQ(Site().AmbTemp(), -40.0);
}

TEST_F(SitePanel, ABadTextHoldsTheMouseToo) {
    EntryField& dip = Field("txtMaxVoltDip");
    dip.setFocus();
    dip.setText("20.5");
    QTest::mouseClick(&Field("txtAltitude"), Qt::LeftButton);
    EXPECT_TRUE(dip.hasFocus());
    EXPECT_EQ(platform.TakeMessage().text, "Invalid voltage dip entered");
    dip.setText("20");
    QTest::mouseClick(&Field("txtAltitude"), Qt::LeftButton);
    EXPECT_TRUE(Field("txtAltitude").hasFocus());
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(SitePanel, ABadTextHoldsTheSideBar) {
    EntryField& altitude = Field("txtAltitude");
    altitude.setFocus();
    altitude.setText("a lot");
    Bar(0);
    QCoreApplication::processEvents();
    EXPECT_EQ(ShownPanel(), "panPwrSys");
    EXPECT_TRUE(altitude.hasFocus());
    EXPECT_EQ(platform.TakeMessage().text, "Invalid altitude entered");
    EXPECT_TRUE(platform.ends.empty()) << "nothing may be stored";
    altitude.setText("10");
    Bar(0);
    EXPECT_EQ(ShownPanel(), "panProject");
}

TEST_F(SitePanel, AnEmptyTextBecomesItsFieldsOwnValue) {
    EXPECT_EQ(Leave("txtAltitude", "  ").text(), "0");
    EXPECT_EQ(Leave("txtAmbTemp", "").text(), "0");
    EXPECT_EQ(Leave("txtParallelSets", " ").text(), "1");
    EXPECT_EQ(Site().Altitude(), 0.0);
    EXPECT_NEAR(Site().AmbTemp(), -17.7777777777778, 1e-12);  // (0 - 32) x 5 / 9
    EXPECT_EQ(Site().GensetsInParallel(), 1);
    EXPECT_TRUE(platform.Take().empty());
}

TEST_F(SitePanel, AnEmptyLimitPassesAndLeavesTheRecord) {
    Tick("chkEnableFreqDip").setChecked(true);
    Tick("chkEnableHarm").setChecked(true);
    for (const char* name : {"txtMaxVoltDip", "txtMaxFreqDip", "txtMaxHarmonics"}) {
        EXPECT_EQ(Leave(name, " ").text(), "") << name;
        EXPECT_FALSE(Field(name).hasFocus()) << name;
    }
    EXPECT_TRUE(platform.Take().empty());
    EXPECT_EQ(Site().MaxVoltageDip(), 20);
    EXPECT_EQ(Site().MaxFreqDip(), 20);
    EXPECT_EQ(Site().MaxHarmonics(), 15);
    // A cleared limit reads as 0 where the panel is stored.
    EXPECT_THAT([this] { Panel().Store(Site()); },
                Raises(12, "panPwrSys::Store", "Invalid maximum frequency dip"));
}

TEST_F(SitePanel, LimitsTakeDigitsAlone) {
    for (const char* name : {"txtMaxVoltDip", "txtMaxFreqDip", "txtMaxHarmonics"}) {
        Tick("chkEnableFreqDip").setChecked(true);
        Tick("chkEnableHarm").setChecked(true);
        EntryField& field = Field(name);
        field.clear();
        platform.beeps = 0;
        QTest::keyClicks(&field, "1a.-5");
        EXPECT_EQ(field.text(), "15") << name;
        EXPECT_EQ(platform.beeps, 3) << name;
        QTest::keyClick(&field, Qt::Key_Backspace);
        EXPECT_EQ(field.text(), "1") << name;
    }
    EntryField& altitude = Field("txtAltitude");
    altitude.clear();
    QTest::keyClicks(&altitude, "-12.5");
    EXPECT_EQ(altitude.text(), "-12.5") << "a signed field has no filter";
}

TEST_F(SitePanel, ArrowsStayWithinTheirBounds) {
    Tick("chkEnableFreqDip").setChecked(true);
    Tick("chkEnableHarm").setChecked(true);
    struct Bounds {
        const char* field;
        int least;
        int most;
    };
    for (const Bounds& row : {Bounds{"txtParallelSets", 1, 16}, Bounds{"txtMaxVoltDip", 5, 35},
                              Bounds{"txtMaxFreqDip", 5, 25}, Bounds{"txtMaxHarmonics", 5, 20}}) {
        EntryField& field = Field(row.field);
        for (int press = 0; press < 20; ++press) {
            QTest::keyClick(&field, Qt::Key_Up);
        }
        EXPECT_EQ(field.text().toInt(), row.most) << row.field;
        for (int press = 0; press < 20; ++press) {
            QTest::keyClick(&field, Qt::Key_Down);
        }
        EXPECT_EQ(field.text().toInt(), row.least) << row.field;
    }
}

TEST_F(SitePanel, SaysBesideTheLimitThatAConnectionHasNoDistortionFigures) {
    auto& note = Control<QLabel>("panPwrSys", "lblNoDistortion");
    EXPECT_EQ(note.text().toStdString(), "no distortion figures for this connection");
    for (std::int32_t code = 1; code <= 6; ++code) {
        PickConnection(code);
        EXPECT_EQ(note.isVisibleTo(&Panel()), code > 2) << code;
    }
    PickConnection(1);
    EXPECT_FALSE(note.isVisibleTo(&Panel()));
}

TEST_F(SitePanel, ConnectionsWithoutDistortionFiguresTakeNoHarmonicLimit) {
    for (const std::int32_t code : {3, 6}) {
        PickConnection(1);
        Tick("chkEnableHarm").setChecked(true);
        EXPECT_TRUE(Site().MaxHarmonicsEnabled()) << "at once";
        EXPECT_TRUE(Field("txtMaxHarmonics").isEnabled());
        PickConnection(code);
        EXPECT_FALSE(Tick("chkEnableHarm").isChecked());
        EXPECT_FALSE(Tick("chkEnableHarm").isEnabled());
        EXPECT_FALSE(Field("txtMaxHarmonics").isEnabled());
        EXPECT_FALSE(Control<UpDown>("panPwrSys", "updMaxHarmonics").isEnabled());
        Bar(1);  // stores
        EXPECT_FALSE(Site().MaxHarmonicsEnabled());
        EXPECT_EQ(Site().ConnectCode(), code);
        PickConnection(2);
        EXPECT_TRUE(Tick("chkEnableHarm").isEnabled());
        EXPECT_FALSE(Tick("chkEnableHarm").isChecked());
        EXPECT_FALSE(Field("txtMaxHarmonics").isEnabled());
    }
}

TEST_F(SitePanel, ATickEnablesItsFieldAndIsStoredAtOnce) {
    struct Limit {
        const char* tick;
        const char* field;
        const char* arrows;
        bool (*of)(const CPwrSys& site);
    };
    const Limit limits[] = {{"chkEnableFreqDip", "txtMaxFreqDip", "updMaxFreqDip",
                             [](const CPwrSys& site) { return site.MaxFreqDipEnabled(); }},
                            {"chkEnableHarm", "txtMaxHarmonics", "updMaxHarmonics",
                             [](const CPwrSys& site) { return site.MaxHarmonicsEnabled(); }}};
    for (const Limit& limit : limits) {
        for (const bool on : {true, false, true}) {
            Tick(limit.tick).click();
            EXPECT_EQ(Tick(limit.tick).isChecked(), on);
            EXPECT_EQ(Field(limit.field).isEnabled(), on) << limit.field;
            EXPECT_EQ(Control<UpDown>("panPwrSys", limit.arrows).isEnabled(), on) << limit.field;
            EXPECT_EQ(limit.of(Site()), on) << limit.field;
        }
    }
}

TEST_F(SitePanel, StoresInSI) {
    ShowGoodTexts();
    Field("txtAltitude").setText("328.1");
    Field("txtAmbTemp").setText("150.8");
    Panel().Voltage(600);
    Panel().ConnectionCode(5);
    Panel().Freq(50);
    Panel().Fuel(3);
    Panel().RiseDuty(1);
    Panel().MaxFreqDipEnabled(true);
    Panel().MaxHarmonicsEnabled(true);
    Panel().Store(Site());
    EXPECT_NEAR(Site().Altitude(), 100.00488, 1e-9);  // 328.1 ft x 0.3048
    EXPECT_EQ(Site().AmbTemp(), 66.0) << "the end of the range, from either side";
    EXPECT_EQ(Site().GensetsInParallel(), 2);
    EXPECT_EQ(Site().MaxVoltageDip(), 30);
    EXPECT_EQ(Site().MaxFreqDip(), 10);
    EXPECT_EQ(Site().MaxHarmonics(), 5);
    EXPECT_EQ(Site().Voltage(), 600);
    EXPECT_EQ(Site().ConnectCode(), 5);
    EXPECT_EQ(Site().Phases(), 1);
    EXPECT_EQ(Site().Freq(), 50);
    EXPECT_EQ(Site().Fuel(), 3);
    EXPECT_EQ(Site().RiseDutyCode(), 1);
    EXPECT_TRUE(Site().MaxFreqDipEnabled());
    EXPECT_TRUE(Site().MaxHarmonicsEnabled());
    Panel().MetricUnits(true);
    Field("txtAltitude").setText("-500");
    Field("txtAmbTemp").setText("21.7");
    Panel().Store(Site());
    EXPECT_EQ(Site().Altitude(), -500.0);
    EXPECT_EQ(Site().AmbTemp(), 21.7);
}

TEST_F(SitePanel, StoresInItsOrderUpToTheFirstFailure) {
    ShowGoodTexts();
    struct Step {
        const char* field;
        const char* good;
        int number;
        const char* description;
    };
    const Step steps[] = {{"txtAltitude", "1", 3, "Invalid altitude"},
                          {"txtAmbTemp", "50", 4, "Invalid ambient temperature"},
                          {"txtParallelSets", "3", 6, "Invalid number of parallel sets"},
                          {"txtMaxFreqDip", "6", 12, "Invalid maximum frequency dip"},
                          {"txtMaxHarmonics", "7", 10, "Invalid maximum harmonics"},
                          {"txtMaxVoltDip", "8", 11, "Invalid maximum voltage dip"}};
    for (const Step& step : steps) {
        Field(step.field).setText("99999");
    }
    Panel().Voltage(600);
    Panel().Freq(50);
    Panel().Fuel(2);
    for (const Step& step : steps) {
        EXPECT_THAT([this] { Panel().Store(Site()); },
                    Raises(step.number, "panPwrSys::Store", step.description));
        Field(step.field).setText(step.good);
    }
    EXPECT_EQ(Site().Freq(), 50) << "frequency and fuel come before the sets";
    EXPECT_EQ(Site().Fuel(), 2);
    EXPECT_EQ(Site().MaxHarmonics(), 7) << "the limits before the last one are there";
    EXPECT_EQ(Site().Voltage(), 480) << "the voltage comes behind the limits";
    Panel().Store(Site());
    EXPECT_EQ(Site().Voltage(), 600);
}

TEST_F(SitePanel, ATextThatIsNoNumberFailsToStore) {
    Field("txtAltitude").setText("a lot");
    EXPECT_THAT([this] { Panel().Store(Site()); }, Raises(13, "panPwrSys::Store", "Type mismatch"));
}

TEST_F(SitePanel, TheHottestSiteSurvivesAVisitInEitherUnit) {
    Site().AmbTemp(66.0);
    Site().Altitude(4572.0);
    for (const bool metric : {false, true}) {
        Site().Display(Panel(), metric);
        Bar(2);
        Bar(1);
        EXPECT_TRUE(platform.ends.empty());
        EXPECT_EQ(Site().AmbTemp(), 66.0);
        EXPECT_EQ(Site().Altitude(), 4572.0);
    }
}

TEST_F(SitePanel, TellsWhichControlIsActive) {
    Field("txtAmbTemp").setFocus();
    EXPECT_EQ(Panel().ActiveCtrl(), &Field("txtAmbTemp"));
}

TEST_F(SitePanel, TabGoesThroughTheSiteAndThenTheLimits) {
    Tick("chkEnableFreqDip").setChecked(true);
    Tick("chkEnableHarm").setChecked(true);
    Panel().Freq(60);
    Panel().Fuel(1);
    std::vector<std::string> order;
    List("cboVolts").setFocus();
    while (order.size() < 13 && Panel().isAncestorOf(QApplication::focusWidget())) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_THAT(order, ElementsAre("cboVolts", "cboConn", "optFreq60", "optDiesel", "cboAltTempRise",
                                   "txtParallelSets", "txtAltitude", "txtAmbTemp", "txtMaxVoltDip",
                                   "chkEnableFreqDip", "txtMaxFreqDip", "chkEnableHarm", "txtMaxHarmonics"));
}

TEST_F(SitePanel, EveryControlFitsTheWindow) {
    for (const QSize& size : {QSize(1280, 800), QSize(800, 567)}) {
        Window().resize(size);
        QCoreApplication::processEvents();
        for (const QWidget* control : Panel().findChildren<QWidget*>()) {
            if (control->isVisible() && !control->objectName().isEmpty()) {
                const QRect place(control->mapTo(&Panel(), QPoint(0, 0)), control->size());
                EXPECT_TRUE(Panel().rect().contains(place)) << control->objectName().toStdString();
            }
        }
    }
    // Half a screen of 1920 by 1080, or all of it at 200 percent, beside the side bar.
    EXPECT_LE(Panel().minimumSizeHint().width(), 960 - 110);
    EXPECT_LE(Panel().minimumSizeHint().height(), 440);
}

}  // namespace
}  // namespace genvara
