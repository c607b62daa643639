#include "ProfileFinder.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>

#include "FormGrid.h"
#include "LastChance.h"
#include "LoadFactory.h"
#include "LoadKinds.h"
#include "ProfileFollower.h"
#include "ProfileTree.h"
#include "Texts.h"

namespace genvara {
namespace {

bool Holds(std::string_view text, const QString& sought) {
    return ToQt(text).contains(sought, Qt::CaseInsensitive);
}

bool IsOfKind(const Load& load, const QString& sought) {
    return Holds(FindLoadKindRow(load.LoadType())->name, sought) ||
           Holds(FindLoadKind(load.LoadType())->title, sought);
}

QPushButton* MakeButton(const char* name, const QString& caption) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

}  // namespace

ProfileFinder::ProfileFinder(ProfileTree& tree, const CLoadProfile& profile, QWidget* parent)
    : QFrame(parent), m_tree(&tree), m_profile(&profile), m_text(new QLineEdit), m_found(new QLabel) {
    setObjectName("fraFind");
    Build();
    hide();
    connect(m_text, &QLineEdit::textEdited, this, Event([this] { Seek(0); }));
}

void ProfileFinder::Build() {
    m_text->setObjectName("txtFind");
    m_text->setClearButtonEnabled(true);
    m_text->findChild<QToolButton*>()->setAccessibleName(tr("Clear"));
    m_text->setPlaceholderText(tr("Name, description or kind"));
    m_found->setObjectName("lblFound");
    auto* label = new QLabel(tr("Find"));
    label->setBuddy(m_text);
    m_text->setAccessibleName(label->text());
    auto* next = MakeButton("cmdFindNext", tr("Next"));
    auto* previous = MakeButton("cmdFindPrevious", tr("Previous"));
    auto* close = MakeButton("cmdFindClose", tr("Close"));
    connect(next, &QPushButton::clicked, this, Event([this] { Next(); }));
    connect(previous, &QPushButton::clicked, this, Event([this] { Previous(); }));
    connect(close, &QPushButton::clicked, this, [this] { Close(); });
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(metrics::kGap);
    line->addWidget(label);
    line->addWidget(m_text, 1);
    line->addWidget(m_found);
    for (QPushButton* button : {next, previous, close}) {
        button->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) +
                                2 * metrics::kMargin);
        line->addWidget(button);
    }
}

void ProfileFinder::Open() {
    show();
    m_text->setFocus(Qt::ShortcutFocusReason);
    m_text->selectAll();
}

void ProfileFinder::Close() {
    hide();
    m_tree->setFocus(Qt::OtherFocusReason);
}

void ProfileFinder::GoOn(int by) {
    if (m_text->text().isEmpty()) {
        Open();
    } else {
        show();
        Seek(by);
    }
}

std::vector<ProfilePlace> ProfileFinder::Rows() const {
    std::vector<ProfilePlace> rows;
    for (const CLoadStep& step : *m_profile) {
        rows.push_back({.stepId = step.StepID()});
        for (const Load& load : step) {
            rows.push_back({.stepId = step.StepID(), .loadId = load.ID()});
        }
    }
    return rows;
}

bool ProfileFinder::Matches(ProfilePlace row, const QString& sought) const {
    const CLoadStep* step = m_profile->LoadStepByID(row.stepId);
    if (row.loadId < 0) {
        return Holds(step->Description(), sought);
    }
    const Load* load = step->LoadItem(row.loadId);
    return Holds(load->name(), sought) || Holds(load->Description(), sought) || IsOfKind(*load, sought);
}

void ProfileFinder::Seek(int by) {
    const QString sought = m_text->text();
    if (sought.isEmpty()) {
        Tell({});
        return;
    }
    const std::vector<ProfilePlace> rows = Rows();
    std::vector<std::ptrdiff_t> found;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (Matches(rows[row], sought)) {
            found.push_back(static_cast<std::ptrdiff_t>(row));
        }
    }
    if (found.empty()) {
        Tell(tr("no match"));
        return;
    }
    const QTreeWidgetItem* selected = m_tree->Selected();
    const auto at =
        selected == nullptr ? -1 : std::ranges::find(rows, ProfileTree::PlaceOf(*selected)) - rows.begin();
    // The first one behind the row at hand, or that row itself where none is asked for beyond it.
    auto next = by > 0 ? std::ranges::upper_bound(found, at) : std::ranges::lower_bound(found, at);
    if (by < 0) {
        next = next == found.begin() ? found.end() - 1 : next - 1;
    }
    next = next == found.end() ? found.begin() : next;
    QTreeWidgetItem* node = FindPlace(*m_tree, rows[static_cast<std::size_t>(*next)]);
    m_tree->setCurrentItem(node);
    m_tree->scrollToItem(node);
    Tell(tr("%1 of %2").arg(next - found.begin() + 1).arg(found.size()));
}

void ProfileFinder::Tell(const QString& text) {
    m_found->setText(text);
    QAccessibleEvent heard(m_found, QAccessible::Alert);
    QAccessible::updateAccessibility(&heard);
}

void ProfileFinder::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        Close();
    } else if (enter && m_text->hasFocus()) {
        GoOn(event->modifiers().testFlag(Qt::ShiftModifier) ? -1 : 1);
    } else {
        QFrame::keyPressEvent(event);
    }
}

}  // namespace genvara
