#include "UndoHistory.h"

#include <utility>

namespace genvara {

void UndoHistory::Begin(ProjectMoment moment) {
    m_entries.clear();
    m_entries.push_back({.name = {}, .moment = std::move(moment), .place = {}});
    m_now = 0;
}

void UndoHistory::Add(std::string name, ProjectMoment moment, ProfilePlace place) {
    m_entries.resize(m_now + 1);
    m_entries.push_back({.name = std::move(name), .moment = std::move(moment), .place = place});
    if (m_entries.size() > kMost + 1) {
        m_entries.erase(m_entries.begin());
    }
    m_now = m_entries.size() - 1;
}

std::optional<std::string> UndoHistory::UndoName() const {
    return m_now == 0 ? std::nullopt : std::optional(m_entries[m_now].name);
}

std::optional<std::string> UndoHistory::RedoName() const {
    return m_now + 1 == m_entries.size() ? std::nullopt : std::optional(m_entries[m_now + 1].name);
}

UndoHistory::Passed UndoHistory::Undo() {
    const Entry& undone = m_entries[m_now--];
    return {.name = undone.name, .from = undone.moment, .place = undone.place};
}

UndoHistory::Passed UndoHistory::Redo() {
    const ProjectMoment& from = m_entries[m_now].moment;
    const Entry& redone = m_entries[++m_now];
    return {.name = redone.name, .from = from, .place = redone.place};
}

}  // namespace genvara
