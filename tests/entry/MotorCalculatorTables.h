#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "MotorCalculator.h"

/// Motor tables by which the calculator's figures can be worked out in the head.
namespace genvara {

// Tables with round figures: a motor of h hp runs at h x 0.8 kW and h x 1 kVA and starts at 0.4.
inline const MotorConversions kMotors{.MotorHP = {1, 10, 1000},
                                      .MotorRunningKW = {0.8, 8, 800},
                                      .MotorRunningKVA = {1, 10, 1000},
                                      .MotorStartPF = {0.4, 0.4, 0.4}};
inline const std::vector<CodeLetterRecord> kLetters{{"A", 3}, {"F", 5.3}, {"G", 6},  {"H", 7},
                                                    {"J", 8}, {"K", 9},   {"L", 10}, {"M", 11}};
inline const std::vector<double> kMultipliers{1, 0.64, 0.4225, 0.7, 0.33, 0.33};
inline constexpr std::int32_t kSolidState = 5;
inline constexpr std::int32_t kVoltage = 480;
/// A user who writes a point before the decimals.
inline const EntryNumbers kPointed{NumberSigns{}};

inline MotorCalculator Calculator(std::int32_t systemPhases = 3) {
    return {MotorTables{kMotors, kLetters, kMultipliers}, kVoltage, systemPhases, kPointed};
}

inline std::string Letter(const MotorCalculator& calculator) {
    const std::int32_t index = calculator.State().codeLetterIndex;
    return index < 0 ? "" : kLetters[static_cast<std::size_t>(index)].CodeLetter;
}

}  // namespace genvara
