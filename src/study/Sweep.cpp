#include "Sweep.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <tuple>
#include <utility>

#include "AxisTicks.h"
#include "InOrder.h"
#include "NumberText.h"
#include "VariedProject.h"

namespace genvara {
namespace {

constexpr double kMostCounted = 1e18;
/// A step that misses TO by less than this share of itself hits it.
constexpr double kHit = 1e-9;
constexpr double kBoundsPerStep = 1000.0;
/// Values of a range that nobody has entered yet, and how many times the present one its bound may be.
constexpr int kAboutPoints = 21;
constexpr double kFarAway = 50.0;
/// What figures are written with.
constexpr std::string_view kFigures = "0123456789.+-";

[[noreturn]] void Refuse(std::string description) {
    throw RaisedError(0, "", std::move(description));
}

bool IsNumeric(PropertyType type) noexcept {
    return type == PropertyType::Real || type == PropertyType::Whole;
}

double Rounded(double value) {
    return ParseNumber(RenderPlain(value)).value_or(value);
}

std::vector<std::string_view> Split(std::string_view text, char mark) {
    std::vector<std::string_view> parts;
    for (std::size_t end = text.find(mark); end != std::string_view::npos; end = text.find(mark)) {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

double RequireNumber(std::string_view text, std::string_view whole) {
    const std::optional<double> number = ParseNumber(text);
    if (!number || !std::isfinite(*number)) {
        Refuse(fmt::format("\"{}\" in \"{}\" is no number.", text, whole));
    }
    return *number;
}

PropertyValue AsValue(PropertyType type, double number) {
    if (type == PropertyType::Real) {
        return number;
    }
    return static_cast<std::int32_t>(std::llround(number));
}

/// Makes sure that a person may enter the number.
void RequireWithin(const PropertyFacts& facts, double value) {
    (void)ParseValue(facts, RenderPlain(value));
}

SweepRange ParseRange(const PropertyFacts& facts, std::string_view text) {
    const std::vector<std::string_view> parts = Split(text, ':');
    if (parts.size() != 3) {
        Refuse(fmt::format("\"{}\" is no range: one reads FROM:TO:BY.", text));
    }
    const SweepRange range{.from = RequireNumber(parts[0], text),
                           .to = RequireNumber(parts[1], text),
                           .by = RequireNumber(parts[2], text)};
    if (!(range.by > 0.0)) {
        Refuse(fmt::format("BY must be above 0, which {} in \"{}\" is not.", parts[2], text));
    }
    if (range.from > range.to) {
        Refuse(fmt::format("FROM must not be above TO, as {} is in \"{}\".", parts[0], text));
    }
    RequireWithin(facts, range.from);
    RequireWithin(facts, range.to);
    if (facts.type != PropertyType::Real && range.by != std::floor(range.by)) {
        Refuse(fmt::format("{} has whole numbers, between which BY cannot be {}.", facts.name, parts[2]));
    }
    for (double value = range.from; !facts.only.empty() && value <= range.to; value += range.by) {
        RequireWithin(facts, value);
    }
    return range;
}

std::vector<PropertyValue> ParseList(const PropertyFacts& facts, std::string_view text) {
    // A text with a comma may be meant as it stands, as may the name of a code.
    if (facts.type == PropertyType::Code) {
        for (const CodeName& code : facts.codes) {
            if (code.Name() == text) {
                return {code.Code()};
            }
        }
    }
    std::vector<PropertyValue> values;
    for (const std::string_view part : Split(text, ',')) {
        values.push_back(ParseValue(facts, part));
    }
    return values;
}

/// Whether two paths lead to one member: "Step[01]" is "Step[1]".
bool IsSameMember(const PropertyPath& one, const PropertyPath& other) {
    return std::tie(one.record, one.step, one.load, one.member) ==
           std::tie(other.record, other.step, other.load, other.member);
}

SweepAxis ParseAxis(std::string_view text, StudyProject& project) {
    const std::size_t mark = text.find('=');
    if (mark == std::string_view::npos) {
        Refuse(fmt::format("\"{}\" says no values: write PATH=FROM:TO:BY or PATH=VALUE,VALUE...", text));
    }
    SweepAxis axis;
    axis.path = text.substr(0, mark);
    axis.facts = FactsOf(FollowPath(axis.path, RootsOf(project)));
    const std::string_view values = text.substr(mark + 1);
    if (IsNumeric(axis.facts.type) && values.find(':') != std::string_view::npos) {
        axis.range = ParseRange(axis.facts, values);
    } else {
        axis.values = ParseList(axis.facts, values);
    }
    return axis;
}

/// Sizes points of one project. Of one thread.
class PointSizer {
  public:
    PointSizer(const StudyProject& project, const std::vector<SweepAxis>& axes, const StudyTables& tables)
        : m_axes(&axes), m_project(project, tables.rules), m_sizer(tables) {}

    [[nodiscard]] SweepPoint At(std::vector<PropertyValue> values, DesignSearch::Goal goal) {
        SweepPoint point;
        point.at = std::move(values);
        std::vector<MemberValue> changes;
        for (std::size_t i = 0; i < m_axes->size(); ++i) {
            changes.push_back({(*m_axes)[i].path, point.at[i]});
        }
        try {
            point.sizing = m_sizer.Size(m_project.With(changes), goal);
        } catch (const RaisedError& failure) {
            point.error = failure;
        }
        return point;
    }

  private:
    const std::vector<SweepAxis>* m_axes;
    VariedProject m_project;
    ProjectSizer m_sizer;
};

/// What a failure says, without the figures that go with the values of its point.
std::string WithoutFigures(std::string text) {
    std::erase_if(text, [](char letter) { return kFigures.find(letter) != std::string_view::npos; });
    return text;
}

bool IsSameFailure(const RaisedError& one, const RaisedError& other) {
    return one.Number() == other.Number() && one.Source() == other.Source() &&
           WithoutFigures(one.Description()) == WithoutFigures(other.Description());
}

/// Finds the changes between points of the grid.
class BreakFinder {
  public:
    BreakFinder(const StudyProject& project, const SweepAxis& axis, const StudyTables& tables,
                const StopFlag& stop)
        : m_axes{axis}, m_stop(&stop), m_sizer(project, m_axes, tables) {
        const bool isReal = axis.facts.type == PropertyType::Real;
        // Numbers that are no range have nothing between them.
        m_least = !axis.facts.only.empty() ? axis.range->by : isReal ? axis.range->by / kBoundsPerStep : 1.0;
    }

    /// Takes the next point of the grid.
    void Take(double value, SweepPoint point) {
        if (m_stretches.empty()) {
            Begin(value, std::move(point));
        } else {
            Between(m_last, m_stretches.back().point, value, point);
        }
        m_last = value;
        m_stretches.back().to = Value(value);
    }

    [[nodiscard]] std::vector<SweepStretch> Release() { return std::move(m_stretches); }

  private:
    [[nodiscard]] PropertyValue Value(double number) const {
        return AsValue(m_axes.front().facts.type, number);
    }

    void Begin(double value, SweepPoint point) {
        m_stretches.push_back({.from = Value(value), .to = Value(value), .point = std::move(point)});
    }

    /// Files the changes between two values, from the lower one up. The lower point may stand in what grows
    /// here, and so it is copied.
    // NOLINTNEXTLINE(performance-unnecessary-value-param)
    void Between(double low, const SweepPoint lowPoint, double high, const SweepPoint& highPoint) {
        if (IsSameAnswer(lowPoint, highPoint)) {
            return;
        }
        const double middle = Middle(low, high);
        if (high - low <= m_least || !(middle > low && middle < high)) {
            m_stretches.back().to = Value(low);
            Begin(high, highPoint);
            return;
        }
        RequireGoingOn(*m_stop);
        const SweepPoint between = m_sizer.At({Value(middle)}, DesignSearch::Goal::First);
        Between(low, lowPoint, middle, between);
        Between(middle, between, high, highPoint);
    }

    [[nodiscard]] double Middle(double low, double high) const {
        const double middle = low + (high - low) / 2.0;
        return m_axes.front().facts.type == PropertyType::Real ? middle : std::floor(middle);
    }

    std::vector<SweepAxis> m_axes;
    const StopFlag* m_stop;
    PointSizer m_sizer;
    double m_least = 1.0;
    double m_last = 0.0;
    std::vector<SweepStretch> m_stretches;
};

}  // namespace

SweepRange FirstRange(const PropertyFacts& facts, double now) {
    const Bounds& bounds = facts.Enterable();
    double least = bounds.least.value_or(now / 2);
    double most = bounds.greatest.value_or(now * 2);
    if (now > 0.0 && most > now * kFarAway) {
        most = now * 2;
        least = std::max(least, now / 2);
    }
    const AxisTicks ticks = TicksOver(least, most > least ? most : least + 1.0, kAboutPoints);
    double by = ticks.values.size() > 1 ? ticks.values[1] - ticks.values[0] : 1.0;
    if (facts.type == PropertyType::Whole) {
        by = std::max(1.0, std::round(by));
    }
    const double from = bounds.least && ticks.least < *bounds.least ? *bounds.least : ticks.least;
    const double to =
        bounds.greatest && ticks.greatest > *bounds.greatest ? *bounds.greatest : ticks.greatest;
    return {.from = bounds.aboveLeast && from <= *bounds.least ? from + by : from, .to = to, .by = by};
}

double SweepRange::Count() const noexcept {
    return std::min(std::floor((to - from) / by + kHit) + 1.0, kMostCounted);
}

double SweepRange::At(std::int64_t index) const {
    return std::min(Rounded(from + static_cast<double>(index) * by), to);
}

double SweepAxis::Count() const noexcept {
    return range ? range->Count() : static_cast<double>(values.size());
}

PropertyValue SweepAxis::At(std::int64_t index) const {
    return range ? AsValue(facts.type, range->At(index)) : values[static_cast<std::size_t>(index)];
}

std::vector<SweepAxis> ParseAxes(const std::vector<std::string>& texts, const StudyProject& project,
                                 const EntryRules& rules) {
    std::vector<SweepAxis> axes;
    StudyProject probe = project;
    for (const std::string& text : texts) {
        SweepAxis axis = ParseAxis(text, probe);
        const auto isVaried = [path = ParsePath(axis.path)](const SweepAxis& earlier) {
            return IsSameMember(path, ParsePath(earlier.path));
        };
        if (std::ranges::any_of(axes, isVaried)) {
            Refuse(fmt::format("{} cannot be varied twice.", axis.path));
        }
        try {
            Change(probe, {axis.path, axis.At(0)}, rules);
        } catch (const RaisedError&) {
            // That value's points fail; what others bring cannot be told from here.
        }
        axes.push_back(std::move(axis));
    }
    return axes;
}

double PointCount(const std::vector<SweepAxis>& axes) noexcept {
    double count = 1.0;
    for (const SweepAxis& axis : axes) {
        count *= axis.Count();
    }
    return count;
}

std::vector<PropertyValue> ValuesAt(const std::vector<SweepAxis>& axes, std::int64_t index) {
    std::vector<PropertyValue> values(axes.size());
    for (std::size_t i = axes.size(); i-- > 0;) {
        const auto count = static_cast<std::int64_t>(axes[i].Count());
        values[i] = axes[i].At(index % count);
        index /= count;
    }
    return values;
}

bool IsSameAnswer(const SweepPoint& one, const SweepPoint& other) {
    if (one.error && other.error) {
        return IsSameFailure(*one.error, *other.error);
    }
    return !one.error && !other.error && one.sizing.IsSameRow(other.sizing);
}

void Sweep(const StudyProject& project, const std::vector<SweepAxis>& axes, const StudyTables& tables,
           std::int32_t jobs, const StopFlag& stop, const TakePoint& take) {
    const auto makeWorker = [&] {
        return [&, sizer = PointSizer(project, axes, tables)](std::int64_t index) mutable {
            return sizer.At(ValuesAt(axes, index), DesignSearch::Goal::Count);
        };
    };
    DoInOrder(static_cast<std::int64_t>(PointCount(axes)), jobs, stop, makeWorker, take);
}

std::vector<SweepStretch> FindBreaks(const StudyProject& project, const SweepAxis& axis,
                                     const StudyTables& tables, std::int32_t jobs, const StopFlag& stop,
                                     const CountPoints& count) {
    const SweepRange& range = axis.range.value();
    const auto steps = static_cast<std::int64_t>(range.Count());
    // TO ends the last stretch whether a step hits it or not.
    const bool hitsEnd = range.At(steps - 1) == range.to;
    const auto valueAt = [&](std::int64_t index) { return index < steps ? range.At(index) : range.to; };
    const std::vector<SweepAxis> axes{axis};
    BreakFinder finder(project, axis, tables, stop);
    const auto makeWorker = [&] {
        return [&, sizer = PointSizer(project, axes, tables)](std::int64_t index) mutable {
            return sizer.At({AsValue(axis.facts.type, valueAt(index))}, DesignSearch::Goal::First);
        };
    };
    DoInOrder(hitsEnd ? steps : steps + 1, jobs, stop, makeWorker, [&](std::int64_t index, SweepPoint point) {
        finder.Take(valueAt(index), std::move(point));
        count(index + 1);
    });
    return finder.Release();
}

}  // namespace genvara
