// What a document keeps of its changes.

#include <utility>

#include "Document.h"

namespace genvara {

ProjectMoment Document::Now() {
    return MomentOf(Model(), m_history.Now());
}

void Document::BeginHistory() {
    m_history.Begin(MomentOf(Model()));
    m_saved = m_history.Now();
    m_touched = false;
}

void Document::TellMoment() const {
    if (m_momentTeller) {
        m_momentTeller();
    }
}

void Document::Change(std::string name, const std::function<void()>& change) {
    if (m_changing) {
        change();
        return;
    }
    m_history.Amend(Now());
    const ProfilePlace place = m_selection ? m_selection() : ProfilePlace{};
    m_changing = true;
    try {
        change();
    } catch (...) {
        m_changing = false;
        Add(std::move(name), place);
        throw;
    }
    m_changing = false;
    Add(std::move(name), place);
}

bool Document::Keep(std::string name) {
    m_touched = false;
    return Add(std::move(name), m_selection ? m_selection() : ProfilePlace{});
}

bool Document::Add(std::string name, ProfilePlace place) {
    ProjectMoment now = Now();
    if (now == m_history.Now()) {
        return false;
    }
    m_history.Add(std::move(name), std::move(now), place);
    TellMoment();
    return true;
}

void Document::Settle() {
    const bool saved = m_saved && m_history.Now() == *m_saved;
    m_history.Amend(Now());
    if (saved) {
        m_saved = m_history.Now();
    }
}

std::optional<Document::Undone> Document::Undo() {
    Settle();
    return m_history.UndoName() ? std::optional(GoTo(m_history.Undo())) : std::nullopt;
}

std::optional<Document::Undone> Document::Redo() {
    Settle();
    if (!m_history.RedoName()) {
        return std::nullopt;
    }
    const UndoHistory::Passed passed = m_history.Redo();
    Undone redone = GoTo(passed);
    // What came is where the change is to be seen; of what went only the place is left.
    if (const ProfilePlace place = FirstNewPlace(passed.from, m_history.Now())) {
        redone.place = place;
    }
    return redone;
}

Document::Undone Document::GoTo(const UndoHistory::Passed& passed) {
    const ProjectMoment& to = m_history.Now();
    Restore(to, Model());
    m_touched = false;
    TellMoment();
    return {.name = passed.name,
            .project = passed.from.project != to.project,
            .powerSystem = passed.from.powerSystem != to.powerSystem,
            .loadProfile = passed.from.steps != to.steps,
            .place = passed.place};
}

}  // namespace genvara
