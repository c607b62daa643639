#include "LoadReader.h"

#include <array>
#include <cstddef>
#include <string>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"
#include "CompressorSize.h"
#include "MotorPower.h"
#include "ReadStatement.h"

namespace genvara {
namespace {

template <typename... Targets>
void Require(ValueReader& reader, Targets&... targets) {
    if (!ReadStatement(reader, targets...)) {
        throw UnreadStatement{};
    }
}

/// What every load's record begins with.
struct CommonFields {
    std::string name;
    std::string description;
    std::int32_t quantity = 0;
    std::int32_t phases = 0;
};

CommonFields ReadCommon(ValueReader& reader) {
    CommonFields common;
    Require(reader, common.name, common.description, common.quantity, common.phases);
    return common;
}

void SetCommon(Load& load, const CommonFields& common) {
    load.name(common.name);
    load.Description(common.description);
    load.Quantity(common.quantity);
    load.Phases(common.phases);
}

std::unique_ptr<Load> ReadAirCond(ValueReader& reader, const LoadContext& context) {
    auto load = std::make_unique<CAirCondLoad>();
    const CommonFields common = ReadCommon(reader);
    std::int32_t method = 0;
    double size = 0.0;
    Require(reader, method, size);
    SetCommon(*load, common);
    StoreCompressorSize(*load, method, size, context.motors);
    return load;
}

std::unique_ptr<Load> ReadCharger(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<CBatChrgLoad>();
    const CommonFields common = ReadCommon(reader);
    double volts = 0.0;
    double amperes = 0.0;
    std::int32_t input = 0;
    std::int32_t type = 0;
    Require(reader, volts, amperes, input, type);
    SetCommon(*load, common);
    load->BatteryVoltage(volts);
    load->ChargeCurrent(amperes);
    load->ChargerInput(input);
    load->ChargerType(type);
    return load;
}

std::unique_ptr<Load> ReadLight(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<CLightLoad>();
    const CommonFields common = ReadCommon(reader);
    std::int32_t lamp = 0;
    std::int32_t ballastCode = 0;
    double running = 0.0;
    double runningPF = 0.0;
    double starting = 0.0;
    double startingPF = 0.0;
    Require(reader, lamp, ballastCode, running, runningPF, starting, startingPF);
    SetCommon(*load, common);
    load->LightType(lamp);
    load->Ballast(ballastCode);
    load->RunningRealPower(running);
    load->RunningPowerFactor(runningPF);
    load->StartingRealPower(starting);
    load->StartingPowerFactor(startingPF);
    return load;
}

std::unique_ptr<Load> ReadMedical(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<CMedEquipLoad>();
    const CommonFields common = ReadCommon(reader);
    double continuous = 0.0;
    double peak = 0.0;
    double continuousPF = 0.0;
    double peakPF = 0.0;
    Require(reader, continuous, peak, continuousPF, peakPF);
    std::int32_t dip = 0;
    std::int32_t input = 0;
    Require(reader, dip, input);
    SetCommon(*load, common);
    load->ContVA(continuous);
    load->PeakVA(peak);
    load->ContPowerFactor(continuousPF);
    load->PeakPowerFactor(peakPF);
    load->MaxPeakDemandVoltDip(dip);
    load->InputType(input);
    return load;
}

std::unique_ptr<Load> ReadMisc(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<CMiscLoad>();
    const CommonFields common = ReadCommon(reader);
    double running = 0.0;
    double powerFactor = 0.0;
    Require(reader, running, powerFactor);
    SetCommon(*load, common);
    load->RunningRealPower(running);
    load->RunningPowerFactor(powerFactor);
    return load;
}

/// A motor's size: its unit, and for the last method the starting current, depend on the entry method.
struct MotorFigures {
    double size = 0.0;
    double startingAmps = 0.0;
};

MotorFigures ReadMotorFigures(std::int32_t method, ValueReader& reader) {
    MotorFigures figures;
    if (method == motor_entry::kAmps) {
        Require(reader, figures.size, figures.startingAmps);
    } else if (method == motor_entry::kHorsepower || method == motor_entry::kRunningKW) {
        Require(reader, figures.size);
    }
    return figures;
}

/// Sets the method, which clears the inputs of the others, and its own inputs.
void SetMotorSize(CMtrLoad& load, std::int32_t method, const MotorFigures& figures) {
    load.DataEntryMethod(method);
    switch (method) {
        case motor_entry::kHorsepower:
            load.HP(figures.size);
            break;
        case motor_entry::kRunningKW:
            load.RunningRealPower(figures.size);
            break;
        case motor_entry::kAmps:
            load.RunningAmps(figures.size);
            load.StartingAmps(figures.startingAmps);
            break;
        default:
            break;
    }
}

std::unique_ptr<Load> ReadMotor(ValueReader& reader, const LoadContext& context) {
    auto load = std::make_unique<CMtrLoad>();
    const CommonFields common = ReadCommon(reader);
    std::int32_t method = 0;
    std::string codeLetter;
    std::int32_t startingMethod = 0;
    bool startsLoaded = false;
    bool firePump = false;
    Require(reader, method, codeLetter, startingMethod, startsLoaded, firePump);
    const MotorFigures figures = ReadMotorFigures(method, reader);
    double startingVA = 0.0;
    double startingPF = 0.0;
    std::int32_t currentLimit = 0;
    Require(reader, startingVA, startingPF, currentLimit);
    SetCommon(*load, common);
    SetMotorSize(*load, method, figures);
    load->CodeLetter(codeLetter);
    load->StartingMethod(startingMethod);
    load->StartsLoaded(startsLoaded);
    load->FirePump(firePump);
    RebuildPowers(*load, context.voltage, context.motors);
    load->StartingAppPower(startingVA);
    load->StartingPF(startingPF);
    load->SolidStateCurrentLimit(currentLimit);
    return load;
}

std::unique_ptr<Load> ReadOffice(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<COfficeLoad>();
    const CommonFields common = ReadCommon(reader);
    std::int32_t pcs = 0;
    std::int32_t printers = 0;
    std::int32_t faxes = 0;
    std::int32_t copiers = 0;
    Require(reader, pcs, printers, faxes, copiers);
    SetCommon(*load, common);
    load->NumPCs(pcs);
    load->NumPrinters(printers);
    load->NumFaxes(faxes);
    load->NumCopiers(copiers);
    return load;
}

std::unique_ptr<Load> ReadUPS(ValueReader& reader, const LoadContext& /*context*/) {
    auto load = std::make_unique<CUPSLoad>();
    const CommonFields common = ReadCommon(reader);
    std::int32_t input = 0;
    std::int32_t family = 0;
    double rating = 0.0;
    std::int32_t loading = 0;
    std::int32_t charging = 0;
    bool filter = false;
    Require(reader, input, family, rating, loading, charging, filter);
    SetCommon(*load, common);
    load->InputType(input);
    load->Family(family);
    load->OutputRating(rating);
    load->Loading(loading);
    load->Charging(charging);
    load->InputFilterInstalled(filter);
    return load;
}

std::unique_ptr<Load> ReadVFD(ValueReader& reader, const LoadContext& context) {
    auto load = std::make_unique<CVFDLoad>(context.motors);
    const CommonFields common = ReadCommon(reader);
    std::int32_t input = 0;
    double rating = 0.0;
    std::int32_t efficiency = 0;
    std::int32_t kvaLimit = 0;
    bool filter = false;
    Require(reader, input, rating, efficiency, kvaLimit, filter);
    SetCommon(*load, common);
    load->InputType(input);
    load->MtrRating(rating);
    load->Efficiency(efficiency);
    load->KVALimit(kvaLimit);
    load->InputFilterInstalled(filter);
    return load;
}

using KindReader = std::unique_ptr<Load> (*)(ValueReader&, const LoadContext&);

struct Kind {
    std::string_view className;
    KindReader read;
};

/// By load type.
constexpr std::array<Kind, 9> kKinds{{{"CAirCondLoad", ReadAirCond},
                                      {"CBatChrgLoad", ReadCharger},
                                      {"CLightLoad", ReadLight},
                                      {"CMedEquipLoad", ReadMedical},
                                      {"CMiscLoad", ReadMisc},
                                      {"CMtrLoad", ReadMotor},
                                      {"COfficeLoad", ReadOffice},
                                      {"CUPSLoad", ReadUPS},
                                      {"CVFDLoad", ReadVFD}}};

const Kind* FindKind(std::int32_t loadType) noexcept {
    const bool known = loadType >= 0 && loadType < static_cast<std::int32_t>(kKinds.size());
    return known ? &kKinds[static_cast<std::size_t>(loadType)] : nullptr;
}

}  // namespace

std::string_view LoadClassName(std::int32_t loadType) noexcept {
    const Kind* kind = FindKind(loadType);
    return kind != nullptr ? kind->className : std::string_view{};
}

std::unique_ptr<Load> ReadLoad(std::int32_t loadType, ValueReader& reader, const LoadContext& context) {
    const Kind* kind = FindKind(loadType);
    return kind != nullptr ? kind->read(reader, context) : nullptr;
}

}  // namespace genvara
