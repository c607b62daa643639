#pragma once

#include <vector>

#include "Chart.h"
#include "Explain.h"
#include "Sweep.h"

namespace genvara {

/// What a sweep of one or two values came to.
struct SweepAnswer {
    std::vector<SweepAxis> axes;
    std::vector<SweepPoint> points;       ///< the last axis fastest; of exact stretches none
    std::vector<SweepStretch> stretches;  ///< where the answer changes exactly, if that was asked for
};

/// "Power system: altitude above sea level [m]", for people.
[[nodiscard]] QString AxisName(const SweepAxis& axis, const StudyProject& project);
/// Where a member stands: "Power system", "Options", "Step 2", "Step 2, load 1, Chiller".
[[nodiscard]] QString RecordName(const PropertyPath& path, const StudyProject& project);
/// A value as people read it, in the user's separator.
[[nodiscard]] QString ShownValue(const PropertyFacts& facts, const PropertyValue& value);

/// The smallest set over one value, or over two.
/// @param wanted set whose rating is shown for comparison; may be null
[[nodiscard]] ChartPtr SweepChart(const SweepAnswer& answer, const StudyProject& project,
                                  const ExplainedSet* wanted);

/// A row for each point, or for each stretch.
[[nodiscard]] TextGrid SweepGrid(const SweepAnswer& answer, const StudyProject& project);

}  // namespace genvara
