#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "DesignLimits.h"
#include "DesignResults.h"
#include "GensetSource.h"
#include "ProfileFigures.h"
#include "SetAtFault.h"
#include "SiteRequirements.h"
#include "StepTests.h"

namespace genvara {

/// The sizing engine: selects the sets that fit a site, takes each through the load profile, and keeps the
/// recommended ones, smallest first, and the undersized ones with their reasons, largest first.
///
/// A run is `SelectGensets` and then `ChooseSets`; its results stay until the next one. Failures of the
/// database, of a load or of the arithmetic end a run at once and pass to the caller.
class CDesigner : public DesignLimits {
  public:
    /// Reads the database's properties. Source, site and profile outlive the designer.
    /// @throws RaisedError of the database.
    CDesigner(GensetSource& gensets, const CPwrSys& site, const CLoadProfile& profile);
    ~CDesigner();
    CDesigner(const CDesigner&) = delete;
    CDesigner& operator=(const CDesigner&) = delete;
    CDesigner(CDesigner&&) = delete;
    CDesigner& operator=(CDesigner&&) = delete;

    /// Whether the last run worked out distortion for its connection.
    [[nodiscard]] bool VTHD_CalcsValid() const noexcept { return m_vthdCalcsValid; }
    [[nodiscard]] std::int32_t NumChosenSets() const noexcept {
        return static_cast<std::int32_t>(m_chosen.size());
    }
    [[nodiscard]] std::int32_t NumRejectedSets() const noexcept {
        return static_cast<std::int32_t>(m_rejected.size());
    }

    /// Takes over the settings of a run as a whole.
    void TakeLimits(const DesignLimits& limits) noexcept { static_cast<DesignLimits&>(*this) = limits; }

    /// Finds the candidates of the site.
    void SelectGensets();

    /// Judges the candidates; the number of recommended sets. Without a candidate the totals of the run
    /// before stay. A run that fails leaves the lists as far as they got, in the order of the candidates.
    /// @throws RaisedError of a load, of the database, of a field that cannot be read, or of the arithmetic.
    std::int32_t ChooseSets();

    /// All that a run leaves.
    struct Results {
        std::vector<ChosenSet> chosen;
        std::vector<RejectedSet> rejected;
        SiteRequirements requirements;
        ProfileFigures figures;
        RunCounts counts;
        bool vthdCalcsValid = false;
    };
    [[nodiscard]] Results LastRun() const;
    /// Brings back the results of an earlier run, so that a failed one costs none.
    void LastRun(Results results);
    /// Forgets the last run, as before the first one: another project takes the place of the one that was
    /// sized.
    void ForgetRun();

    /// What became of the candidates of the last run.
    [[nodiscard]] const RunCounts& Counts() const noexcept { return m_counts; }

    /// The set that the last run stopped at, if it failed at one.
    [[nodiscard]] const std::optional<SetAtFault>& StoppedAt() const noexcept { return m_stoppedAt; }

    /// The recommended sets, smallest first.
    [[nodiscard]] const std::vector<ChosenSet>& ChosenSets() const noexcept { return m_chosen; }
    /// The undersized sets, largest first.
    [[nodiscard]] const std::vector<RejectedSet>& RejectedSets() const noexcept { return m_rejected; }

    // Readers of the recommended list, by position from 0, with their twins of the undersized list. A
    // position beyond the list raises 9 "Subscript out of range" from the reader. The program itself takes
    // whole rows (`ChosenSets`, `RejectedSets`); of the readers it calls those of models and alternators
    // alone.
    [[nodiscard]] const std::string& SetModelNum(std::int32_t index) const;
    [[nodiscard]] const std::string& SetEngineNum(std::int32_t index) const;
    [[nodiscard]] const std::string& SetAltNum(std::int32_t index) const;
    [[nodiscard]] std::int32_t SetFuelType(std::int32_t index) const;
    [[nodiscard]] double SetNominalRating(std::int32_t index) const;  ///< kW, one set
    [[nodiscard]] double SetDeratedRating(std::int32_t index) const;  ///< kW, one set
    [[nodiscard]] double SetStartKVA35(std::int32_t index) const;     ///< kVA, one set
    [[nodiscard]] double MaxStepVoltDip(std::int32_t index) const;    ///< percent
    [[nodiscard]] double MaxStepFreqDip(std::int32_t index) const;    ///< percent
    [[nodiscard]] double MaxStepVTHD(std::int32_t index) const;       ///< percent
    [[nodiscard]] std::vector<double> VoltageDips(std::int32_t index) const;
    [[nodiscard]] std::vector<double> FreqDips(std::int32_t index) const;
    [[nodiscard]] bool FreqDipAvail(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_A(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_B(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_C(std::int32_t index) const;

    [[nodiscard]] const std::string& SetModelNumRej(std::int32_t index) const;
    [[nodiscard]] const std::string& SetEngineNumRej(std::int32_t index) const;
    [[nodiscard]] const std::string& SetAltNumRej(std::int32_t index) const;
    [[nodiscard]] std::int32_t SetFuelTypeRej(std::int32_t index) const;
    [[nodiscard]] double SetNominalRatingRej(std::int32_t index) const;
    [[nodiscard]] double SetDeratedRatingRej(std::int32_t index) const;
    [[nodiscard]] double SetStartKVA35Rej(std::int32_t index) const;
    [[nodiscard]] double MaxStepVoltDipRej(std::int32_t index) const;
    [[nodiscard]] double MaxStepFreqDipRej(std::int32_t index) const;
    [[nodiscard]] double MaxStepVTHDRej(std::int32_t index) const;
    [[nodiscard]] std::vector<double> VoltageDipsRej(std::int32_t index) const;
    [[nodiscard]] std::vector<double> FreqDipsRej(std::int32_t index) const;
    [[nodiscard]] bool FreqDipAvailRej(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_A_Rej(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_B_Rej(std::int32_t index) const;
    [[nodiscard]] std::vector<double> StepVTHD_C_Rej(std::int32_t index) const;
    [[nodiscard]] std::int32_t RejectionReason(std::int32_t index) const;

    /// Running power of the whole profile, of the last run [kW].
    [[nodiscard]] double TotalRunningKW() const noexcept { return m_figures.totalRunningKW; }
    /// Largest start of the profile, of the last run [kVA].
    [[nodiscard]] double PeakStartingKVA() const noexcept { return m_figures.peakStartingKVA; }
    /// Version of the genset database.
    [[nodiscard]] const std::string& DatabaseVersion() const noexcept { return m_properties.Version; }

    /// The text before the first "-" of a model number, or the whole text.
    [[nodiscard]] static std::string TrimModelNum(std::string_view text);

    /// The undersized set at a position, and why: for each step the verdict of each test, in the order of
    /// `kStepTests`. Worked out by the very tests that decided, from the profile of the last run.
    [[nodiscard]] std::vector<StepVerdicts> VerdictsRej(std::int32_t index) const;
    /// The same of a recommended set, of which the program does not ask it.
    [[nodiscard]] std::vector<StepVerdicts> Verdicts(std::int32_t index) const;

  private:
    [[nodiscard]] const ChosenSet& Chosen(std::int32_t index, std::string_view reader) const;
    [[nodiscard]] const RejectedSet& Rejected(std::int32_t index, std::string_view reader) const;
    [[nodiscard]] SetAtFault Describe(const GensetRow& row, std::int64_t position) const;

    GensetSource* m_gensets;
    const CPwrSys* m_site;
    const CLoadProfile* m_profile;
    std::unique_ptr<GensetCursor> m_candidates;
    PropertiesRecord m_properties;
    std::vector<ChosenSet> m_chosen;
    std::vector<RejectedSet> m_rejected;
    SiteRequirements m_requirements;
    ProfileFigures m_figures;
    RunCounts m_counts;
    std::optional<SetAtFault> m_stoppedAt;
    bool m_vthdCalcsValid = false;
};

}  // namespace genvara
