#pragma once

#include <string>
#include <vector>

namespace genvara {

/// The only way between a motor's horsepower, running power and starting power factor: four parallel
/// tables, one entry a motor size, in ascending horsepower. Read once from the genset database and then
/// handed to whatever converts.
struct MotorConversions {
    std::vector<double> MotorHP;          ///< Rated horsepower [hp].
    std::vector<double> MotorRunningKW;   ///< Real power drawn while running [kW].
    std::vector<double> MotorRunningKVA;  ///< Apparent power drawn while running [kVA].
    std::vector<double> MotorStartPF;     ///< Power factor while starting, per unit.
};

/// A code letter with the locked-rotor kVA that it stands for.
struct CodeLetterRecord {
    std::string CodeLetter;
    double LRkVAPerHP = 0.0;  ///< kVA per horsepower
};

}  // namespace genvara
