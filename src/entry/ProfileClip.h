#pragma once

#include <string>
#include <string_view>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "EntryNumbers.h"
#include "MotorConversions.h"

namespace genvara {

/// Steps, or loads of one step, on their way from one load profile to another or to a spreadsheet.
struct ProfileClip {
    bool wholeSteps = false;  ///< whether the steps are meant, or the loads of the only one
    CLoadProfile steps;
};

/// A copy of a step with its loads.
[[nodiscard]] ProfileClip ClipOf(const CLoadStep& step);
/// A copy of a load.
[[nodiscard]] ProfileClip ClipOf(const Load& load);

/// The clip as a JSON project.
/// @param site where its loads come from.
[[nodiscard]] std::string RenderClip(const ProfileClip& clip, const CPwrSys& site);

/// Reads a clip, whole or not at all. Powers that follow from a load's size are worked out for the site that
/// it comes to, as they would be when its project is opened.
/// @throws RaisedError 0 as `ReadJsonProject`, and for a clip without anything in it; of `RebuildPowers`.
[[nodiscard]] ProfileClip ReadClip(std::string_view text, bool wholeSteps, const CPwrSys& site,
                                   const MotorConversions& motors);

/// Whether a clip says the same when it has been rendered and read back: a load that a file was read into may
/// hold what no text can say.
[[nodiscard]] bool Survives(const ProfileClip& clip, const CPwrSys& site, const MotorConversions& motors);

/// The clip's loads as a table with a heading row, tabs between its cells: numbers in the user's separator,
/// powers of all units in kW and kVA.
[[nodiscard]] std::string ClipTable(const ProfileClip& clip, const EntryNumbers& numbers);

/// Adds a copy of a step, with all its loads, to a profile with room for it.
/// @param position from 1, as `AddLoadStep` takes it.
/// @return its ID.
std::int32_t AddCopy(CLoadProfile& profile, const CLoadStep& step, std::int32_t position);

}  // namespace genvara
