#include "StepCharts.h"

#include <QObject>
#include <QStringList>
#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <utility>

#include "AnalysisWords.h"
#include "Texts.h"

namespace genvara {
namespace {

// Positions in `kStepTests`.
constexpr std::size_t kEngineStart = 0;
constexpr std::size_t kRating = 1;
constexpr std::size_t kMaxLoading = 2;
constexpr std::size_t kPhaseLoading = 3;
constexpr std::size_t kOneStep = 4;
constexpr std::size_t kFrequencyDip = 5;
constexpr std::size_t kAlternatorStart = 6;
constexpr std::size_t kVoltageDip = 7;
constexpr std::size_t kDistortion = 8;
constexpr std::size_t kNone = kStepTests.size();

/// What a chart shows: the test that gives its bars, and perhaps one with a second limit for the same bars.
struct Recipe {
    std::size_t test;
    std::size_t second;
    const char* title;
    const char* limit;    ///< what stands at the end of the limit's line
    const char* further;  ///< the same of the second
};

constexpr std::array<Recipe, kStepCharts> kRecipes{{
    {kVoltageDip, kNone, "Voltage dip by step", "limit", ""},
    {kFrequencyDip, kNone, "Frequency dip by step", "limit", ""},
    {kAlternatorStart, kNone, "Starting kVA by step", "within the dip", ""},
    {kMaxLoading, kRating, "Running kW by step", "most loading", "rating"},
    {kDistortion, kNone, "Voltage distortion by step", "limit", ""},
    {kEngineStart, kNone, "Starting kW by step", "engine", ""},
    {kOneStep, kNone, "kW that start at once by step", "in one step", ""},
    {kPhaseLoading, kNone, "Heaviest phase by step", "of a phase", ""},
}};

class StepChartMaker {
  public:
    StepChartMaker(const ExplainedSet& explained, const StudyProject& project, const Recipe& recipe)
        : m_explained(&explained),
          m_project(&project),
          m_recipe(&recipe),
          m_unit(ToQt(kStepTests[recipe.test].unit)) {}

    [[nodiscard]] StepChart Make() {
        AddColumns();
        BarChart::Figures figures{.unit = m_unit, .decimals = 1, .bars = {}, .note = Note()};
        for (std::size_t step = 0; step < m_explained->steps.size(); ++step) {
            figures.bars.push_back(BarOf(step));
            m_table.rows.push_back(RowOf(step));
        }
        if (m_explained->steps.empty() || Fits(figures)) {
            figures.decimals = 0;
        }
        AddLimit(figures, m_recipe->test, m_recipe->limit);
        AddLimit(figures, m_recipe->second, m_recipe->further);
        m_table.title = Title();
        std::vector<std::size_t> tests{m_recipe->test};
        if (m_recipe->second != kNone) {
            tests.push_back(m_recipe->second);
        }
        return {std::move(tests), std::make_shared<const BarChart>(std::move(m_table), std::move(figures))};
    }

  private:
    [[nodiscard]] const Verdict& At(std::size_t step, std::size_t test) const {
        return m_explained->steps[step][test];
    }
    [[nodiscard]] bool FailsAt(std::size_t step) const {
        return At(step, m_recipe->test).Fails() ||
               (m_recipe->second != kNone && At(step, m_recipe->second).Fails());
    }
    /// Powers above a hundred are read without decimals.
    [[nodiscard]] bool Fits(const BarChart::Figures& figures) const {
        constexpr double kManyKilowatts = 100.0;
        return kStepTests[m_recipe->test].figure == Figure::None &&
               std::ranges::any_of(figures.bars, [](const BarChart::Bar& bar) {
                   return bar.value.value_or(0.0) >= kManyKilowatts;
               });
    }

    [[nodiscard]] QString Note() const {
        if (m_explained->steps.empty() || At(0, m_recipe->test).applies) {
            return {};
        }
        if (WhyNotApplied(*m_explained, m_recipe->test) != QObject::tr("no data")) {
            return {};
        }
        return m_recipe->test == kDistortion
                   ? QObject::tr("Distortion is not worked out for this connection or this alternator.")
                   : QObject::tr("The catalogue has no frequency data for this set.");
    }

    void AddColumns() {
        const QString unit = " [" + m_unit + "]";
        m_table.columns = {{.caption = QObject::tr("Step"), .isNumber = true},
                           {.caption = QObject::tr("Description")},
                           {.caption = QObject::tr("Needed") + unit, .isNumber = true},
                           {.caption = QObject::tr("There") + unit, .isNumber = true}};
        if (m_recipe->second != kNone) {
            m_table.columns.push_back({.caption = QObject::tr("Rating") + unit, .isNumber = true});
        }
        m_table.columns.push_back({.caption = QObject::tr("Left [%]"), .isNumber = true});
        m_table.columns.push_back({.caption = QObject::tr("Verdict")});
    }

    [[nodiscard]] QString Description(std::size_t step) const {
        const auto number = static_cast<std::int32_t>(step) + 1;
        return number <= m_project->loadProfile.NumLoadSteps()
                   ? ToQt(m_project->loadProfile.LoadStep(number).Description())
                   : QString();
    }

    [[nodiscard]] BarChart::Bar BarOf(std::size_t step) const {
        return {.number = QString::number(step + 1),
                .name = Description(step),
                .value = At(step, m_recipe->test).needed,
                .fails = FailsAt(step)};
    }

    [[nodiscard]] std::vector<GridCell> RowOf(std::size_t step) const {
        const Verdict& verdict = At(step, m_recipe->test);
        GridCell number = TextCell(QString::number(step + 1));
        number.number = static_cast<double>(step + 1);
        std::vector<GridCell> row{std::move(number), TextCell(Description(step)),
                                  NumberCell(verdict.needed, 1)};
        row.push_back(verdict.applies ? NumberCell(verdict.available, 1)
                                      : TextCell(WhyNotApplied(*m_explained, m_recipe->test)));
        if (m_recipe->second != kNone) {
            row.push_back(NumberCell(At(step, m_recipe->second).available, 1));
        }
        const std::optional<double> margin = verdict.Margin();
        row.push_back(margin ? NumberCell(*margin, 1) : GridCell{});
        row.push_back(TextCell(FailsAt(step)      ? QObject::tr("fails")
                               : !verdict.applies ? WhyNotApplied(*m_explained, m_recipe->test)
                                                  : QObject::tr("passes")));
        return row;
    }

    void AddLimit(BarChart::Figures& figures, std::size_t test, const char* label) const {
        if (test == kNone) {
            return;
        }
        BarChart::Limit limit;
        for (std::size_t step = 0; step < m_explained->steps.size(); ++step) {
            const Verdict& verdict = At(step, test);
            limit.heights.push_back(verdict.applies ? std::optional(verdict.available) : std::nullopt);
        }
        if (std::ranges::none_of(limit.heights, [](const auto& height) { return height.has_value(); })) {
            return;
        }
        limit.label = QString("%1 %2 %3").arg(QObject::tr(label), Number(*LastOf(limit.heights)), m_unit);
        figures.limits.push_back(std::move(limit));
    }
    [[nodiscard]] static std::optional<double> LastOf(const std::vector<std::optional<double>>& heights) {
        return *std::find_if(heights.rbegin(), heights.rend(),
                             [](const auto& height) { return height.has_value(); });
    }
    [[nodiscard]] QString Number(double value) const {
        return kStepTests[m_recipe->test].unit == "%" ? ShownPlain(value) : ShownNumber(value, 0);
    }

    /// "Voltage dip by step, MV900D: limit 10 %", or which steps fail.
    [[nodiscard]] QString Title() const {
        const QString name =
            QString("%1, %2: ").arg(QObject::tr(m_recipe->title), ToQt(m_explained->set.ModelNum));
        QStringList failed;
        double least = 0.0;
        double greatest = 0.0;
        bool applies = false;
        for (std::size_t step = 0; step < m_explained->steps.size(); ++step) {
            const Verdict& verdict = At(step, m_recipe->test);
            if (FailsAt(step)) {
                failed += QString::number(step + 1);
            }
            if (verdict.applies) {
                least = applies ? std::min(least, verdict.available) : verdict.available;
                greatest = applies ? std::max(greatest, verdict.available) : verdict.available;
                applies = true;
            }
        }
        if (!failed.isEmpty()) {
            constexpr qsizetype kMostNamed = 6;
            const qsizetype more = failed.size() - kMostNamed;
            const QString which =
                more > 0 ? failed.mid(0, kMostNamed).join(", ") + QObject::tr(" and %1 more").arg(more)
                         : failed.join(", ");
            return name + (failed.size() == 1 ? QObject::tr("step %1 fails") : QObject::tr("steps %1 fail"))
                              .arg(which);
        }
        if (!applies) {
            return name + (m_explained->steps.empty() ? QObject::tr("no steps")
                                                      : WhyNotApplied(*m_explained, m_recipe->test));
        }
        return name + (least < greatest
                           ? QObject::tr("limit %1 to %2 %3").arg(Number(least), Number(greatest), m_unit)
                           : QObject::tr("limit %1 %2").arg(Number(least), m_unit));
    }

    const ExplainedSet* m_explained;
    const StudyProject* m_project;
    const Recipe* m_recipe;
    QString m_unit;
    TextGrid m_table;
};

}  // namespace

std::vector<StepChart> StepChartsOf(const ExplainedSet& explained, const StudyProject& project) {
    std::vector<StepChart> charts;
    charts.reserve(kRecipes.size());
    for (const Recipe& recipe : kRecipes) {
        charts.push_back(StepChartMaker(explained, project, recipe).Make());
    }
    return charts;
}

std::size_t ChartOfTest(std::size_t test) {
    const auto* const found = std::ranges::find_if(
        kRecipes, [test](const Recipe& recipe) { return recipe.test == test || recipe.second == test; });
    return static_cast<std::size_t>(found - kRecipes.begin());
}

}  // namespace genvara
