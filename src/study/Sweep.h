#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "RaisedError.h"
#include "Stopping.h"
#include "Variation.h"

/// Sizes a project at every point of a grid of values.
namespace genvara {

/// FROM, TO and BY of a grid.
struct SweepRange {
    double from = 0.0;
    double to = 0.0;
    double by = 0.0;

    /// Number of values; more than can be counted is more than 1e18.
    [[nodiscard]] double Count() const noexcept;
    /// A value, counted from 0, in 15 digits as a person would write it.
    [[nodiscard]] double At(std::int64_t index) const;
};

/// What one would ask first of a numeric member, at about twenty round values: all that may be entered, or
/// half to double of what stands there, where there is no bound or one far beyond that.
[[nodiscard]] SweepRange FirstRange(const PropertyFacts& facts, double now);

/// One member with the values that it takes.
struct SweepAxis {
    std::string path;
    PropertyFacts facts;
    std::optional<SweepRange> range;    ///< of a numeric member, in place of the list
    std::vector<PropertyValue> values;  ///< where there is no range

    [[nodiscard]] double Count() const noexcept;
    [[nodiscard]] PropertyValue At(std::int64_t index) const;
};

/// Reads axes as they are entered, "PATH=FROM:TO:BY" or "PATH=VALUE,VALUE...". Each path is looked for in the
/// project with the first values of those before it, so that one may bring what another changes.
/// @throws RaisedError 0 with a sentence for a path or value that does not exist, a TO below FROM, a BY that
/// is
///         not above 0, a path that stands twice.
[[nodiscard]] std::vector<SweepAxis> ParseAxes(const std::vector<std::string>& texts,
                                               const StudyProject& project, const EntryRules& rules);

/// Points of a grid, as a double because nothing bounds them.
[[nodiscard]] double PointCount(const std::vector<SweepAxis>& axes) noexcept;

/// The values of a point, counted from 0, the last axis running fastest.
[[nodiscard]] std::vector<PropertyValue> ValuesAt(const std::vector<SweepAxis>& axes, std::int64_t index);

/// What a point came to: a sizing, or why it failed.
struct SweepPoint {
    std::vector<PropertyValue> at;  ///< in the order of the axes
    Sizing sizing;
    std::optional<RaisedError> error;
};

/// Whether two points have one answer: a row of the catalogue, none, or a failure. Failures may differ in the
/// figures that they tell. The numbers of sets that are listed do not count.
[[nodiscard]] bool IsSameAnswer(const SweepPoint& one, const SweepPoint& other);

using TakePoint = std::function<void(std::int64_t index, const SweepPoint& point)>;

/// Sizes every point, the last axis running fastest, and hands them over in this order.
/// @throws StudyStopped; whatever `take` throws.
void Sweep(const StudyProject& project, const std::vector<SweepAxis>& axes, const StudyTables& tables,
           std::int32_t jobs, const StopFlag& stop, const TakePoint& take);

/// A stretch of values with one answer.
struct SweepStretch {
    PropertyValue from;
    PropertyValue to;
    SweepPoint point;  ///< at its first value
};

using CountPoints = std::function<void(std::int64_t done)>;

/// The stretches between FROM and TO. The last value of one and the first of the next lie no further apart
/// than a thousandth of BY, whole numbers no further than 1. Of the changes between two neighbouring points
/// of the grid with different answers each that halving comes upon is found.
/// @param axis with a range of at most a million points.
/// @param count is told of each point of the grid that is done.
/// @throws StudyStopped.
[[nodiscard]] std::vector<SweepStretch> FindBreaks(const StudyProject& project, const SweepAxis& axis,
                                                   const StudyTables& tables, std::int32_t jobs,
                                                   const StopFlag& stop, const CountPoints& count);

}  // namespace genvara
