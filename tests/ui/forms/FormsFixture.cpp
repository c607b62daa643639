#include "FormsFixture.h"

#include <fmt/format.h>

#include <QTest>
#include <stdexcept>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LastChance.h"
#include "NumberText.h"
#include "SmallCatalogue.h"

namespace genvara {
namespace {

/// Motors that run at 0.8 kW and 1 kVA a horsepower and start at 0.4.
void BuildDatabase(const TemporaryFolder& folder) {
    BuildSmallCatalogue(
        folder,
        {{"Motor Code Letters", "CodeLetter,LRkVAPerHP\nA,3\nF,5.3\nG,6\nH,7\nJ,8\nK,9\nL,10\nM,11\n"},
         {"Motor Starting Multiplier", "Multiplier\n1\n0.64\n0.4225\n0.7\n0.33\n0.33\n"},
         {"Motor Power Conversions",
          "HP,RunningKW,RunningKVA,SPF\n1,0.8,1,0.4\n10,8,10,0.4\n1000,800,1000,0.4\n"}});
}

std::string Cell(double value) {
    return RenderPlain(value);
}
std::string Cell(const auto& value) {
    return fmt::format("{}", value);
}
std::string Row(const auto&... values) {
    std::string row;
    ((row += Cell(values) + " "), ...);
    return row;
}

std::string KindMembers(const CMiscLoad& load) {
    return Row(load.RunningRealPower(), load.RunningPowerFactor());
}
std::string KindMembers(const CMtrLoad& load) {
    return Row(load.StartsLoaded(), load.StartingMethod(), load.CodeLetter(), load.FirePump(),
               load.DataEntryMethod(), load.HP(), load.RunningRealPower(), load.RunningAppPower(),
               load.RunningAmps(), load.StartingAmps(), load.StartingAppPower(), load.StartingPF(),
               load.SolidStateCurrentLimit());
}
std::string KindMembers(const CLightLoad& load) {
    return Row(load.LightType(), load.Ballast(), load.RunningRealPower(), load.RunningPowerFactor(),
               load.StartingRealPower(), load.StartingPowerFactor());
}
std::string KindMembers(const CMedEquipLoad& load) {
    return Row(load.MaxPeakDemandVoltDip(), load.PeakPowerFactor(), load.ContPowerFactor(), load.PeakVA(),
               load.ContVA(), load.InputType());
}
std::string KindMembers(const CAirCondLoad& load) {
    return Row(load.DataEntryMethod(), load.BTU(), load.Tonnage(), load.HP(), load.RunningRealPower(),
               load.RunningAppPower(), load.StartingAppPower(), load.StartingPF());
}
std::string KindMembers(const CUPSLoad& load) {
    return Row(load.Family(), load.InputType(), load.OutputRating(), load.Loading(), load.Charging(),
               load.InputFilterInstalled());
}
std::string KindMembers(const CVFDLoad& load) {
    return Row(load.InputType(), load.MtrRating(), load.Efficiency(), load.KVALimit(),
               load.InputFilterInstalled());
}
std::string KindMembers(const CBatChrgLoad& load) {
    return Row(load.ChargerType(), load.ChargerInput(), load.BatteryVoltage(), load.ChargeCurrent());
}
std::string KindMembers(const COfficeLoad& load) {
    return Row(load.NumPCs(), load.NumPrinters(), load.NumFaxes(), load.NumCopiers());
}

template <typename... Kinds>
std::string MembersOfKind(const Load& load) {
    std::string members;
    const auto add = [&](const auto* kind) {
        if (kind != nullptr) {
            members = KindMembers(*kind);
        }
    };
    (add(dynamic_cast<const Kinds*>(&load)), ...);
    EXPECT_FALSE(members.empty()) << "of a kind that is not compared";
    return members;
}

}  // namespace

FormsTest::FormsTest() {
    BuildDatabase(folder);
    m_application = std::make_unique<CApplication>(
        StartConditions{.programFolder = folder.Path(), .settingsFile = folder / "settings.json"});
    EXPECT_TRUE(m_application->Run([](CApplication& started) { started.LoadMotorConversions(); }));
    App().LoadProfile().AddLoadStep("first", 20, 0);
    App().LoadProfile().AddLoadStep("second", 20, 0);
    SetLastChance(platform, [] { return std::filesystem::path(); });
}

FormsTest::~FormsTest() {
    EXPECT_TRUE(platform.ends.empty()) << platform.ends.front().Description();
    ClearLastChance();
}

CLoadStep& FormsTest::Step(std::int32_t number) const {
    return App().LoadProfile().LoadStep(number);
}

EntryField& Field(const QWidget& form, const char* name) {
    return Find<EntryField>(form, name);
}

std::string TextOf(const QWidget& form, const char* name) {
    return Field(form, name).Content();
}

void Type(const QWidget& form, const char* name, const char* text) {
    EntryField& field = Field(form, name);
    field.SelectAllText();
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClicks(&field, text);
}

void Click(const QWidget& form, const char* name) {
    Find<QAbstractButton>(form, name).click();
}

bool IsOn(const QWidget& form, const char* name) {
    return Find<QAbstractButton>(form, name).isChecked();
}

bool IsEnabled(const QWidget& form, const char* name) {
    return Find<QWidget>(form, name).isEnabled();
}

std::string Members(const Load& load) {
    return fmt::format("{}|{}|{}|{}|{}|{}", load.ID(), load.name(), load.Description(), load.Quantity(),
                       load.Phases(),
                       MembersOfKind<CAirCondLoad, CBatChrgLoad, CLightLoad, CMedEquipLoad, CMiscLoad,
                                     CMtrLoad, COfficeLoad, CUPSLoad, CVFDLoad>(load));
}

}  // namespace genvara
