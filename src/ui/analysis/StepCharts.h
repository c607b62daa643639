#pragma once

#include <cstddef>
#include <vector>

#include "BarChart.h"
#include "Explain.h"
#include "Variation.h"

namespace genvara {

/// A chart of what each step needs against what is there.
struct StepChart {
    std::vector<std::size_t> tests;  ///< that it shows, as in `kStepTests`; the first gives the bars
    ChartPtr chart;
};

/// The charts of a set: voltage dip, frequency dip, starting kVA, running kW and distortion first, then what
/// the other tests look at.
[[nodiscard]] std::vector<StepChart> StepChartsOf(const ExplainedSet& explained, const StudyProject& project);

/// Number of those charts.
inline constexpr std::size_t kStepCharts = 8;

/// Position of the chart that shows a test.
[[nodiscard]] std::size_t ChartOfTest(std::size_t test);

}  // namespace genvara
