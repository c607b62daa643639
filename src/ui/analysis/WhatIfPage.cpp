#include "WhatIfPage.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QVBoxLayout>
#include <utility>

#include "AxisRow.h"
#include "ChartView.h"
#include "FormGrid.h"
#include "GridView.h"
#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

/// More points are a matter of the console program, which writes them to a file.
constexpr double kMostPoints = 20'000.0;

}  // namespace

WhatIfPage::WhatIfPage(const ExhibitDesk& desk, QWidget* parent)
    : AnalysisPage("pagWhatIf", parent),
      m_first(new AxisRow("Vary", tr("&Vary"), false)),
      m_second(new AxisRow("And", tr("a&nd"), true)),
      m_exact(new QCheckBox(tr("Find the &exact values at which the answer changes"))),
      m_work(new QPushButton(tr("&Work Out"))),
      m_cancel(new QPushButton(tr("&Cancel"))),
      m_progress(new QProgressBar),
      m_note(new QLabel),
      m_chart(new ChartView("chaWhatIf")),
      m_points(new GridView("tblPoints", GridView::Choose::Rows)) {
    m_exact->setObjectName("chkExact");
    m_work->setObjectName("cmdWorkOut");
    m_work->setDefault(true);
    m_cancel->setObjectName("cmdCancelWhatIf");
    m_progress->setObjectName("prgWhatIf");
    m_progress->setAccessibleName(tr("Progress"));
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(180);
    m_note->setObjectName("lblWhatIfNote");
    m_note->setTextFormat(Qt::PlainText);
    m_note->setWordWrap(true);
    m_chart->Hint(tr(
        "Choose what to vary, and Work Out shows here which set does at each value.\nA second value makes a "
        "map of both."));
    m_points->setAccessibleName(tr("Points"));
    m_points->hide();
    m_first->Choose("PowerSystem.Altitude");
    Build(desk);
    connect(m_work, &QPushButton::clicked, this, Event([this] {
                m_hasAsked = true;
                Begin();
            }));
    connect(m_cancel, &QPushButton::clicked, this, Event([this] {
                m_hasAsked = false;
                m_study.Stop();
            }));
    for (AxisRow* row : {m_first, m_second}) {
        connect(row, &AxisRow::Changed, this, [this] { RefreshButtons(); });
    }
    connect(&m_study, &BackgroundStudy::WorkingChanged, this, [this] { RefreshButtons(); });
    connect(&m_study, &BackgroundStudy::Progressed, this, [this](qint64 done, qint64 total) {
        m_progress->setRange(0, static_cast<int>(total));
        m_progress->setValue(static_cast<int>(done));
    });
    Note({});
    RefreshButtons();
}

void WhatIfPage::Build(const ExhibitDesk& desk) {
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(metrics::kGap);
    buttons->addWidget(m_exact);
    buttons->addStretch(1);
    buttons->addWidget(m_progress);
    buttons->addWidget(m_cancel);
    buttons->addWidget(m_work);
    auto* parts = new QSplitter(Qt::Vertical);
    parts->addWidget(m_chart);
    parts->addWidget(m_points);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 1);
    parts->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kGap);
    column->setSpacing(metrics::kGap);
    column->addWidget(m_first);
    column->addWidget(m_second);
    column->addLayout(buttons);
    column->addWidget(m_note);
    column->addWidget(parts, 1);
    desk.AddCommands(*m_chart, [this]() -> std::optional<Exhibit> {
        return m_chart->Shown()
                   ? std::optional(Exhibit{.table = m_chart->Shown()->Table(), .chart = m_chart->Shown()})
                   : std::nullopt;
    });
    desk.AddCommands(*m_points,
                     [this]() -> std::optional<Exhibit> { return Exhibit{.table = m_points->Shown()}; });
}

void WhatIfPage::Show(const AnalysisResult& result, int set) {
    m_result = result;
    m_set = set;
    m_first->Offer(*result.project);
    m_second->Offer(*result.project);
    if (m_hasAsked) {
        Begin();
    }
    RefreshButtons();
}

void WhatIfPage::Select(int set) {
    m_set = set;
    if (m_answer && m_answer->axes.size() == 1) {
        ShowAnswer();
    }
}

void WhatIfPage::Stale() {
    m_study.Stop();
    m_result = {};
    m_answer.reset();
    m_chart->Stale(true);
    m_points->Stale(true);
    RefreshButtons();
}

std::optional<std::vector<SweepAxis>> WhatIfPage::Axes() {
    Note({});
    try {
        std::vector<std::string> texts;
        for (const AxisRow* row : {m_first, m_second}) {
            if (const auto text = row->Text()) {
                texts.push_back(*text);
            }
        }
        std::vector<SweepAxis> axes = ParseAxes(texts, *m_result.project, m_result.desk->Tables().rules);
        if (const double points = PointCount(axes); points > kMostPoints) {
            Note(tr("These are %1 points; at most %2 can be shown. Take larger steps, or ask "
                    "genvara-cli sweep.")
                     .arg(points, 0, 'g', 9)
                     .arg(kMostPoints, 0, 'f', 0));
            return std::nullopt;
        }
        return axes;
    } catch (const RaisedError& failure) {
        Note(ToQt(failure.Description()));
        return std::nullopt;
    }
}

void WhatIfPage::Begin() {
    if (!m_result.project) {
        return;
    }
    auto axes = Axes();
    if (!axes) {
        return;
    }
    const bool exact = m_exact->isChecked() && m_exact->isEnabled();
    m_study.Begin([this, result = m_result, axes = std::move(*axes),
                   exact](StudyTurn& turn) -> BackgroundStudy::Answer {
        auto answer = std::make_shared<SweepAnswer>();
        answer->axes = axes;
        QString failure;
        const auto total = static_cast<std::int64_t>(PointCount(axes));
        try {
            if (exact) {
                answer->stretches =
                    FindBreaks(*result.project, axes.front(), result.desk->Tables(), 1, turn.Stop(),
                               [&](std::int64_t done) { turn.Done(done, total); });
            } else {
                Sweep(*result.project, axes, result.desk->Tables(), 1, turn.Stop(),
                      [&](std::int64_t index, const SweepPoint& point) {
                          answer->points.push_back(point);
                          turn.Done(index + 1, total);
                      });
            }
        } catch (const RaisedError& error) {
            failure = ToQt(error.Description());
        }
        return [this, outcome = Outcome{.answer = failure.isEmpty() ? answer : nullptr, .failure = failure}] {
            Take(outcome);
        };
    });
}

void WhatIfPage::Take(const Outcome& outcome) {
    m_answer = outcome.answer;
    Note(outcome.failure);
    if (m_answer) {
        m_chart->Stale(false);
        m_points->Stale(false);
        ShowAnswer();
    }
}

void WhatIfPage::Note(const QString& text) {
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
}

void WhatIfPage::ShowAnswer() {
    m_chart->Show(SweepChart(*m_answer, *m_result.project, m_result.Set(m_set)));
    m_points->Show(SweepGrid(*m_answer, *m_result.project));
    m_points->show();
}

void WhatIfPage::RefreshButtons() {
    const bool working = m_study.IsWorking();
    m_work->setEnabled(m_result.project != nullptr && !working);
    m_exact->setEnabled(m_first->IsRange() && !m_second->IsChosen());
    m_progress->setVisible(working);
    m_cancel->setVisible(working);
}

}  // namespace genvara
