#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DateTime.h"

namespace genvara {

/// What reports print of a set and its project, copied from wherever it comes from. Nothing is ever cleared:
/// a later report overwrites what it sets.
struct ReportData {
    bool MetricUnits = false;  ///< words for units; the figures are converted by the caller
    std::string ProjectName;
    std::string Customer;
    std::string UserName;
    std::string ModelNum;
    std::string EngineNum;
    std::string AlternatorNum;
    std::int32_t ParallelSets = 0;
    double LLVoltage = 0.0;  ///< line-to-line volts
    std::int32_t ConnCode = 1;
    std::int32_t Frequency = 0;  ///< Hz
    std::int32_t Phases = 0;
    double Altitude = 0.0;         ///< m or ft
    double AmbTemp = 0.0;          ///< °C or °F
    double RatedKW = 0.0;          ///< one set
    double DeratedKW = 0.0;        ///< one set
    double TotalRunKW = 0.0;       ///< of the installation
    double AvailKVA35 = 0.0;       ///< one set
    double PeakStartingKVA = 0.0;  ///< of the installation
    double MaxVoltDip = 0.0;       ///< percent
    double MaxFreqDip = 0.0;       ///< percent
    double MaxVTHD = 0.0;          ///< percent
    double AllowedVoltDip = 0.0;   ///< percent; printed by no report
    double AllowedFreqDip = 0.0;   ///< percent
    double AllowedVTHD = 0.0;      ///< percent
    bool FreqDipEnabled = false;
    bool VTHDEnabled = false;
    // A figure a step [percent], the first step at index 0.
    std::vector<double> StepVoltDips;
    std::vector<double> StepFreqDips;
    std::vector<double> StepVTHDs_A;
    std::vector<double> StepVTHDs_B;
    std::vector<double> StepVTHDs_C;
    std::string ProgVersion = "0.0.0";
    std::string DBVersion = "0.00";
    DateTime CreatedDate{1998, 2, 14, 0, 0, 0};
    DateTime ModifiedDate{1998, 2, 14, 0, 0, 0};
    std::int32_t RejectionReason = 0;
    /// Whether the harmonic figures are valid. An undersized set does not set it: what the recommended set
    /// before it left stays, on purpose.
    bool CalcVTHD = true;
};

}  // namespace genvara
