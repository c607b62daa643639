#pragma once

#include <vector>

#include "Advise.h"
#include "AnalysisResult.h"
#include "PageFlow.h"

namespace genvara {

/// The report "Analysis": site and verdict of a set, the tests of all listed sets, what each step needs of
/// this one, and what would let a smaller set do.
/// @param set position among the listed sets
/// @param advice the list; null while it is worked out
/// @param now when the report is made
[[nodiscard]] std::vector<FlowBlock> AnalysisReport(const AnalysisResult& result, int set,
                                                    const AdviceList* advice, const DateTime& now);

}  // namespace genvara
