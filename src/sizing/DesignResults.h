#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Candidate.h"
#include "ProfileFigures.h"
#include "SiteRequirements.h"
#include "StepTests.h"

namespace genvara {

/// A set as a run found it. Ratings and kVA are those of one set; arrays hold a figure a step [percent],
/// the first step at index 0.
struct ChosenSet {
    std::string ModelNum;
    std::string AltNum;
    std::string EngineNum;
    std::int32_t FuelType = 0;
    double NominalRating = 0.0;  ///< kW
    double DeratedRating = 0.0;  ///< kW
    double StartingPower = 0.0;  ///< kW, as the database has it
    double StartKVA35 = 0.0;     ///< kVA
    std::vector<double> VoltageDips;
    std::vector<double> FreqDips;
    std::vector<double> StepVTHD_A;
    std::vector<double> StepVTHD_B;
    std::vector<double> StepVTHD_C;
    double MaxStepVoltDip = 0.0;  ///< percent
    double MaxStepFreqDip = 0.0;  ///< percent
    double MaxStepVTHD = 0.0;     ///< percent
    bool FreqDipAvail = true;

    /// The figures that the tests compared, so that each verdict can be shown again.
    Candidate figures;
};

/// How many candidates a run met, and what became of them, before the lists are cut.
struct RunCounts {
    std::int64_t recommended = 0;
    std::int64_t undersized = 0;
    std::int64_t underloaded = 0;  ///< passed everything and were dropped below their minimum loading

    [[nodiscard]] std::int64_t Candidates() const noexcept { return recommended + undersized + underloaded; }
};

/// A set that failed a test, with the bits of all that it failed.
struct RejectedSet : ChosenSet {
    std::int32_t RejectionReason = 0;
};

/// The verdicts of each step of the profile that a set was judged by, from the figures that its record keeps.
[[nodiscard]] std::vector<StepVerdicts> VerdictsOf(const ChosenSet& set, const ProfileFigures& profile,
                                                   const SiteRequirements& site);

}  // namespace genvara
