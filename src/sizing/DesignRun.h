#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "CPwrSys.h"
#include "Candidate.h"
#include "Derating.h"
#include "DesignLimits.h"
#include "DesignResults.h"
#include "GensetSource.h"
#include "ProfileFigures.h"
#include "ResultList.h"
#include "StepDistortion.h"

namespace genvara {

/// One run over the candidates of a site.
///
/// What depends on the step alone is worked out before the first candidate, what depends on the alternator
/// alone (distortion is of that kind) at the first candidate that has it.
class DesignRun {
  public:
    /// All of these outlive the run.
    DesignRun(GensetSource& gensets, const CPwrSys& site, const SiteRequirements& requirements,
              const ProfileFigures& profile, const DesignLimits& limits);

    /// Takes one candidate through every step and files it: recommended, undersized, or dropped without a
    /// word because it passes everything and stays below its minimum loading.
    /// @throws RaisedError of the database, of a field that cannot be read, or of the arithmetic.
    void Judge(const GensetRow& row);

    /// Of the candidates judged so far.
    [[nodiscard]] const RunCounts& Counts() const noexcept { return m_counts; }
    [[nodiscard]] std::vector<ChosenSet> ReleaseChosen() { return m_chosen.Release(); }
    [[nodiscard]] std::vector<RejectedSet> ReleaseRejected() { return m_rejected.Release(); }

  private:
    /// An alternator with the distortion that the steps show on it.
    struct AlternatorRecord {
        std::int32_t ID = 0;
        std::string ModelNum;
        double BasekW = 0.0;
        double BaseVolts = 0.0;
        double SubtransReact = 0.0;
        bool hasDistortion = false;
        double generatorPower = 0.0;                    ///< kW base of the impedance, of all sets
        double generatorImpedance = 0.0;                ///< per unit, at the site's voltage
        std::vector<std::array<double, 3>> distortion;  ///< of the steps reached so far [percent]
    };

    /// Figures of the present candidate over all steps.
    struct Worst {
        double voltDip = 0.0;
        double freqDip = 0.0;
        double vthd = 0.0;
    };

    void ReadCandidate(const GensetRow& row);
    void ReadFrequencyDip(const GensetRow& row);
    [[nodiscard]] AlternatorRecord ReadAlternator(std::int32_t id) const;
    [[nodiscard]] std::int32_t JudgeStep(std::size_t s);
    [[nodiscard]] const std::array<double, 3>& Distortion(std::size_t s);
    void KeepWorst(const StepOutcome& outcome);
    template <typename Record, typename Before>
    void File(const GensetRow& row, ResultList<Record, Before>& list, std::int32_t reason);

    GensetSource* m_gensets;
    const CPwrSys* m_site;
    const SiteRequirements* m_requirements;
    const ProfileFigures* m_profile;
    std::vector<StepDistortion> m_distortions;
    std::map<std::int32_t, DerateFactors> m_derateFactors;
    std::map<std::int32_t, AlternatorRecord> m_alternators;
    ResultList<ChosenSet, std::less<>> m_chosen;
    ResultList<RejectedSet, std::greater<>> m_rejected;
    RunCounts m_counts;

    // Of the present candidate.
    Candidate m_set;
    double m_startKVA35 = 0.0;
    AlternatorRecord* m_alternator = nullptr;
    std::vector<StepOutcome> m_outcomes;
    bool m_sameFrequencyCurve = false;  ///< as the candidate before, whose frequency dips stand
    Worst m_worst;
};

}  // namespace genvara
