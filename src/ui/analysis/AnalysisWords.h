#pragma once

#include <QString>

#include "Explain.h"
#include "TextGrid.h"
#include "Variation.h"

/// What the analysis says of sets, tests and steps, with figures in the user's separator.
namespace genvara {

/// "MV900D (TN355A)"; the model alone where it has no alternator's name.
[[nodiscard]] QString SetName(const ChosenSet& set);
/// "MV900D", or "2 x MV400D" of sets in parallel.
[[nodiscard]] QString AnswerName(const Sizing& sizing);

/// "Voltage dip"; tests count as in `kStepTests`.
[[nodiscard]] QString TestName(std::size_t test);
/// "undersized: voltage dip, alternator start".
[[nodiscard]] QString VerdictText(const ExplainedSet& explained);
/// Why a set came to what it did, how far it is loaded, and its transient class, in a line.
[[nodiscard]] QString VerdictLine(const ExplainedSet& explained, const StudyProject& project);
/// What a test finds at a step, counted from 0.
[[nodiscard]] QString VerdictSentence(const ExplainedSet& explained, const CLoadProfile& profile,
                                      std::size_t test, std::size_t step);
/// "38 candidates for this site: 16 recommended, 17 undersized, 5 below the least loading."
[[nodiscard]] QString CountsText(const RunCounts& counts);

/// Why a test does not apply to a set: no limit is asked for, or the set has no data.
[[nodiscard]] QString WhyNotApplied(const ExplainedSet& explained, std::size_t test);

/// The sets across, the nine tests down, in each cell the margin of the tightest step.
[[nodiscard]] TextGrid TestsGrid(const Explanation& explanation, const CLoadProfile& profile);

}  // namespace genvara
