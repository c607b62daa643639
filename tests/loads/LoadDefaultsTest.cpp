#include <gtest/gtest.h>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "LoadFactory.h"

// What a new load holds, which is what a form shows of a field that nobody filled.

namespace genvara {
namespace {

const MotorConversions kNoMotors;

TEST(NewLoad, BelongsToNoStepAndHasNoName) {
    for (std::int32_t kind = 0; kind < load_type::kCount; ++kind) {
        SCOPED_TRACE(kind);
        const std::unique_ptr<Load> load = MakeLoad(kind, kNoMotors);
        EXPECT_EQ(load->ID(), 0);
        EXPECT_EQ(load->name(), "");
        EXPECT_EQ(load->Description(), "");
        EXPECT_EQ(load->Quantity(), 1);
        EXPECT_EQ(load->Phases(), 0);
        load->ID(7);
        load->name("Chiller");
        load->Description("on the roof, behind the tank");
        EXPECT_EQ(load->ID(), 7);
        EXPECT_EQ(load->name(), "Chiller");
        EXPECT_EQ(load->Description(), "on the roof, behind the tank");
    }
}

TEST(NewLoad, IsAPurelyRealOneIfLinear) {
    const CMiscLoad misc;
    EXPECT_EQ(misc.RunningRealPower(), 0.0);
    EXPECT_EQ(misc.RunningPowerFactor(), 1.0);
    const CLightLoad light;
    EXPECT_EQ(light.LightType(), 0);
    EXPECT_EQ(light.Ballast(), 0);
    EXPECT_EQ(light.RunningRealPower(), 0.0);
    EXPECT_EQ(light.RunningPowerFactor(), 1.0);
    EXPECT_EQ(light.StartingRealPower(), 0.0);
    EXPECT_EQ(light.StartingPowerFactor(), 1.0);
}

TEST(NewLoad, HasNoSizeIfAMotor) {
    const CMtrLoad motor;
    EXPECT_TRUE(motor.StartsLoaded());
    EXPECT_EQ(motor.StartingMethod(), 1);
    EXPECT_EQ(motor.CodeLetter(), "NA");
    EXPECT_FALSE(motor.FirePump());
    EXPECT_EQ(motor.DataEntryMethod(), 0);
    EXPECT_EQ(motor.HP(), -10.0);
    EXPECT_EQ(motor.RunningRealPower(), -10.0);
    EXPECT_EQ(motor.RunningAppPower(), 0.0);
    EXPECT_EQ(motor.RunningAmps(), -10.0);
    EXPECT_EQ(motor.StartingAmps(), -10.0);
    EXPECT_EQ(motor.StartingAppPower(), 0.0);
    EXPECT_EQ(motor.StartingPF(), 0.0);
    EXPECT_EQ(motor.SolidStateCurrentLimit(), 300);
    const CAirCondLoad cooler;
    EXPECT_EQ(cooler.HP(), -10.0);
    EXPECT_EQ(cooler.BTU(), -10.0);
    EXPECT_EQ(cooler.Tonnage(), -10.0);
    EXPECT_EQ(cooler.DataEntryMethod(), 0);
    EXPECT_EQ(cooler.RunningRealPower(), 0.0);
    EXPECT_EQ(cooler.RunningAppPower(), 0.0);
    EXPECT_EQ(cooler.StartingAppPower(), 0.0);
    EXPECT_EQ(cooler.StartingPF(), 0.0);
}

TEST(NewLoad, HasTheUsualPercentagesIfElectronic) {
    const CUPSLoad ups;
    EXPECT_EQ(ups.Family(), 0);
    EXPECT_EQ(ups.InputType(), 0);
    EXPECT_EQ(ups.OutputRating(), 1.0);
    EXPECT_EQ(ups.Loading(), 100);
    EXPECT_EQ(ups.Charging(), 10);
    EXPECT_FALSE(ups.InputFilterInstalled());
    const CVFDLoad drive(kNoMotors);
    EXPECT_EQ(drive.InputType(), 0);
    EXPECT_EQ(drive.MtrRating(), 0.0);
    EXPECT_EQ(drive.Efficiency(), 90);
    EXPECT_EQ(drive.KVALimit(), 125);
    EXPECT_FALSE(drive.InputFilterInstalled());
    const CBatChrgLoad charger;
    EXPECT_EQ(charger.ChargerType(), 1);
    EXPECT_EQ(charger.ChargerInput(), 1);
    EXPECT_EQ(charger.BatteryVoltage(), 0.0);
    EXPECT_EQ(charger.ChargeCurrent(), 0.0);
    const CMedEquipLoad medical;
    EXPECT_EQ(medical.MaxPeakDemandVoltDip(), 6);
    EXPECT_EQ(medical.PeakPowerFactor(), 0.9);
    EXPECT_EQ(medical.ContPowerFactor(), 0.9);
    EXPECT_EQ(medical.PeakVA(), 0.0);
    EXPECT_EQ(medical.ContVA(), 0.0);
    EXPECT_EQ(medical.InputType(), 1);
    const COfficeLoad office;
    EXPECT_EQ(office.NumPCs() + office.NumPrinters() + office.NumFaxes() + office.NumCopiers(), 0);
}

}  // namespace
}  // namespace genvara
