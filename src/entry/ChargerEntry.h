#pragma once

#include <array>
#include <cstdint>

#include "CBatChrgLoad.h"

namespace genvara {

/// What the entry form of a battery charger selects and enables after each click.
///
/// A residential charger is a single-phase one, and only an industrial one has a choice of input stages. A
/// selection that follows from another one counts as a click too.
class ChargerEntry {
  public:
    struct State {
        std::int32_t phases = 0;                               ///< connection code
        bool threePhaseEnabled = false;                        ///< of the phases, only this one changes
        std::int32_t application = charger_type::kIndustrial;  ///< code of `charger_type`
        bool residentialEnabled = false;                       ///< the other two applications always are
        bool inputEnabled = true;                              ///< frame of the input stages
    };

    /// The form as it opens for a new load.
    /// @param shownPhases phases of the site as the window shows them; anything but 3 counts as one.
    /// @param sitePhases phases of the site as they are stored.
    ChargerEntry(std::int32_t shownPhases, std::int32_t sitePhases);

    [[nodiscard]] const State& Shown() const noexcept { return m_state; }

    /// The button of a connection code is selected. One that is selected already changes nothing.
    void PhasesClicked(std::int32_t code);
    /// The button of an application is selected. A code of none changes nothing.
    void ApplicationClicked(std::int32_t code);
    /// A stored load's application is shown.
    void ApplicationShown(std::int32_t code);

  private:
    bool m_threePhaseSite;
    State m_state;
};

}  // namespace genvara
