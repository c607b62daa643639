#pragma once

#include <array>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMtrLoad.h"
#include "CUPSLoad.h"
#include "Property.h"

/// Codes of loads with their names: those of the forms' controls where they have a caption.
namespace genvara::load_codes {

/// Connection of a load.
inline constexpr std::array<CodeName, 4> kPhases{{{0, 624}, {1, "Phase A"}, {2, "Phase B"}, {3, "Phase C"}}};
/// The same of lighting and office equipment, which a balanced connection spreads over the phases.
inline constexpr std::array<CodeName, 4> kSpreadPhases{
    {{0, 628}, {1, "Phase A"}, {2, "Phase B"}, {3, "Phase C"}}};

inline constexpr std::array<CodeName, 3> kAirCondEntries{
    {{aircond_entry::kBTU, 650}, {aircond_entry::kTonnage, 651}, {aircond_entry::kHorsepower, 652}}};

inline constexpr std::array<CodeName, 3> kChargerTypes{{{charger_type::kResidential, "Residential"},
                                                        {charger_type::kIndustrial, "Industrial"},
                                                        {charger_type::kTelecom, "Telecom"}}};
inline constexpr std::array<CodeName, 2> kChargerInputs{
    {{charger_input::kSCR, "SCR"}, {charger_input::kFerroResonant, "Ferro Resonant"}}};

inline constexpr std::array<CodeName, 3> kLamps{
    {{light_type::kIncandescent, 632}, {light_type::kFluorescent, 633}, {light_type::kHID, 634}}};
inline constexpr std::array<CodeName, 4> kBallasts{{{ballast::kNone, "N/A"},
                                                    {ballast::kHighEffMagnetic, 636},
                                                    {ballast::kElectronic, 637},
                                                    {ballast::kLowDistElectronic, 638}}};

inline constexpr std::array<CodeName, 3> kMotorEntries{
    {{motor_entry::kHorsepower, 700}, {motor_entry::kRunningKW, 701}, {motor_entry::kAmps, 702}}};
inline constexpr std::array<CodeName, 6> kStartingMethods{{{starting_method::kAcrossTheLine, 750},
                                                           {starting_method::kAutotransformer80, 751},
                                                           {starting_method::kAutotransformer65, 752},
                                                           {starting_method::kPartWinding, 753},
                                                           {starting_method::kWyeDelta, 754},
                                                           {starting_method::kSolidState, 755}}};

inline constexpr std::array<CodeName, 3> kUPSFamilies{
    {{ups_family::kFastTransfer, 680}, {ups_family::kOnLine, 683}, {ups_family::kOffLine, 682}}};
/// Input stages of UPSs and drives. The last one is in no list: it follows from the phases.
inline constexpr std::array<CodeName, 5> kInputTypes{{{input_type::kSixPulse, "6 pulse"},
                                                      {input_type::kTwelvePulse, "12 pulse"},
                                                      {input_type::kAboveTwelvePulse, ">12 pulse"},
                                                      {input_type::kActive, "Active"},
                                                      {input_type::kSinglePhase, "Single phase"}}};

}  // namespace genvara::load_codes
