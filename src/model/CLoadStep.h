#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Load.h"
#include "OwnedList.h"

namespace genvara {

/// Allowed voltage dips of a step [percent].
inline constexpr Range<std::int32_t> kStepVoltageDip{5, 35};

/// Loads that a step takes in all; those that leave it count too.
inline constexpr std::int32_t kMostLoadsOfStep = 257;

/// A group of loads that are switched on together, with its own allowed voltage dip.
///
/// Totals are worked out afresh on each call, in W, VA and var. Phase 0 is the total, 1 to 3 are A to C;
/// another phase adds nothing. A load whose figure fails takes the total with it.
///
/// A copy holds copies of the loads, with the same IDs, and goes on counting where the step stands.
class CLoadStep {
  public:
    using Loads = OwnedList<Load>;

    [[nodiscard]] std::int32_t StepID() const noexcept { return m_stepId; }
    void StepID(std::int32_t id) noexcept { m_stepId = id; }

    /// Takes a load, gives it the next ID of the step, and returns that ID. The limit counts additions, not
    /// loads: deleting gives nothing back, so that IDs stay unique.
    /// @throws RaisedError 0x80040003 "Maximum number of loads per step exceeded." from
    ///         "CLoadStep::AddLoad" at the 258th addition; the load is then lost.
    std::int32_t AddLoad(std::unique_ptr<Load> load);

    /// How many loads `AddLoad` would still take.
    [[nodiscard]] std::int32_t Room() const noexcept;
    /// Whether `AddLoad` would take another load.
    [[nodiscard]] bool HasRoom() const noexcept { return Room() > 0; }
    /// Makes sure that `AddLoad` would take another load.
    /// @throws RaisedError 0x80040003 as `AddLoad`.
    void RequireRoom() const;

    /// Gives a load away.
    /// @throws RaisedError 0x80040002 as `DeleteLoad`.
    [[nodiscard]] std::unique_ptr<Load> TakeLoad(std::int32_t id);

    /// Puts a load in the place of another, with its ID, and gives that one away.
    /// @param position from 1; the caller keeps within the step.
    [[nodiscard]] std::unique_ptr<Load> ExchangeLoad(std::int32_t position, std::unique_ptr<Load> load);

    /// @throws RaisedError 0x80040002 "The load requested could not be found." from "CLoadStep::DeleteLoad".
    void DeleteLoad(std::int32_t id);

    /// The load with the ID, or null.
    [[nodiscard]] Load* LoadItem(std::int32_t id);
    [[nodiscard]] const Load* LoadItem(std::int32_t id) const;

    // The loads in order of addition.
    [[nodiscard]] Loads::iterator begin() noexcept { return m_loads.begin(); }
    [[nodiscard]] Loads::iterator end() noexcept { return m_loads.end(); }
    [[nodiscard]] Loads::const_iterator begin() const noexcept { return m_loads.begin(); }
    [[nodiscard]] Loads::const_iterator end() const noexcept { return m_loads.end(); }
    [[nodiscard]] std::int32_t NumLoads() const noexcept { return static_cast<std::int32_t>(m_loads.Size()); }

    [[nodiscard]] const std::string& Description() const noexcept { return m_description; }
    void Description(std::string text);

    /// Allowed voltage dip of this step [percent]; 5 to 35, and 0 until it is set.
    /// @throws RaisedError 0x80040001 "Voltage dip override out of range." from
    ///         "CLoadStep::MaxVoltageDipOverride".
    void MaxVoltageDipOverride(std::int32_t percent);
    [[nodiscard]] std::int32_t MaxVoltageDipOverride() const noexcept { return m_maxVoltageDipOverride; }

    /// Whether another step holds the same, as a file of the two would: description, dip and loads in their
    /// order, whatever the IDs are.
    [[nodiscard]] bool HoldsSame(const CLoadStep& other) const;
    /// Whether another step is the same one and as it is now: what it holds, every ID, and the count of
    /// additions.
    [[nodiscard]] bool IsSameMoment(const CLoadStep& other) const;

    /// Seven rows: label, tab, value; powers in kW and kVA.
    [[nodiscard]] std::vector<std::string> GetProps() const;

    // Running and starting totals multiply each load's figure by its quantity.
    [[nodiscard]] double TotalRunningRealPower(std::int32_t phase) const;
    [[nodiscard]] double TotalRunningImgPower(std::int32_t phase) const;
    /// Root of the squares of the two totals, never a sum of apparent powers.
    [[nodiscard]] double TotalRunningApparentPower(std::int32_t phase) const;
    [[nodiscard]] double TotalStartingRealPower(std::int32_t phase) const;
    [[nodiscard]] double TotalStartingImgPower(std::int32_t phase) const;
    [[nodiscard]] double TotalStartingApparentPower(std::int32_t phase) const;

    // Harmonic totals add each load's figure as it stands, without the quantity: the distortion model is
    // fitted to single units.
    [[nodiscard]] double TotalSixPulseRectPower() const;
    [[nodiscard]] double TotalTwelvePulseRectPower() const;
    [[nodiscard]] double TotalSixPulseRectFilteredPower() const;
    [[nodiscard]] double TotalTwelvePulseRectFilteredPower() const;
    [[nodiscard]] double TotalSixPulsePPCPower() const;
    [[nodiscard]] double TotalSinglePhaseRectPower(std::int32_t phase) const;
    [[nodiscard]] double TotalElectBallastRealPower(std::int32_t phase) const;
    [[nodiscard]] double TotalMagBallastRealPower(std::int32_t phase) const;

    [[nodiscard]] bool HasFirePump() const;
    [[nodiscard]] bool HasLoadedMotor() const;
    [[nodiscard]] bool HasMedicalImageLoad() const;
    /// A motor that starts loaded on the 65 % tap of an autotransformer.
    [[nodiscard]] bool HasLoadedMotorWithTap65() const;
    /// Smallest dip that a medical load of the step tolerates [percent]; 100 without one.
    [[nodiscard]] std::int32_t GetSmallestMedicalDip() const;

  private:
    std::string m_description;
    std::int32_t m_maxVoltageDipOverride = 0;
    Loads m_loads;
    std::int32_t m_nextLoadId = 0;
    std::int32_t m_stepId = 0;
};

}  // namespace genvara
