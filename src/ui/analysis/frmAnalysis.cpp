#include "frmAnalysis.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <utility>

#include "AdvicePage.h"
#include "AnalysisReport.h"
#include "AnalysisWords.h"
#include "ChoiceBox.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "NoticeBar.h"
#include "OrderPage.h"
#include "RunCulprit.h"
#include "StepsPage.h"
#include "TestsPage.h"
#include "Texts.h"
#include "WhatIfPage.h"
#include "WorkOutLoads.h"

namespace genvara {
namespace {

constexpr QSize kSize(1020, 700);  // pixels
/// Changes that follow each other so closely are one [ms]: somebody is typing.
constexpr int kSoon = 40;
constexpr int kSetCharacters = 44;

QString WhyNot(const RaisedError& failure, const StudyProject& project) {
    const auto culprit = FindCulprit(failure, project.loadProfile, project.powerSystem);
    const QString why = ToQt(failure.Description());
    return culprit ? frmAnalysis::tr("The gensets cannot be worked out because of %1: %2")
                         .arg(ToQt(CulpritText(*culprit)), why)
                   : frmAnalysis::tr("The gensets cannot be worked out: %1").arg(why);
}

bool HasLoads(const StudyProject& project) {
    return project.loadProfile.NumLoadSteps() > 0 && project.loadProfile.LoadStep(1).NumLoads() > 0;
}

frmAnalysis::SetKey KeyOf(const ChosenSet& set) {
    return {.model = set.ModelNum, .alternator = set.AltNum, .engine = set.EngineNum};
}

}  // namespace

frmAnalysis::frmAnalysis(AnalysisHost& host, Catalogue& catalogue, const ExhibitDesk& desk, QWidget* parent)
    : QMainWindow(parent, Qt::Window),
      m_host(&host),
      m_catalogue(&catalogue),
      m_desk(&desk),
      m_notice(new NoticeBar("barAnalysis")),
      m_sets(new ChoiceBox("cboSet")),
      m_verdict(new QLabel),
      m_state(new QLabel),
      m_tabs(new QTabWidget),
      m_save(new QPushButton(tr("Save as P&DF..."))),
      m_print(new QPushButton(tr("P&rint..."))) {
    setObjectName("frmAnalysis");
    resize(kSize);
    ProjectName({});
    m_soon.setSingleShot(true);
    m_soon.setInterval(kSoon);
    connect(&m_soon, &QTimer::timeout, this, Event([this] { Begin(); }));
    Build(desk);
    connect(&m_study, &BackgroundStudy::WorkingChanged, this, [this] { RefreshState(); });
    RefreshState();
}

frmAnalysis::~frmAnalysis() = default;

void frmAnalysis::Build(const ExhibitDesk& desk) {
    m_verdict->setObjectName("lblVerdict");
    m_state->setObjectName("lblState");
    m_tabs->setObjectName("tabAnalysis");
    m_save->setObjectName("cmdSaveAnalysis");
    m_print->setObjectName("cmdPrintAnalysis");
    m_sets->setMinimumContentsLength(kSetCharacters);
    m_verdict->setTextFormat(Qt::PlainText);
    m_verdict->setWordWrap(true);
    m_verdict->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* caption = new QLabel(tr("&Genset"));
    caption->setBuddy(m_sets);
    m_sets->setAccessibleName(tr("Genset"));
    auto* top = new QHBoxLayout;
    top->setSpacing(metrics::kGap);
    top->addWidget(caption);
    top->addWidget(m_sets);
    top->addWidget(m_state);
    top->addStretch(1);
    top->addWidget(m_save);
    top->addWidget(m_print);
    auto* body = new QWidget;
    setCentralWidget(body);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kGap);
    column->addLayout(top);
    column->addWidget(m_verdict);
    column->addWidget(m_notice);
    column->addWidget(m_tabs, 1);
    m_tests = new TestsPage(desk);
    m_steps = new StepsPage(desk);
    m_advice = new AdvicePage(*m_host, desk);
    m_order = new OrderPage(*m_host, desk);
    m_whatIf = new WhatIfPage(desk);
    AddPage(m_tests, tr("&Tests"));
    AddPage(m_steps, tr("&Steps"));
    AddPage(m_advice, tr("&Advice"));
    AddPage(m_order, tr("&Order"));
    AddPage(m_whatIf, tr("What &If"));
    connect(m_sets, &ChoiceBox::Clicked, this, Event([this](int row) {
                if (row >= 0) {
                    SelectSet(row);
                }
            }));
    connect(m_save, &QPushButton::clicked, this,
            Event([this] { m_desk->SavePages(this, tr("Analysis"), Report()); }));
    connect(m_print, &QPushButton::clicked, this,
            Event([this] { m_desk->PrintPages(this, tr("Analysis"), Report()); }));
}

void frmAnalysis::AddPage(AnalysisPage* page, const QString& title) {
    m_tabs->addTab(page, title);
    m_pages.push_back(page);
    connect(page, &AnalysisPage::SetChosen, this, Event([this](int set) { SelectSet(set); }));
    connect(page, &AnalysisPage::StepsAsked, this,
            Event([this](int set, int test) { ShowSteps(set, test); }));
}

void frmAnalysis::ProjectName(const QString& name) {
    setWindowTitle(name.simplified().isEmpty()
                       ? tr("Analysis")
                       : tr("Analysis") + QString::fromUtf8(" \u2013 ") + name.simplified());
}

void frmAnalysis::ProjectChanged() {
    m_isDue = true;
    m_isFresh = false;
    m_study.Stop();
    for (AnalysisPage* page : m_pages) {
        page->Stale();
    }
    RefreshState();
    if (isVisible()) {
        m_soon.start();
    }
}

void frmAnalysis::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (m_isDue) {
        m_soon.start(0);
    }
}

void frmAnalysis::Begin() {
    m_isDue = false;
    std::optional<StudyProject> project;
    try {
        project = m_host->ProjectAsItStands();
        if (!m_studyDesk) {
            m_studyDesk = std::make_shared<const StudyDesk>(*m_catalogue);
        }
    } catch (const RaisedError& failure) {
        Tell(ToQt(failure.Description()));
        return;
    }
    if (!project) {
        Tell(tr("A value on the Power System panel cannot be taken as it stands."));
        return;
    }
    if (!HasLoads(*project)) {
        Tell(ToQt("At least one load and load step must be entered."));
        return;
    }
    auto shared = std::make_shared<const StudyProject>(std::move(*project));
    m_study.Begin([this, shared, desk = m_studyDesk](StudyTurn& turn) -> BackgroundStudy::Answer {
        Outcome outcome{.result = {.project = shared, .explanation = nullptr, .desk = desk}, .failure = {}};
        try {
            turn.Done(0, 0);
            WorkOutLoads(shared->loadProfile);
            const auto candidates = desk->Tables().candidates.Of(FilterOf(shared->powerSystem));
            turn.Done(1, 0);
            outcome.result.explanation = std::make_shared<const Explanation>(Explain(
                candidates, shared->powerSystem, shared->loadProfile, shared->limits, {}, turn.Stop()));
            turn.Done(2, 0);
        } catch (const RaisedError& failure) {
            outcome.failure = WhyNot(failure, *shared);
        }
        return [this, outcome] { Take(outcome); };
    });
}

void frmAnalysis::Tell(const QString& why) {
    m_notice->Text(why);
    RefreshState();
}

void frmAnalysis::Take(const Outcome& outcome) {
    if (!outcome.failure.isEmpty()) {
        Tell(outcome.failure);
        return;
    }
    m_result = outcome.result;
    m_isFresh = true;
    const Explanation& explanation = *m_result.explanation;
    m_notice->Text(explanation.sets.empty()
                       ? tr("No set can be listed. %1").arg(CountsText(explanation.counts))
                       : QString());
    FillSets();
    for (AnalysisPage* page : m_pages) {
        page->Show(m_result, m_set);
    }
    ShowVerdict();
    RefreshState();
}

void frmAnalysis::FillSets() {
    const QSignalBlocker quiet(m_sets);
    m_sets->clear();
    m_set = m_result.explanation->sets.empty() ? -1 : 0;
    int index = 0;
    for (const ExplainedSet& explained : m_result.explanation->sets) {
        m_sets->AddRow(QString("%1, %2 kW: %3")
                           .arg(SetName(explained.set), ShownPlain(explained.set.NominalRating),
                                VerdictText(explained).section(':', 0, 0)));
        if (KeyOf(explained.set) == m_wanted) {
            m_set = index;
        }
        ++index;
    }
    m_sets->setCurrentIndex(m_set);
}

void frmAnalysis::ChooseSet(const SetKey& key) {
    m_wanted = key;
    if (!m_isFresh) {
        return;
    }
    for (std::size_t i = 0; i < m_result.explanation->sets.size(); ++i) {
        if (KeyOf(m_result.explanation->sets[i].set) == key) {
            SelectSet(static_cast<int>(i));
        }
    }
}

void frmAnalysis::SelectSet(int set) {
    const ExplainedSet* explained = m_result.Set(set);
    if (set == m_set || explained == nullptr) {
        return;
    }
    m_set = set;
    m_wanted = KeyOf(explained->set);
    {
        const QSignalBlocker quiet(m_sets);
        m_sets->setCurrentIndex(set);
    }
    for (AnalysisPage* page : m_pages) {
        page->Select(set);
    }
    ShowVerdict();
}

void frmAnalysis::ShowVerdict() {
    const ExplainedSet* explained = m_result.Set(m_set);
    m_verdict->setText(explained == nullptr ? QString() : VerdictLine(*explained, *m_result.project));
}

void frmAnalysis::ShowSteps(int set, int test) {
    SelectSet(set);
    m_tabs->setCurrentWidget(m_steps);
    m_steps->ShowTest(static_cast<std::size_t>(test));
}

void frmAnalysis::RefreshState() {
    m_state->setText(m_study.IsWorking() || (m_isDue && isVisible()) ? tr("Working...") : QString());
    m_verdict->setEnabled(m_isFresh);
    m_sets->setEnabled(m_isFresh && m_sets->count() > 0);
    m_save->setEnabled(m_isFresh && m_set >= 0);
    m_print->setEnabled(m_isFresh && m_set >= 0);
}

void frmAnalysis::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
        return;
    }
    if (event->matches(QKeySequence::HelpContents)) {
        m_host->ShowAnalysisHelp(*this);
        return;
    }
    QMainWindow::keyPressEvent(event);
}

std::vector<FlowBlock> frmAnalysis::Report() const {
    return m_isFresh ? AnalysisReport(m_result, m_set, m_advice->List().get(), m_desk->Now())
                     : std::vector<FlowBlock>();
}

}  // namespace genvara
