#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "ProjectFile.h"
#include "RaisedError.h"

// What a const record gives away, and what a copy shares with what it was made of.

namespace genvara {
namespace {

template <typename Object>
using ElementOf = decltype(*std::declval<Object&>().begin());

static_assert(std::is_same_v<ElementOf<const CLoadProfile>, const CLoadStep&>);
static_assert(std::is_same_v<ElementOf<CLoadProfile>, CLoadStep&>);
static_assert(std::is_same_v<ElementOf<const CLoadStep>, const Load&>);
static_assert(std::is_same_v<ElementOf<CLoadStep>, Load&>);
static_assert(std::is_same_v<decltype(std::declval<const CLoadProfile&>().LoadStep(1)), const CLoadStep&>);
static_assert(
    std::is_same_v<decltype(std::declval<const CLoadProfile&>().LoadStepByID(1)), const CLoadStep*>);
static_assert(std::is_same_v<decltype(std::declval<const CLoadStep&>().LoadItem(1)), const Load*>);
static_assert(std::bidirectional_iterator<CLoadStep::Loads::const_iterator>);

const MotorConversions kMotors{.MotorHP = {1, 1000},
                               .MotorRunningKW = {0.8, 800},
                               .MotorRunningKVA = {1, 1000},
                               .MotorStartPF = {0.4, 0.4}};

/// Gives a load what all kinds have.
template <typename Kind>
std::unique_ptr<Kind> Named(std::unique_ptr<Kind> load, std::string name) {
    load->name(std::move(name));
    load->Description("behind the tank");
    load->Quantity(3);
    load->Phases(2);
    return load;
}

/// A load of each kind, no value of which is that of a new load or of another of its values.
void AddAllKinds(CLoadStep& step) {
    auto aircond = Named(std::make_unique<CAirCondLoad>(), "A");
    aircond->DataEntryMethod(aircond_entry::kTonnage);
    aircond->Tonnage(5.5);
    aircond->RunningRealPower(9000);
    aircond->RunningAppPower(10000);
    aircond->StartingAppPower(65000);
    aircond->StartingPF(0.45);
    step.AddLoad(std::move(aircond));
    auto charger = Named(std::make_unique<CBatChrgLoad>(), "B");
    charger->ChargerType(charger_type::kTelecom);
    charger->ChargerInput(charger_input::kSCR);
    charger->BatteryVoltage(48);
    charger->ChargeCurrent(100);
    step.AddLoad(std::move(charger));
    auto light = Named(std::make_unique<CLightLoad>(), "C");
    light->LightType(light_type::kHID);
    light->Ballast(ballast::kHighEffMagnetic);
    light->RunningRealPower(4000);
    light->RunningPowerFactor(0.9);
    light->StartingRealPower(5000);
    light->StartingPowerFactor(0.8);
    step.AddLoad(std::move(light));
    auto medical = Named(std::make_unique<CMedEquipLoad>(), "D");
    medical->MaxPeakDemandVoltDip(7);
    medical->PeakPowerFactor(0.8);
    medical->ContPowerFactor(0.7);
    medical->PeakVA(80000);
    medical->ContVA(8000);
    medical->InputType(2);
    step.AddLoad(std::move(medical));
    auto misc = Named(std::make_unique<CMiscLoad>(), "E");
    misc->RunningRealPower(1234.5);
    misc->RunningPowerFactor(0.85);
    step.AddLoad(std::move(misc));
    auto motor = Named(std::make_unique<CMtrLoad>(), "F");
    motor->DataEntryMethod(motor_entry::kAmps);
    motor->StartsLoaded(false);
    motor->StartingMethod(starting_method::kSolidState);
    motor->CodeLetter("G");
    motor->FirePump(true);
    motor->RunningAmps(60);
    motor->StartingAmps(350);
    motor->RunningRealPower(40000);
    motor->RunningAppPower(50000);
    motor->StartingAppPower(250000);
    motor->StartingPF(0.3);
    motor->SolidStateCurrentLimit(400);
    step.AddLoad(std::move(motor));
    auto office = Named(std::make_unique<COfficeLoad>(), "G");
    office->NumPCs(4);
    office->NumPrinters(5);
    office->NumFaxes(6);
    office->NumCopiers(7);
    step.AddLoad(std::move(office));
    auto ups = Named(std::make_unique<CUPSLoad>(), "H");
    ups->Family(ups_family::kOnLine);
    ups->InputType(input_type::kTwelvePulse);
    ups->OutputRating(70000);
    ups->Loading(75);
    ups->Charging(15);
    ups->InputFilterInstalled(true);
    step.AddLoad(std::move(ups));
    auto drive = Named(std::make_unique<CVFDLoad>(kMotors), "I");
    drive->InputType(input_type::kSixPulse);
    drive->MtrRating(30);
    drive->Efficiency(92);
    drive->KVALimit(110);
    drive->InputFilterInstalled(true);
    step.AddLoad(std::move(drive));
}

/// Everything of a load that anyone can see.
std::vector<std::string> Shown(const Load& load) {
    std::vector<std::string> shown = load.GetProps();
    shown.push_back(load.Summary());
    shown.push_back(load.Description());
    for (const double power : {load.RunningRealPower(), load.RunningAppPower(), load.StartingRealPower(),
                               load.StartingAppPower(), load.SinglePhaseRectPower(2)}) {
        shown.push_back(std::to_string(power));
    }
    return shown;
}

struct Records {
    CDefaults defaults;
    CProject project{defaults, [] { return DateTime{2026, 11, 21, 1, 2, 3}; }};
    CPwrSys site{defaults};
    CLoadProfile profile;

    [[nodiscard]] std::string Text() const {
        return RenderProject({project, site, profile}, {8, 0, 0}, DateTime{}).bytes;
    }
};

TEST(Copies, OfLoadsHoldTheSameAndAreLoadsOfTheirOwn) {
    CLoadStep step;
    AddAllKinds(step);
    for (Load& load : step) {
        SCOPED_TRACE(load.name());
        load.ID(load.LoadType() + 100);
        const std::unique_ptr<Load> copy = load.Clone();
        EXPECT_EQ(copy->LoadType(), load.LoadType());
        EXPECT_EQ(copy->ID(), load.LoadType() + 100);
        EXPECT_EQ(Shown(*copy), Shown(load));
        copy->name("changed");
        copy->Quantity(200);
        EXPECT_NE(load.name(), "changed");
        EXPECT_EQ(load.Quantity(), 3);
    }
}

TEST(Copies, OfAProfileKeepIDsAndCounters) {
    Records records;
    CLoadProfile& profile = records.profile;
    profile.AddLoadStep("gone", 20, 0);
    profile.AddLoadStep("kept", 25, 0);
    profile.AddLoadStep("moved", 30, 0);
    profile.DeleteLoadStep(0);
    profile.LowerLoadStep(2);
    AddAllKinds(profile.LoadStep(1));
    profile.LoadStep(1).DeleteLoad(8);
    profile.LoadStep(1).DeleteLoad(0);

    const std::string before = records.Text();
    CLoadProfile copy = profile;
    EXPECT_EQ(copy.NumLoadSteps(), 2);
    EXPECT_EQ(copy.LoadStep(1).StepID(), 2);
    EXPECT_EQ(copy.LoadStep(1).Description(), "moved");
    EXPECT_EQ(copy.LoadStep(1).MaxVoltageDipOverride(), 30);
    EXPECT_EQ(copy.LoadStep(2).StepID(), 1);
    EXPECT_EQ(copy.LoadStep(1).begin()->ID(), 1);
    EXPECT_EQ(copy.LoadStep(1).LoadItem(7)->name(), "H");
    // Both go on counting from the same number.
    EXPECT_EQ(copy.AddLoadStep("new", 20, 0), 3);
    EXPECT_EQ(copy.LoadStep(1).AddLoad(std::make_unique<CMiscLoad>()), 9);
    EXPECT_EQ(records.Text(), before);
    EXPECT_EQ(profile.AddLoadStep("new", 20, 0), 3);
    EXPECT_EQ(profile.LoadStep(1).AddLoad(std::make_unique<CMiscLoad>()), 9);
    EXPECT_EQ(profile.AddLoadStep("newer", 20, 0), 4);
}

TEST(Copies, OfAProfileAreItsEqualInAFile) {
    Records records;
    records.profile.AddLoadStep("one", 20, 0);
    AddAllKinds(records.profile.LoadStep(1));
    records.profile.AddLoadStep("two", 21, 0);
    Records other;
    other.profile.AddLoadStep("overwritten", 5, 0);
    other.profile = records.profile;
    EXPECT_EQ(other.Text(), records.Text());
    other.profile.LoadStep(1).LoadItem(3)->Quantity(77);
    other.profile.LoadStep(2).Description("changed");
    EXPECT_EQ(records.profile.LoadStep(1).LoadItem(3)->Quantity(), 3);
    EXPECT_EQ(records.profile.LoadStep(2).Description(), "two");
    CLoadProfile& itself = other.profile;
    other.profile = itself;
    EXPECT_EQ(other.profile.LoadStep(1).LoadItem(3)->Quantity(), 77);
}

TEST(Copies, OfAProfileLeaveTheFullStepsFull) {
    CLoadStep step;
    for (int i = 0; i <= 256; ++i) {
        step.AddLoad(std::make_unique<CMiscLoad>());
    }
    CLoadStep copy = step;
    EXPECT_EQ(copy.NumLoads(), 257);
    EXPECT_THROW(copy.RequireRoom(), RaisedError);
}

TEST(Copies, OfProjectAndSiteHaveTheSameDefaultsAndClock) {
    Records records;
    records.defaults.UserName("Ann");
    records.defaults.VoltageLL(208);
    records.project.ProjName("Mill");
    records.site.Altitude(1000);
    CProject project = records.project;
    CPwrSys site = records.site;
    EXPECT_EQ(project.ProjName(), "Mill");
    EXPECT_EQ(site.Altitude(), 1000);
    project.ResetDefaults();
    project.SetCreationTime();
    site.ResetDefaults();
    EXPECT_EQ(project.UserName(), "Ann");
    EXPECT_EQ(project.Created(), (DateTime{2026, 11, 21, 1, 2, 3}));
    EXPECT_EQ(site.Voltage(), 208);
    EXPECT_EQ(records.project.ProjName(), "Mill");
    EXPECT_EQ(records.site.Altitude(), 1000);
}

}  // namespace
}  // namespace genvara
