#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Sweep.h"

namespace genvara {

/// Prints the points of a sweep as they come.
class PointPrinter {
  public:
    PointPrinter() = default;
    virtual ~PointPrinter() = default;
    PointPrinter(const PointPrinter&) = delete;
    PointPrinter& operator=(const PointPrinter&) = delete;
    PointPrinter(PointPrinter&&) = delete;
    PointPrinter& operator=(PointPrinter&&) = delete;

    /// @throws LostOutput.
    virtual void Take(const SweepPoint& point) = 0;
    /// What stands behind the last point.
    /// @throws LostOutput.
    virtual void End() {}
};

/// One object a line.
[[nodiscard]] std::unique_ptr<PointPrinter> MakeJsonPrinter(const std::string& file,
                                                            const std::vector<SweepAxis>& axes);
/// A line of titles, and a line a point.
[[nodiscard]] std::unique_ptr<PointPrinter> MakeCsvPrinter(const std::vector<SweepAxis>& axes);
/// Aligned columns, with a mark where the answer changes.
[[nodiscard]] std::unique_ptr<PointPrinter> MakeTablePrinter(const std::string& file,
                                                             const std::vector<SweepAxis>& axes);

// The stretches of a sweep, each with its answer.
[[nodiscard]] std::string StretchesJson(const SweepAxis& axis, const std::vector<SweepStretch>& stretches);
[[nodiscard]] std::string StretchesCsv(const SweepAxis& axis, const std::vector<SweepStretch>& stretches);
[[nodiscard]] std::string StretchesTable(const std::string& file, const SweepAxis& axis,
                                         const std::vector<SweepStretch>& stretches);

}  // namespace genvara
