#include "WhatIfFigures.h"

#include <QObject>
#include <algorithm>
#include <memory>
#include <utility>

#include "AnalysisWords.h"
#include "BarChart.h"
#include "MapChart.h"
#include "PropertyText.h"
#include "StairChart.h"
#include "Texts.h"
#include "VerdictWords.h"

namespace genvara {
namespace {

double NumberOf(const PropertyValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    return whole == nullptr ? 0.0 : *whole;
}

std::optional<double> HeightOf(const SweepPoint& point) {
    return !point.error && point.sizing.set ? std::optional(point.sizing.total) : std::nullopt;
}

QString AnswerText(const SweepPoint& point) {
    return point.error ? QObject::tr("error") : AnswerName(point.sizing);
}

std::vector<GridColumn> AnswerColumns() {
    return {{.caption = QObject::tr("Set")},
            {.caption = QObject::tr("In all [kW]"), .isNumber = true},
            {.caption = QObject::tr("At the site [kW]"), .isNumber = true},
            {.caption = QObject::tr("Tightest test")},
            {.caption = QObject::tr("Step"), .isNumber = true},
            {.caption = QObject::tr("Left [%]"), .isNumber = true},
            {.caption = QObject::tr("Error")}};
}

void AddAnswer(std::vector<GridCell>& row, const SweepPoint& point) {
    const std::size_t length = row.size() + AnswerColumns().size();
    if (point.error) {
        row.resize(length - 1);
        row.push_back(TextCell(ToQt(point.error->Description())));
        return;
    }
    row.push_back(TextCell(AnswerName(point.sizing)));
    if (point.sizing.set) {
        row.push_back(NumberCell(point.sizing.total, 0));
        row.push_back(NumberCell(point.sizing.set->DeratedRating, 1));
        if (const auto& tightest = point.sizing.tightest) {
            row.push_back(TextCell(ToQt(CaptionOf(tightest->test))));
            row.push_back(NumberCell(tightest->stepNumber, 0));
            row.push_back(NumberCell(tightest->margin, 1));
        }
    }
    row.resize(length);
}

GridCell ValueCell(const SweepAxis& axis, const PropertyValue& value) {
    GridCell cell = TextCell(ShownValue(axis.facts, value));
    if (axis.range) {
        cell.number = NumberOf(value);
    }
    return cell;
}

GridColumn AxisColumn(const SweepAxis& axis, const StudyProject& project) {
    return {.caption = AxisName(axis, project), .isNumber = axis.range.has_value()};
}

/// The stretches of a sweep of one number: those that were found exactly, or its points as far as neighbours
/// have the same answer.
std::vector<SweepStretch> StretchesOf(const SweepAnswer& answer) {
    if (!answer.stretches.empty()) {
        return answer.stretches;
    }
    std::vector<SweepStretch> stretches;
    for (const SweepPoint& point : answer.points) {
        if (stretches.empty() || !IsSameAnswer(stretches.back().point, point)) {
            stretches.push_back({.from = point.at.front(), .to = point.at.front(), .point = point});
        } else {
            stretches.back().to = point.at.front();
        }
    }
    return stretches;
}

TextGrid StretchGrid(const std::vector<SweepStretch>& stretches, const SweepAxis& axis,
                     const StudyProject& project) {
    const QString name = AxisName(axis, project);
    TextGrid grid{.columns = {{.caption = QObject::tr("%1, from").arg(name), .isNumber = true},
                              {.caption = QObject::tr("to"), .isNumber = true}}};
    std::ranges::move(AnswerColumns(), std::back_inserter(grid.columns));
    for (const SweepStretch& stretch : stretches) {
        std::vector<GridCell> row{ValueCell(axis, stretch.from), ValueCell(axis, stretch.to)};
        AddAnswer(row, stretch.point);
        grid.rows.push_back(std::move(row));
    }
    return grid;
}

QString TitleOf(const SweepAnswer& answer, const StudyProject& project, std::size_t answers) {
    QStringList names;
    for (const SweepAxis& axis : answer.axes) {
        // What is the site's own needs no place.
        const QString name = AxisName(axis, project).section(" [", 0, 0);
        names += ParsePath(axis.path).step == 0 ? name.section(": ", 1) : name;
    }
    const QString title = QObject::tr("Smallest set by %1").arg(names.join(QObject::tr(" and ")));
    return title + ": " +
           (answers == 1 ? QObject::tr("the same throughout")
                         : QObject::tr("%1 different answers").arg(answers));
}

ChartPtr StairsOf(const SweepAnswer& answer, const StudyProject& project, const ExplainedSet* wanted) {
    const SweepAxis& axis = answer.axes.front();
    const std::vector<SweepStretch> stretches = StretchesOf(answer);
    StairChart::Figures figures{.across = AxisName(axis, project), .unit = "kW", .stretches = {}};
    for (const SweepStretch& stretch : stretches) {
        figures.stretches.push_back({.from = NumberOf(stretch.from),
                                     .to = NumberOf(stretch.to),
                                     .height = HeightOf(stretch.point),
                                     .label = AnswerText(stretch.point),
                                     .fails = stretch.point.error.has_value()});
    }
    for (std::size_t i = 1; i < answer.stretches.size(); ++i) {
        figures.marks.push_back(NumberOf(answer.stretches[i].from));
    }
    if (wanted != nullptr) {
        figures.level = TotalRating(wanted->set.NominalRating, project.powerSystem);
        figures.levelLabel = ToQt(wanted->set.ModelNum);
    }
    TextGrid table = StretchGrid(stretches, axis, project);
    table.title = TitleOf(answer, project, stretches.size());
    return std::make_shared<const StairChart>(std::move(table), std::move(figures));
}

ChartPtr BarsOf(const SweepAnswer& answer, const StudyProject& project, const ExplainedSet* wanted) {
    BarChart::Figures figures{.unit = "kW", .decimals = 0, .bars = {}};
    BarChart::Limit level;
    for (const SweepPoint& point : answer.points) {
        figures.bars.push_back({.number = ShownValue(answer.axes.front().facts, point.at.front()),
                                .name = AnswerText(point),
                                .value = HeightOf(point),
                                .fails = point.error.has_value()});
        if (wanted != nullptr) {
            level.heights.emplace_back(TotalRating(wanted->set.NominalRating, project.powerSystem));
        }
    }
    if (wanted != nullptr) {
        level.label = ToQt(wanted->set.ModelNum);
        figures.limits.push_back(std::move(level));
    }
    TextGrid table = SweepGrid(answer, project);
    return std::make_shared<const BarChart>(std::move(table), std::move(figures));
}

ChartPtr MapOf(const SweepAnswer& answer, const StudyProject& project) {
    const SweepAxis& across = answer.axes.front();
    const SweepAxis& up = answer.axes.back();
    MapChart::Figures figures{.across = AxisName(across, project),
                              .up = AxisName(up, project),
                              .columns = {},
                              .rows = {},
                              .cells = {}};
    const auto rows = static_cast<std::size_t>(up.Count());
    for (std::size_t row = 0; row < rows; ++row) {
        figures.rows.push_back(ShownValue(up.facts, up.At(static_cast<std::int64_t>(row))));
    }
    for (std::size_t i = 0; i < answer.points.size(); ++i) {
        const SweepPoint& point = answer.points[i];
        if (i % rows == 0) {
            figures.columns.push_back(ShownValue(across.facts, point.at.front()));
        }
        figures.cells.push_back(
            {.value = HeightOf(point), .label = AnswerText(point), .fails = point.error.has_value()});
    }
    return std::make_shared<const MapChart>(SweepGrid(answer, project), std::move(figures));
}

std::size_t CountAnswers(const SweepAnswer& answer) {
    std::vector<const SweepPoint*> different;
    for (const SweepPoint& point : answer.points) {
        if (std::ranges::none_of(different,
                                 [&](const SweepPoint* other) { return IsSameAnswer(*other, point); })) {
            different.push_back(&point);
        }
    }
    return different.size();
}

}  // namespace

QString RecordName(const PropertyPath& path, const StudyProject& project) {
    if (path.step == 0) {
        return path.record == record_kind::kDesigner ? QObject::tr("Options") : QObject::tr("Power system");
    }
    const QString step = QObject::tr("Step %1").arg(path.step);
    if (path.load == 0) {
        return step;
    }
    const Load& load = *std::next(project.loadProfile.LoadStep(path.step).begin(), path.load - 1);
    return step + QObject::tr(", load %1, ").arg(path.load) + ToQt(load.name());
}

QString ShownValue(const PropertyFacts& facts, const PropertyValue& value) {
    if (const auto* number = std::get_if<double>(&value)) {
        return ShownPlain(*number);
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return *truth ? QObject::tr("yes") : QObject::tr("no");
    }
    return ToQt(ValueText(facts, value));
}

QString AxisName(const SweepAxis& axis, const StudyProject& project) {
    const QString name = RecordName(ParsePath(axis.path), project) + ": " +
                         ToQt(axis.facts.words.empty() ? axis.facts.name : axis.facts.words);
    return axis.facts.unit.empty() ? name : name + " [" + ToQt(axis.facts.unit) + "]";
}

TextGrid SweepGrid(const SweepAnswer& answer, const StudyProject& project) {
    if (!answer.stretches.empty()) {
        TextGrid grid = StretchGrid(answer.stretches, answer.axes.front(), project);
        grid.title = TitleOf(answer, project, answer.stretches.size());
        return grid;
    }
    TextGrid grid;
    for (const SweepAxis& axis : answer.axes) {
        grid.columns.push_back(AxisColumn(axis, project));
    }
    std::ranges::move(AnswerColumns(), std::back_inserter(grid.columns));
    for (const SweepPoint& point : answer.points) {
        std::vector<GridCell> row;
        for (std::size_t i = 0; i < answer.axes.size(); ++i) {
            row.push_back(ValueCell(answer.axes[i], point.at[i]));
        }
        AddAnswer(row, point);
        grid.rows.push_back(std::move(row));
    }
    grid.title = TitleOf(answer, project, CountAnswers(answer));
    return grid;
}

ChartPtr SweepChart(const SweepAnswer& answer, const StudyProject& project, const ExplainedSet* wanted) {
    if (answer.axes.size() == 2) {
        return MapOf(answer, project);
    }
    return answer.axes.front().range ? StairsOf(answer, project, wanted) : BarsOf(answer, project, wanted);
}

}  // namespace genvara
