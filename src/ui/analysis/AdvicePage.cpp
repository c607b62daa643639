#include "AdvicePage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <thread>
#include <utility>

#include "AdviceFigures.h"
#include "AnalysisWords.h"
#include "FormGrid.h"
#include "GridView.h"
#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

/// Threads of a long study: one is left to the window.
std::int32_t JobsOfLongStudies() {
    return static_cast<std::int32_t>(std::max(1U, std::thread::hardware_concurrency() - 1U));
}

}  // namespace

AdvicePage::AdvicePage(AnalysisHost& host, const ExhibitDesk& desk, QWidget* parent)
    : AnalysisPage("pagAdvice", parent),
      m_host(&host),
      m_applied(new QLabel),
      m_now(new QLabel),
      m_advice(new GridView("tblAdvice", GridView::Choose::Rows)),
      m_changes(new GridView("tblChanges", GridView::Choose::Rows)),
      m_pairs(new QPushButton(tr("Try T&wo Changes Together"))),
      m_cancel(new QPushButton(tr("&Cancel"))),
      m_apply(new QPushButton(tr("Appl&y"))),
      m_progress(new QProgressBar),
      m_note(new QLabel) {
    m_applied->setObjectName("lblApplied");
    m_applied->setTextFormat(Qt::PlainText);
    m_applied->setWordWrap(true);
    m_applied->setFrameStyle(QFrame::Box | QFrame::Plain);
    m_applied->setAutoFillBackground(true);
    m_applied->setBackgroundRole(QPalette::ToolTipBase);
    m_applied->setForegroundRole(QPalette::ToolTipText);
    m_applied->setMargin(metrics::kGap);
    m_applied->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_applied->hide();
    m_now->setObjectName("lblNow");
    m_now->setTextFormat(Qt::PlainText);
    m_now->setWordWrap(true);
    m_note->setObjectName("lblAdviceNote");
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_advice->Stretch(0);
    m_changes->Stretch(0);
    m_changes->setSortingEnabled(false);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->addWidget(m_advice);
    parts->addWidget(m_changes);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kGap);
    column->setSpacing(metrics::kGap);
    column->addWidget(m_applied);
    column->addWidget(m_now);
    column->addWidget(parts, 1);
    column->addWidget(m_note);
    column->addWidget(MakeButtons());
    const auto tables = {m_advice, m_changes};
    for (GridView* table : tables) {
        desk.AddCommands(*table,
                         [table]() -> std::optional<Exhibit> { return Exhibit{.table = table->Shown()}; });
    }
    connect(m_advice, &GridView::Chosen, this, Event([this] { ShowChosen(); }));
    connect(m_advice, &GridView::Opened, this, Event([this] {
                if (m_apply->isEnabled()) {
                    Apply();
                }
            }));
    connect(&m_study, &BackgroundStudy::WorkingChanged, this, [this] { RefreshButtons(); });
    connect(&m_study, &BackgroundStudy::Progressed, this, [this](qint64 done, qint64 total) {
        constexpr int kParts = 1000;
        m_progress->setRange(0, total > 0 ? kParts : 0);
        m_progress->setValue(total > 0 ? static_cast<int>(done * kParts / total) : 0);
    });
    m_note->hide();
    RefreshButtons();
}

QWidget* AdvicePage::MakeButtons() {
    m_pairs->setObjectName("cmdPairs");
    m_cancel->setObjectName("cmdCancelAdvice");
    m_apply->setObjectName("cmdApply");
    m_progress->setObjectName("prgAdvice");
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(180);
    auto* row = new QWidget;
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(metrics::kGap);
    line->addWidget(m_pairs);
    line->addWidget(m_progress);
    line->addWidget(m_cancel);
    line->addStretch(1);
    line->addWidget(m_apply);
    connect(m_pairs, &QPushButton::clicked, this, Event([this] { Begin(true); }));
    connect(m_cancel, &QPushButton::clicked, this, Event([this] {
                m_study.Stop();
                ShowNow();
            }));
    connect(m_apply, &QPushButton::clicked, this, Event([this] { Apply(); }));
    return row;
}

void AdvicePage::Show(const AnalysisResult& result, int set) {
    m_result = result;
    m_set = set;
    m_isFresh = false;
    m_hasPairs = false;
    Begin(false);
}

void AdvicePage::Select(int set) {
    m_set = set;
    ShowList();
}

void AdvicePage::Stale() {
    m_study.Stop();
    m_isFresh = false;
    m_result = {};
    m_applied->hide();
    m_advice->Stale(true);
    RefreshButtons();
}

void AdvicePage::Begin(bool pairs) {
    m_study.Begin([this, result = m_result, pairs](StudyTurn& turn) -> BackgroundStudy::Answer {
        Outcome outcome;
        try {
            outcome.list = std::make_shared<const AdviceList>(Advise(
                *result.project, {.pairs = pairs}, result.desk->Tables(), pairs ? JobsOfLongStudies() : 1,
                turn.Stop(), [&](std::int64_t done, std::int64_t total) { turn.Done(done, total); }));
        } catch (const RaisedError& failure) {
            outcome.failure = ToQt(failure.Description());
        }
        return [this, outcome, pairs] { Take(outcome, pairs); };
    });
    ShowNow();
}

void AdvicePage::Take(const Outcome& outcome, bool pairs) {
    m_list = outcome.list;
    m_isFresh = m_list != nullptr;
    m_hasPairs = pairs && m_isFresh;
    m_advice->Stale(false);
    ShowList();
    if (!outcome.failure.isEmpty()) {
        m_now->setText(tr("No advice: %1").arg(outcome.failure));
    }
}

void AdvicePage::ShowList() {
    const ExplainedSet* wanted = m_result.Set(m_set);
    if (m_isFresh) {
        m_advice->Show(AdviceGrid(*m_list, wanted == nullptr ? nullptr : &wanted->set));
        if (m_advice->ChosenRow() < 0) {
            m_advice->ChooseRow(0);
        }
        ShowChosen();
    }
    ShowNow();
}

void AdvicePage::ShowNow() {
    if (!m_isFresh) {
        m_now->setText(m_study.IsWorking() ? tr("Looking for changes that let a smaller set do...")
                                           : QString());
        return;
    }
    QString text =
        m_list->now.set
            ? tr("Now: %1, %2 kW in all.").arg(AnswerName(m_list->now), ShownPlain(m_list->now.total))
            : tr("Now: no set does.");
    if (m_list->allBelowMinLoading) {
        text += " " + tr("Every candidate is too large: all stay below the least loading of %1 %.")
                          .arg(m_result.project->limits.MinLoading());
    }
    if (m_list->advice.empty()) {
        text += " " + (m_hasPairs ? tr("No change, and no two together, let a smaller set do.")
                                  : tr("No single change lets a smaller set do."));
    }
    if (const ExplainedSet* wanted = m_result.Set(m_set)) {
        const auto count = std::ranges::count_if(
            m_list->advice, [&](const Advice& advice) { return Reaches(advice, wanted->set); });
        if (count > 0) {
            text +=
                " " +
                tr("%n of them let %1 do, in bold.", "", static_cast<int>(count)).arg(SetName(wanted->set));
        }
    }
    m_now->setText(text);
}

const Advice* AdvicePage::Chosen() const {
    const int row = m_advice->ChosenRow();
    return m_isFresh && row >= 0 && static_cast<std::size_t>(row) < m_list->advice.size()
               ? &m_list->advice[static_cast<std::size_t>(row)]
               : nullptr;
}

void AdvicePage::ShowChosen() {
    const Advice* advice = Chosen();
    m_changes->Show(advice == nullptr ? TextGrid{} : ChangesGrid(*advice, *m_result.project));
    m_note->setVisible(advice != nullptr && ChangesOptions(*advice));
    m_note->setText(tr("The most loading holds for all projects: it is changed under Tools > Options."));
    RefreshButtons();
}

void AdvicePage::RefreshButtons() {
    const bool working = m_study.IsWorking();
    const Advice* advice = Chosen();
    m_pairs->setEnabled(m_isFresh && !working && !m_hasPairs);
    m_progress->setVisible(working);
    m_cancel->setVisible(working);
    m_apply->setEnabled(advice != nullptr && !ChangesOptions(*advice));
}

void AdvicePage::Apply() {
    const Advice* chosen = Chosen();
    if (chosen == nullptr || ChangesOptions(*chosen)) {
        return;
    }
    const Advice advice = *chosen;  // the list goes with the change
    const StudyProject varied = Altered(*m_result.project, advice.alterations, m_result.desk->Tables().rules);
    QStringList changes;
    for (const std::vector<GridCell>& row : ChangesGrid(advice, *m_result.project).rows) {
        changes += QString::fromUtf8("%1: %2 \u2192 %3").arg(row[0].text, row[1].text, row[2].text);
    }
    m_host->TakeVariation(tr("Apply Advice"), varied);
    m_applied->setText(tr("Applied: %1 Edit > Undo takes it back.").arg(ToQt(advice.text)) + '\n' +
                       changes.join('\n'));
    m_applied->show();
}

}  // namespace genvara
