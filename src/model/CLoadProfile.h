#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "CLoadStep.h"
#include "OwnedList.h"

namespace genvara {

/// Most steps that are entered into a profile. The profile itself takes more, as those of a file: panels and
/// imports see to it.
inline constexpr std::int32_t kMostLoadSteps = 256;

/// The load steps in the order in which they are switched on, at positions from 1.
///
/// A step's ID stays when its position moves, and is never given twice in the life of the profile. A copy
/// holds copies of the steps, with the same IDs, and goes on counting where the profile stands.
class CLoadProfile {
  public:
    using Steps = OwnedList<CLoadStep>;

    [[nodiscard]] std::int32_t NumLoadSteps() const noexcept {
        return static_cast<std::int32_t>(m_steps.Size());
    }

    /// Inserts a step before the one at `position`, or at the end for 0 and beyond the last; returns its ID.
    /// @param maxVoltageDip allowed dip of the step [percent].
    /// @throws RaisedError 0x80040064 without a text for a position below 0 or above `NumLoadSteps` + 1;
    ///         0x80040001 of `CLoadStep::MaxVoltageDipOverride`. The profile is then as before.
    std::int32_t AddLoadStep(std::string description, std::int32_t maxVoltageDip, std::int32_t position);

    /// The step at a position from 1.
    /// @throws RaisedError 0x80040064 "Invalid load step number." from "CLoadProfile::LoadStep".
    [[nodiscard]] CLoadStep& LoadStep(std::int32_t number);
    [[nodiscard]] const CLoadStep& LoadStep(std::int32_t number) const;

    /// The step with the ID, or null.
    /// @throws RaisedError 0x80040064 "Invalid load step ID." from "CLoadProfile::LoadStepByID", below 0.
    [[nodiscard]] CLoadStep* LoadStepByID(std::int32_t id);
    [[nodiscard]] const CLoadStep* LoadStepByID(std::int32_t id) const;

    /// Removes the step with the ID, if there is one.
    void DeleteLoadStep(std::int32_t id);
    void DeleteAllLoadSteps();

    /// Moves the step at a position one place towards the end. The caller keeps away from the last step, for
    /// which there is no such place: the step is then lost from the profile.
    /// @throws RaisedError 0x80040064 "Invalid load step number." from "CLoadProfile::DeleteLoadStep" for a
    ///         position outside the profile; 9 "Subscript out of range" for the last one.
    void RaiseLoadStep(std::int32_t number);

    /// Moves the step at a position one place towards the start; the first one stays.
    /// @throws RaisedError 0x80040064 as `RaiseLoadStep`.
    void LowerLoadStep(std::int32_t number);

    /// Steps as they stood at an earlier or later moment of the profile's life, in their order.
    using Moment = std::vector<std::shared_ptr<const CLoadStep>>;
    /// Becomes what it was at a moment. A step that was the same then stays the object that it is; new steps
    /// go on counting where the profile stands, since an ID is never given twice.
    void Restore(const Moment& moment);

    // The steps, positions ascending.
    [[nodiscard]] Steps::iterator begin() noexcept { return m_steps.begin(); }
    [[nodiscard]] Steps::iterator end() noexcept { return m_steps.end(); }
    [[nodiscard]] Steps::const_iterator begin() const noexcept { return m_steps.begin(); }
    [[nodiscard]] Steps::const_iterator end() const noexcept { return m_steps.end(); }

  private:
    /// The place in the list of the step at a position from 1.
    [[nodiscard]] std::size_t RequireIndex(std::int32_t number, const char* source) const;

    Steps m_steps;
    std::int32_t m_nextStepId = 0;
};

}  // namespace genvara
