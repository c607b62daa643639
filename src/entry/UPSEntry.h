#pragma once

#include <array>
#include <cstdint>

#include "CUPSLoad.h"

namespace genvara {

/// What the entry form of a UPS selects, enables and shows after each click.
///
/// The fast-transfer family exists only as a three-phase load, and an input filter only on three-phase
/// off-line and on-line units. A selection that follows from another one counts as a click too.
class UPSEntry {
  public:
    struct State {
        std::int32_t phases = 0;              ///< connection code
        std::array<bool, 4> phasesEnabled{};  ///< by connection code
        std::int32_t family = 0;              ///< code of `ups_family`
        bool fastTransferEnabled = false;     ///< the other two families always are
        bool powerEnabled = false;            ///< loading and battery charging
        bool typeEnabled = false;             ///< list of input stages
        bool filterEnabled = false;
        bool warningVisible = true;  ///< protected loads have to be entered as well
    };

    /// The form as it opens for a new load.
    /// @param systemPhases phases of the site; anything but 3 counts as one.
    explicit UPSEntry(std::int32_t systemPhases);

    [[nodiscard]] const State& Shown() const noexcept { return m_state; }

    /// The button of a connection code is selected. One that is selected already changes nothing.
    void PhasesClicked(std::int32_t code);
    /// The button of a family is selected, again perhaps. A code of no family changes nothing.
    void FamilyClicked(std::int32_t code);

  private:
    void ThreePhaseClicked();
    void SinglePhaseClicked();
    void FastTransferClicked();
    void OffLineClicked();
    void OnLineClicked();
    void OfferSinglePhases();

    bool m_singlePhaseSystem;
    State m_state;
};

}  // namespace genvara
