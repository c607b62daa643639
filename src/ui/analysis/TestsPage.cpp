#include "TestsPage.h"

#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "AnalysisWords.h"
#include "FormGrid.h"
#include "GridView.h"
#include "LastChance.h"
#include "VerdictWords.h"

namespace genvara {

TestsPage::TestsPage(const ExhibitDesk& desk, QWidget* parent)
    : AnalysisPage("pagTests", parent),
      m_grid(new GridView("tblTests", GridView::Choose::Cells)),
      m_counts(new QLabel),
      m_cell(new QLabel) {
    m_counts->setObjectName("lblCounts");
    m_cell->setObjectName("lblTestCell");
    for (QLabel* label : {m_counts, m_cell}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kGap);
    column->setSpacing(metrics::kGap);
    column->addWidget(m_counts);
    column->addWidget(m_grid, 1);
    column->addWidget(m_cell);
    desk.AddCommands(*m_grid,
                     [this]() -> std::optional<Exhibit> { return Exhibit{.table = m_grid->Shown()}; });
    connect(m_grid, &GridView::Chosen, this, Event([this](int test, int set) {
                ShowCell(test, set);
                emit SetChosen(set);
            }));
    connect(m_grid, &GridView::Opened, this,
            Event([this](int test, int set) { emit StepsAsked(set, test); }));
}

void TestsPage::Show(const AnalysisResult& result, int set) {
    m_result = result;
    m_grid->Show(TestsGrid(*result.explanation, result.project->loadProfile));
    m_grid->Stale(false);
    m_counts->setText(CountsText(result.explanation->counts));
    Select(set);
}

void TestsPage::Select(int set) {
    const int test = std::max(m_grid->ChosenRow(), 0);
    if (set != m_grid->ChosenColumn()) {
        m_grid->ChooseCell(set < 0 ? -1 : test, set);
    }
    ShowCell(test, set);
}

void TestsPage::Stale() {
    m_grid->Stale(true);
}

void TestsPage::ShowCell(int test, int set) {
    const ExplainedSet* explained = m_result.Set(set);
    if (explained == nullptr || explained->steps.empty() || test < 0) {
        m_cell->clear();
        return;
    }
    const auto number = static_cast<std::size_t>(test);
    m_cell->setText(tr("%1, %2: %3. Enter shows its steps.")
                        .arg(SetName(explained->set), TestName(number).toLower(),
                             VerdictSentence(*explained, m_result.project->loadProfile, number,
                                             WorstStep(explained->steps, number))));
}

}  // namespace genvara
