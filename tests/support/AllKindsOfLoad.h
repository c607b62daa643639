#pragma once

#include <memory>
#include <string>
#include <utility>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CLoadStep.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"

namespace genvara {

/// Motors of 1 to 1000 hp, on a line.
inline const MotorConversions kCopyMotors{.MotorHP = {1, 1000},
                                          .MotorRunningKW = {0.8, 800},
                                          .MotorRunningKVA = {1, 1000},
                                          .MotorStartPF = {0.4, 0.4}};

/// Gives a load what all kinds have.
template <typename Kind>
[[nodiscard]] std::unique_ptr<Kind> Named(std::unique_ptr<Kind> load, std::string name) {
    load->name(std::move(name));
    load->Description("behind the tank");
    load->Quantity(3);
    load->Phases(2);
    return load;
}

static_assert(load_type::kCount == 9, "a load of each kind stands in AddAllKinds");

/// A load of each kind, no value of which is that of a new load or of another of its values.
inline void AddAllKinds(CLoadStep& step) {
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
    auto drive = Named(std::make_unique<CVFDLoad>(kCopyMotors), "I");
    drive->InputType(input_type::kSixPulse);
    drive->MtrRating(30);
    drive->Efficiency(92);
    drive->KVALimit(110);
    drive->InputFilterInstalled(true);
    step.AddLoad(std::move(drive));
}

}  // namespace genvara
