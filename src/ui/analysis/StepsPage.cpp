#include "StepsPage.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>

#include "AnalysisWords.h"
#include "ChartView.h"
#include "FormGrid.h"
#include "LastChance.h"

namespace genvara {
namespace {

constexpr int kChartHeight = 230;  // pixels
constexpr int kColumns = 2;

}  // namespace

StepsPage::StepsPage(const ExhibitDesk& desk, QWidget* parent)
    : AnalysisPage("pagSteps", parent), m_scroll(new QScrollArea), m_step(new QLabel) {
    m_step->setObjectName("lblStep");
    m_step->setTextFormat(Qt::PlainText);
    m_step->setWordWrap(true);
    auto* charts = new QWidget;
    auto* grid = new QGridLayout(charts);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(metrics::kGap);
    for (std::size_t i = 0; i < kStepCharts; ++i) {
        auto* view = new ChartView(QString("chaStep%1").arg(i));
        view->setMinimumHeight(kChartHeight);
        grid->addWidget(view, static_cast<int>(i) / kColumns, static_cast<int>(i) % kColumns);
        desk.AddCommands(*view, [view]() -> std::optional<Exhibit> {
            return view->Shown()
                       ? std::optional(Exhibit{.table = view->Shown()->Table(), .chart = view->Shown()})
                       : std::nullopt;
        });
        connect(view, &ChartView::Marked, this, Event([this, view](int step) { StepMarked(view, step); }));
        m_views.push_back(view);
    }
    m_scroll->setObjectName("scrSteps");
    m_scroll->setWidget(charts);
    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kGap);
    column->setSpacing(metrics::kGap);
    column->addWidget(m_scroll, 1);
    column->addWidget(m_step);
}

void StepsPage::Show(const AnalysisResult& result, int set) {
    m_result = result;
    Select(set);
    for (ChartView* view : m_views) {
        view->Stale(false);
    }
}

void StepsPage::Select(int set) {
    const ExplainedSet* explained = m_result.Set(set);
    m_step->clear();
    if (explained == nullptr) {
        for (ChartView* view : m_views) {
            view->Show(nullptr);
        }
        return;
    }
    const std::vector<StepChart> charts = StepChartsOf(*explained, *m_result.project);
    for (std::size_t i = 0; i < charts.size(); ++i) {
        m_views[i]->Show(charts[i].chart);
    }
}

void StepsPage::Stale() {
    for (ChartView* view : m_views) {
        view->Stale(true);
    }
}

void StepsPage::ShowTest(std::size_t test) {
    ChartView* view = m_views[ChartOfTest(test)];
    view->setFocus(Qt::OtherFocusReason);
    m_scroll->ensureWidgetVisible(view, 0, metrics::kGap);
}

void StepsPage::StepMarked(const ChartView* by, int step) {
    // The other charts mark the same step, so that one reads across.
    for (ChartView* view : m_views) {
        if (view != by) {
            const QSignalBlocker quiet(view);
            view->MarkRow(step);
        }
    }
    const ChartPtr& chart = by->Shown();
    const auto row = static_cast<std::size_t>(step);
    if (!chart || row >= chart->Table().rows.size()) {
        m_step->clear();
        return;
    }
    const TextGrid& table = chart->Table();
    QStringList words;
    for (std::size_t column = 1; column < table.columns.size(); ++column) {
        const QString& text = table.rows[row][column].text;
        if (!text.isEmpty()) {
            words += column == 1 ? text : table.columns[column].caption.toLower() + " " + text;
        }
    }
    m_step->setText(tr("Step %1: %2").arg(step + 1).arg(words.join("; ")));
}

}  // namespace genvara
