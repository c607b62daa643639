#pragma once

#include <cstdint>

#include "Load.h"

class QWidget;

namespace genvara {

class PlatformServices;

/// What an entry form asks of the window.
class LoadFormHost {
  public:
    virtual ~LoadFormHost() = default;
    /// Position of the selected step; 0 for none.
    [[nodiscard]] virtual std::int32_t SelectedStep() const = 0;
    /// Phases of the connection that the site panel shows: 1, 3, or 0 while it shows none.
    [[nodiscard]] virtual std::int32_t Phases() const = 0;
    /// Shows a load that a step has just taken. May raise.
    virtual void DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) = 0;
};

/// Opens the entry form of a kind for a new load, modally. A code of no kind brings the message "Load not
/// implemented.".
void DisplayNewLoadInputForm(std::int32_t loadType, QWidget* owner, PlatformServices& platform,
                             LoadFormHost& host);

/// Opens the entry form of a stored load, modally.
/// @param stepNumber position of the load's step.
void EditLoad(Load& load, std::int32_t stepNumber, QWidget* owner, PlatformServices& platform,
              LoadFormHost& host);

}  // namespace genvara
