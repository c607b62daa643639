// A project of another catalogue: what the window says of choices that no list offers, and until when.

#include <QAbstractButton>
#include <QLabel>
#include <QTest>
#include <algorithm>
#include <cmath>

#include "ChoiceBox.h"
#include "NoticeBar.h"
#include "ReportView.h"
#include "WindowFixture.h"
#include "panPwrSys.h"

namespace genvara {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class Notices : public WindowTest {
  protected:
    void SetUp() override {
        Open(Sample("hospital.prj"));  // 480 V, connection 1
        platform.Take();
    }
    /// A project with one load and a site of its own.
    std::filesystem::path Foreign(std::int32_t volts, std::int32_t connection, std::int32_t hertz = 60,
                                  std::int32_t fuel = 1, std::int32_t rise = 3) {
        const auto text = [](std::int32_t number) { return std::to_string(number); };
        WriteBytes(
            folder / "foreign.prj",
            "8,0,0,1\r\n#2026-01-02 03:04:05#,\"\",\"\",#2026-01-02 03:04:05#,\"Foreign\",\"\"\r\n0,25," +
                text(connection) + "," + text(hertz) + "," + text(fuel) +
                ",1\r\n20,#FALSE#,15,#FALSE#\r\n20,3," + text(rise) + "," + text(volts) +
                "\r\n1\r\n\"Step 1\",20\r\n1\r\n1,4,\"Heater\",\"\",1,0\r\n50000,1\r\n");
        return folder / "foreign.prj";
    }
    std::string OpenForeign(std::int32_t volts, std::int32_t connection, std::int32_t hertz = 60,
                            std::int32_t fuel = 1, std::int32_t rise = 3) {
        platform.files = {Foreign(volts, connection, hertz, fuel, rise).string()};
        Run("mnuFileOpen");
        const auto asked = platform.Take();
        return asked.size() == 2U ? asked[1].message.text : "no message";
    }
    std::string Bar1(const char* panel) {
        const auto& bar = Control<NoticeBar>(panel, "fraNotice");
        EXPECT_EQ(bar.isVisibleTo(&Find<QWidget>(Window(), panel)), !bar.Text().isEmpty());
        return bar.Text().toStdString();
    }
    void ExpectBars(const std::string& text) {
        EXPECT_EQ(Bar1("panPwrSys"), text);
        EXPECT_EQ(Bar1("panRecommend"), text);
    }
    ChoiceBox& List(const char* name) { return Control<ChoiceBox>("panPwrSys", name); }

    static constexpr const char* kVoltage =
        "The file of this project came with a voltage of 347 V, which the catalogue does not have: 480 V is "
        "taken in "
        "its place until you choose on the power system panel.";
    static constexpr const char* kConnection =
        "The file of this project came with the connection code 77, which the catalogue does not have: 3 "
        "Phase, Wye, "
        "4 Wire is taken in its place until you choose on the power system panel.";
};

TEST_F(Notices, AKnownSiteNeedsNone) {
    ExpectBars("");
    EXPECT_EQ(OpenForeign(480, 1), "no message");
    ExpectBars("");
}

TEST_F(Notices, OpeningSaysWhatTheFileHoldsAndABarKeepsSayingItUntilTheUserHasChosen) {
    EXPECT_EQ(OpenForeign(347, 1), kVoltage);
    ExpectBars(kVoltage);
    Bar(1);
    EXPECT_EQ(List("cboVolts").currentText(), "480") << "the list keeps its selection";
    Bar(3);
    EXPECT_EQ(App().PowerSystem().Voltage(), 480);
    ExpectBars(kVoltage);
    platform.files = {(folder / "saved.prj").string()};
    Run("mnuFileSaveAs");
    Bar(0);
    ExpectBars(kVoltage);
    Bar(1);
    QTest::keyClick(&List("cboConn"), Qt::Key_Down);
    ExpectBars(kVoltage);
    QTest::keyClick(&List("cboVolts"), Qt::Key_Up);
    ExpectBars("");
    EXPECT_THAT(platform.ends, IsEmpty());
}

TEST_F(Notices, ChoosingWhatIsShownAlreadyIsAChoiceToo) {
    OpenForeign(347, 1);
    Bar(1);
    emit List("cboVolts").activated(List("cboVolts").currentIndex());  // picked from the open list
    ExpectBars("");
    EXPECT_EQ(List("cboVolts").currentText(), "480");
}

TEST_F(Notices, EachChoiceIsNamedAndTakenBackByItself) {
    const std::string both = std::string(kVoltage) + "\n" + kConnection;
    EXPECT_EQ(OpenForeign(347, 77), both);
    ExpectBars(both);
    Bar(1);
    QTest::keyClick(&List("cboVolts"), Qt::Key_Up);
    ExpectBars(kConnection);
    QTest::keyClick(&List("cboConn"), Qt::Key_Down);
    ExpectBars("");
}

TEST_F(Notices, CodesOfTheProgramAreNamedToo) {
    Bar(1);
    QTest::mouseClick(&Control<QAbstractButton>("panPwrSys", "optFreq50"), Qt::LeftButton);
    List("cboAltTempRise").SelectCode(1);
    const std::string text = OpenForeign(480, 1, 55, 9, 8);
    EXPECT_THAT(text, HasSubstr("a frequency of 55 Hz, which the program does not know: 50 Hz is taken"));
    EXPECT_THAT(text, HasSubstr("the fuel code 9, which the program does not know: Any Fuel is taken"));
    EXPECT_THAT(
        text, HasSubstr("the temperature rise code 8, which the program does not know: 105C Prime is taken"));
    Bar(1);
    EXPECT_EQ(App().PowerSystem().Freq(), 50) << "as the notice says";
    EXPECT_EQ(App().PowerSystem().Fuel(), 0);
    EXPECT_EQ(App().PowerSystem().RiseDutyCode(), 1);
    QTest::mouseClick(&Control<QAbstractButton>("panPwrSys", "optFreq60"), Qt::LeftButton);
    QTest::mouseClick(&Control<QAbstractButton>("panPwrSys", "optDiesel"), Qt::LeftButton);
    EXPECT_THAT(Bar1("panPwrSys"), Not(HasSubstr("frequency")));
    EXPECT_THAT(Bar1("panPwrSys"), Not(HasSubstr("fuel")));
    EXPECT_THAT(Bar1("panPwrSys"), HasSubstr("temperature rise"));
    QTest::keyClick(&List("cboAltTempRise"), Qt::Key_Up);
    ExpectBars("");
}

TEST_F(Notices, GoWithTheProject) {
    OpenForeign(347, 77);
    Open(Sample("hospital.prj"));
    ExpectBars("");
    OpenForeign(347, 77);
    Run("mnuFileNew");
    ExpectBars("");
}

TEST_F(Notices, ARefusedFileLeavesThoseOfTheProjectOnScreen) {
    OpenForeign(347, 1);
    WriteBytes(folder / "garbage.prj", "no project");
    Open(folder / "garbage.prj");
    ExpectBars(kVoltage);
}

TEST_F(Notices, DefaultsOfAnotherCatalogueAreToldByTheBarAlone) {
    App().Defaults().VoltageLL(347);
    platform.Take();
    Run("mnuFileNew");
    EXPECT_THAT(platform.Take(), IsEmpty());
    ExpectBars(
        "The defaults of new projects hold a voltage of 347 V, which the catalogue does not have: 480 V is "
        "taken in its place until you choose on the power system panel.");
    App().Defaults().SaveDefaults(App().Registry(), CApplication::BaseRegistrySubkey() + "Defaults");
    Restart();
    EXPECT_THAT(Bar1("panPwrSys"),
                HasSubstr("nothing is shown in its place. Choose on the power system panel."));
}

TEST_F(Notices, CanBeReadInTheColoursOfTheTheme) {
    OpenForeign(347, 1);
    Bar(1);
    const auto& text = Control<QLabel>("panPwrSys", "lblNotice");
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
               0.0722 * linear(colour.blueF());
    };
    const QImage picture = Control<NoticeBar>("panPwrSys", "fraNotice").grab().toImage();
    const QPoint origin = text.mapTo(text.parentWidget(), QPoint());
    double darkest = 1.0;
    double lightest = 0.0;
    for (int y = 0; y < text.height(); ++y) {
        for (int x = 0; x < text.width(); ++x) {
            const double here = luminance(picture.pixelColor(origin + QPoint(x, y)));
            darkest = std::min(darkest, here);
            lightest = std::max(lightest, here);
        }
    }
    EXPECT_GE((lightest + 0.05) / (darkest + 0.05), 4.5);
}

}  // namespace
}  // namespace genvara
