#include "OrderPage.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "AnalysisWords.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "OrderTree.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kRulesHeight = 84;  // pixels

}  // namespace

OrderPage::OrderPage(AnalysisHost& host, const ExhibitDesk& desk, QWidget* parent)
    : AnalysisPage("pagOrder", parent),
      m_host(&host),
      m_now(new OrderTree("treNow", tr("Present order"), true)),
      m_best(new OrderTree("treBest", tr("Best order"), false)),
      m_verdict(new QLabel),
      m_note(new QLabel),
      m_maxSteps(new QSpinBox),
      m_before(new QPushButton(tr("Starts &Before"))),
      m_behind(new QPushButton(tr("Starts Behi&nd"))),
      m_together(new QPushButton(tr("Start Toget&her"))),
      m_rules(new QListWidget),
      m_remove(new QPushButton(tr("Remo&ve"))),
      m_progress(new QProgressBar),
      m_cancel(new QPushButton(tr("&Cancel"))),
      m_apply(new QPushButton(tr("Appl&y"))) {
    m_verdict->setObjectName("lblOrder");
    m_note->setObjectName("lblOrderNote");
    m_maxSteps->setObjectName("updMaxSteps");
    m_before->setObjectName("cmdBefore");
    m_behind->setObjectName("cmdBehind");
    m_together->setObjectName("cmdTogether");
    m_rules->setObjectName("lstRules");
    m_rules->setAccessibleName(tr("Rules"));
    m_remove->setObjectName("cmdRemoveRule");
    m_progress->setObjectName("prgOrder");
    m_progress->setAccessibleName(tr("Progress"));
    m_cancel->setObjectName("cmdCancelOrder");
    m_apply->setObjectName("cmdApplyOrder");
    Build(desk);
    connect(m_now, &OrderTree::Dropped, this,
            Event([this](LoadPlace dragged, LoadPlace target) { AskForRule(dragged, target); }));
    connect(m_now, &QTreeWidget::itemSelectionChanged, this, [this] { RefreshButtons(); });
    connect(m_rules, &QListWidget::currentRowChanged, this, [this] { RefreshButtons(); });
    connect(m_before, &QPushButton::clicked, this, Event([this] { RuleOfSelected(Rule::Before, false); }));
    connect(m_behind, &QPushButton::clicked, this, Event([this] { RuleOfSelected(Rule::Before, true); }));
    connect(m_together, &QPushButton::clicked, this,
            Event([this] { RuleOfSelected(Rule::Together, false); }));
    connect(m_remove, &QPushButton::clicked, this, Event([this] { RemoveRule(); }));
    connect(m_maxSteps, &QSpinBox::valueChanged, this, Event([this] { Begin(); }));
    connect(m_cancel, &QPushButton::clicked, this, Event([this] {
                m_study.Stop();
                m_verdict->setText(tr("The search was ended."));
            }));
    connect(m_apply, &QPushButton::clicked, this, Event([this] { Apply(); }));
    connect(&m_study, &BackgroundStudy::WorkingChanged, this, [this] { RefreshButtons(); });
    Note({});
    RefreshButtons();
}

void OrderPage::Build(const ExhibitDesk& desk) {
    for (QLabel* label : {m_verdict, m_note}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
    }
    auto* trees = new QHBoxLayout;
    trees->setSpacing(metrics::kMargin);
    trees->addWidget(m_now, 1);
    trees->addWidget(m_best, 1);
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(180);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(metrics::kGap);
    buttons->addWidget(m_progress);
    buttons->addWidget(m_cancel);
    buttons->addStretch(1);
    buttons->addWidget(m_apply);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kGap, metrics::kMargin, metrics::kGap);
    column->setSpacing(metrics::kGap);
    column->addWidget(m_verdict);
    column->addLayout(trees, 1);
    column->addWidget(MakeRules());
    column->addWidget(m_note);
    column->addLayout(buttons);
    const auto both = {m_now, m_best};
    for (OrderTree* tree : both) {
        desk.AddCommands(*tree, [this]() -> std::optional<Exhibit> { return Exhibit{.table = Grid()}; });
    }
}

QWidget* OrderPage::MakeRules() {
    auto* caption = new QLabel(tr("Rules: drag a load onto another one, or select two"));
    caption->setToolTip(tr("By keys: Ctrl with the arrows goes from load to load, Ctrl+Space selects."));
    m_before->setToolTip(
        tr("The upper one of two selected loads starts in an earlier step than the lower one."));
    m_behind->setToolTip(
        tr("The upper one of two selected loads starts in a later step than the lower one."));
    m_together->setToolTip(tr("Two selected loads start in one step."));
    auto* most = new QLabel(tr("At &most steps"));
    most->setBuddy(m_maxSteps);
    m_maxSteps->setAccessibleName(WithoutMnemonic(most->text()));
    m_maxSteps->setRange(1, kMostLoadSteps);
    m_maxSteps->setKeyboardTracking(false);
    m_rules->setMaximumHeight(kRulesHeight);
    auto* top = new QHBoxLayout;
    top->setSpacing(metrics::kGap);
    top->addWidget(caption);
    top->addWidget(m_before);
    top->addWidget(m_behind);
    top->addWidget(m_together);
    top->addStretch(1);
    top->addWidget(most);
    top->addWidget(m_maxSteps);
    auto* bottom = new QHBoxLayout;
    bottom->setSpacing(metrics::kGap);
    bottom->addWidget(m_rules, 1);
    bottom->addWidget(m_remove, 0, Qt::AlignTop);
    auto* rules = new QWidget;
    auto* column = new QVBoxLayout(rules);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(metrics::kGap / 2);
    column->addLayout(top);
    column->addLayout(bottom);
    auto* key = new QShortcut(QKeySequence::Delete, m_rules);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, this, Event([this] { RemoveRule(); }));
    return rules;
}

void OrderPage::Show(const AnalysisResult& result, int /*set*/) {
    m_result = result;
    m_answer.reset();
    KeepRules();
    {
        const QSignalBlocker quiet(m_maxSteps);
        m_maxSteps->setValue(result.project->loadProfile.NumLoadSteps());
    }
    m_now->Show(*result.project, PresentOrder(result.project->loadProfile));
    m_now->setEnabled(true);
    ShowRules();
    if (isVisible()) {
        Begin();
    }
}

void OrderPage::showEvent(QShowEvent* event) {
    AnalysisPage::showEvent(event);
    if (!m_answer && !m_study.IsWorking()) {
        RunEvent([this] { Begin(); });
    }
}

void OrderPage::Stale() {
    m_study.Stop();
    m_result = {};
    m_answer.reset();
    m_now->setEnabled(false);
    m_best->setEnabled(false);
    RefreshButtons();
}

bool OrderPage::HasLoad(const LoadPlace& place) const {
    if (!m_result.project) {
        return false;
    }
    const CLoadProfile& profile = m_result.project->loadProfile;
    return place.step >= 1 && place.step <= profile.NumLoadSteps() && place.load >= 1 &&
           place.load <= profile.LoadStep(place.step).NumLoads();
}

QString OrderPage::NameAt(const LoadPlace& place) const {
    return HasLoad(place)
               ? ToQt(std::next(m_result.project->loadProfile.LoadStep(place.step).begin(), place.load - 1)
                          ->name())
               : QString();
}

void OrderPage::KeepRules() {
    std::erase_if(m_given, [&](const Given& given) {
        return !HasLoad(given.loads.first) || !HasLoad(given.loads.second) ||
               NameAt(given.loads.first) != given.first || NameAt(given.loads.second) != given.second;
    });
}

OrderRules OrderPage::RulesOf(const std::vector<Given>& given) const {
    OrderRules rules{.maxSteps = m_maxSteps->value(), .before = {}, .together = {}};
    for (const Given& one : given) {
        (one.rule == Rule::Before ? rules.before : rules.together).push_back(one.loads);
    }
    return rules;
}

void OrderPage::AddRule(Rule rule, const LoadPlace& first, const LoadPlace& second) {
    if (!HasLoad(first) || !HasLoad(second) || first == second) {
        return;
    }
    std::vector<Given> given = m_given;
    given.push_back({rule, {first, second}, NameAt(first), NameAt(second)});
    try {
        RequireOrder(m_result.project->loadProfile, RulesOf(given));
    } catch (const RaisedError& failure) {
        Note(ToQt(failure.Description()));
        return;
    }
    Note({});
    m_given = std::move(given);
    ShowRules();
    Begin();
}

void OrderPage::AskForRule(const LoadPlace& dragged, const LoadPlace& target) {
    const QString one = NameAt(dragged);
    const QString other = NameAt(target);
    QMenu menu(this);
    menu.setObjectName("mnuRule");
    const QAction* before = menu.addAction(tr("%1 starts before %2").arg(one, other));
    const QAction* behind = menu.addAction(tr("%1 starts behind %2").arg(one, other));
    const QAction* together = menu.addAction(tr("%1 and %2 start together").arg(one, other));
    const QAction* chosen = menu.exec(QCursor::pos());
    if (chosen == before) {
        AddRule(Rule::Before, dragged, target);
    } else if (chosen == behind) {
        AddRule(Rule::Before, target, dragged);
    } else if (chosen == together) {
        AddRule(Rule::Together, dragged, target);
    }
}

void OrderPage::RuleOfSelected(Rule rule, bool turned) {
    const std::vector<LoadPlace> loads = m_now->SelectedLoads();
    if (loads.size() == 2) {
        AddRule(rule, turned ? loads.back() : loads.front(), turned ? loads.front() : loads.back());
    }
}

void OrderPage::RemoveRule() {
    const int row = m_rules->currentRow();
    if (row >= 0 && static_cast<std::size_t>(row) < m_given.size()) {
        m_given.erase(m_given.begin() + row);
        Note({});
        ShowRules();
        Begin();
    }
}

void OrderPage::ShowRules() {
    m_rules->clear();
    for (const Given& given : m_given) {
        m_rules->addItem(
            (given.rule == Rule::Before ? tr("%1 starts before %2") : tr("%1 and %2 start together"))
                .arg(given.first, given.second));
    }
    RefreshButtons();
}

void OrderPage::Note(const QString& text) {
    m_note->setText(text);
    m_note->setVisible(!text.isEmpty());
}

void OrderPage::Begin() {
    if (!m_result.project) {
        return;
    }
    m_answer.reset();
    m_best->setEnabled(false);
    m_study.Begin(
        [this, result = m_result, rules = RulesOf(m_given)](StudyTurn& turn) -> BackgroundStudy::Answer {
            Outcome outcome;
            try {
                SearchEffort effort;
                effort.count = [&turn](std::int64_t judged) { turn.Done(judged, 0); };
                outcome.answer = std::make_shared<const OrderAnswer>(
                    FindOrder(*result.project, rules, result.desk->Tables(), effort, turn.Stop()));
            } catch (const RaisedError& failure) {
                outcome.failure = ToQt(failure.Description());
            }
            return [this, outcome] { Take(outcome); };
        });
    m_verdict->setText(tr("Looking for the best order..."));
}

void OrderPage::Take(const Outcome& outcome) {
    m_answer = outcome.answer;
    if (!m_answer) {
        m_verdict->setText(tr("No order: %1").arg(outcome.failure));
        m_best->clear();
        RefreshButtons();
        return;
    }
    m_best->Show(*m_result.project, m_answer->steps);
    m_best->setEnabled(true);
    ShowVerdict();
    RefreshButtons();
}

void OrderPage::ShowVerdict() {
    const OrderAnswer& answer = *m_answer;
    QStringList texts{tr("Now: %1, best: %2.").arg(AnswerName(answer.now), AnswerName(answer.best))};
    if (!answer.presentIsPermitted) {
        texts += tr("The present order is not permitted.");
    } else if (answer.isPresent) {
        texts += tr("The present order is as good as any that was found.");
    } else if (answer.now.set && answer.best.set) {
        texts += tr("Saves %1 kW.").arg(ShownPlain(answer.now.total - answer.best.total));
    }
    if (answer.proven) {
        texts += answer.best.set ? tr("No permitted order does with a smaller set: that is proven.")
                                 : tr("No permitted order has a set that does: that is proven.");
    } else if (answer.bound) {
        texts += tr("Not proven: nothing excludes %1 of %2 kW.")
                     .arg(ToQt(answer.bound->ModelNum), ShownPlain(answer.bound->NominalRating));
    }
    m_verdict->setText(texts.join(' '));
}

void OrderPage::RefreshButtons() {
    const bool working = m_study.IsWorking();
    const bool hasTwo = m_result.project && m_now->SelectedLoads().size() == 2;
    m_before->setEnabled(hasTwo);
    m_behind->setEnabled(hasTwo);
    m_together->setEnabled(hasTwo);
    m_remove->setEnabled(m_rules->currentRow() >= 0);
    m_progress->setVisible(working);
    m_cancel->setVisible(working);
    m_maxSteps->setEnabled(m_result.project != nullptr);
    m_apply->setEnabled(m_answer && !m_answer->isPresent);
}

void OrderPage::Apply() {
    if (!m_answer || m_answer->isPresent) {
        return;
    }
    const AnalysisResult result = m_result;
    const StudyProject varied =
        Reopened(Reordered(*result.project, m_answer->steps), result.desk->Tables().rules);
    m_host->TakeVariation(tr("Apply Order"), varied);
    Note(tr("The order was applied. Edit > Undo takes it back."));
}

TextGrid OrderPage::Grid() const {
    TextGrid grid{.title = tr("Order of the loads"),
                  .columns = {{.caption = tr("Load")},
                              {.caption = tr("Step now"), .isNumber = true},
                              {.caption = tr("Best step"), .isNumber = true}}};
    if (!m_answer || !m_result.project) {
        return grid;
    }
    int step = 0;
    for (const std::vector<LoadPlace>& loads : m_answer->steps) {
        ++step;
        for (const LoadPlace& place : loads) {
            grid.rows.push_back({TextCell(NameAt(place)), NumberCell(place.step, 0), NumberCell(step, 0)});
        }
    }
    return grid;
}

}  // namespace genvara
