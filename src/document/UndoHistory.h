#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ProjectMoment.h"

namespace genvara {

/// The moments of a project between its named changes, and the one at which it stands.
class UndoHistory {
  public:
    /// So many changes can be taken back at least.
    static constexpr std::size_t kMost = 500;

    /// Forgets everything: the project is a new one.
    void Begin(ProjectMoment moment);

    /// The moment at which the project stands.
    [[nodiscard]] const ProjectMoment& Now() const noexcept { return m_entries[m_now].moment; }

    /// Notes a change that led to a moment; what was taken back before is forgotten.
    /// @param place what of the profile was selected before the change.
    void Add(std::string name, ProjectMoment moment, ProfilePlace place);
    /// Puts a moment in the place of the one at hand, without a change.
    void Amend(ProjectMoment moment) { m_entries[m_now].moment = std::move(moment); }

    /// Name of the change that can be taken back, or made again; nothing if there is none.
    [[nodiscard]] std::optional<std::string> UndoName() const;
    [[nodiscard]] std::optional<std::string> RedoName() const;

    /// A step through the changes, taken already.
    struct Passed {
        const std::string& name;
        const ProjectMoment& from;
        ProfilePlace place;  ///< what was selected before the change
    };
    // The caller makes sure that there is a change.
    Passed Undo();
    Passed Redo();

  private:
    struct Entry {
        std::string name;  ///< of the change that led here
        ProjectMoment moment;
        ProfilePlace place;
    };

    std::vector<Entry> m_entries{Entry{}};
    std::size_t m_now = 0;
};

}  // namespace genvara
