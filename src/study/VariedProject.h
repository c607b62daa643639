#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "Variation.h"

namespace genvara {

/// One project that is varied thousands of times: of a variation only the records that it changes are saved
/// and opened again, and they give way to the old ones when the next variation comes. Of one thread.
class VariedProject {
  public:
    /// Both outlive the object.
    VariedProject(const StudyProject& project, const EntryRules& rules);

    /// The project with some members changed, to the last bit that of `Changed`; it stands until the next
    /// call. Whoever changes it further takes that back.
    /// @throws RaisedError as `Changed`.
    [[nodiscard]] StudyProject& With(std::span<const MemberValue> changes);

    /// Whether the variation was opened record by record: its loads may then be moved to other steps without
    /// saving it again.
    [[nodiscard]] bool IsOfPieces() const noexcept { return m_isOfPieces; }

  private:
    /// A load that stands in another one's place.
    struct Exchange {
        std::int32_t step = 0;
        std::int32_t load = 0;         ///< both positions from 1
        std::unique_ptr<Load> given;   ///< as it stood in the project as given
        std::unique_ptr<Load> opened;  ///< as it stood in the project opened again
    };

    [[nodiscard]] bool Vary(std::span<const MemberValue> changes);
    [[nodiscard]] bool Mark(const PropertyPath& path);
    void MarkLoad(std::int32_t step, std::int32_t load);
    [[nodiscard]] bool OpenPieces();
    void WritePieces();
    void TakePieces();
    void TakeBack();

    const StudyProject* m_base;
    const EntryRules* m_rules;
    StudyProject m_given;  ///< the project, changed in place
    std::optional<StudyProject>
        m_opened;  ///< the same saved and opened again; none if its records cannot be told apart
    CPwrSys m_openedSite;
    StudyProject m_written;               ///< the changed records alone
    StudyProject m_read;                  ///< and what they are when they are opened again
    std::optional<StudyProject> m_whole;  ///< a variation that was opened as a whole
    bool m_isOfPieces = false;
    bool m_changesSite = false;
    std::vector<std::int32_t> m_dips;  ///< steps whose limit is changed
    std::vector<Exchange> m_loads;
};

}  // namespace genvara
