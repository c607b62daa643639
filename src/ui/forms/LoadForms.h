#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "CLoadProfile.h"
#include "CPwrSys.h"
#include "Catalogue.h"

class QWidget;

namespace genvara {

class PlatformServices;

/// The project that an entry form works on. All of it outlives the form.
struct LoadFormProject {
    CLoadProfile& profile;
    const CPwrSys& site;
    Catalogue& catalogue;
};

/// What an entry form asks and tells of the window.
class LoadFormHost {
  public:
    virtual ~LoadFormHost() = default;
    /// Position of the selected step; 0 for none.
    [[nodiscard]] virtual std::int32_t SelectedStep() const = 0;
    /// Phases of the connection that the site panel shows: 1, 3, or 0 while it shows none.
    [[nodiscard]] virtual std::int32_t Phases() const = 0;
    /// Shows a load that a step has just taken. May raise.
    virtual void DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) = 0;
    /// Runs a change of the project, so that it can be taken back under its name.
    virtual void Change(const std::string& /*name*/, const std::function<void()>& change) { change(); }
    /// A load was added or changed.
    virtual void ProjectChanged() = 0;
};

/// Who opens a form, and whom it may ask; all outlive it.
struct LoadFormServices {
    QWidget* owner;
    PlatformServices& platform;
    LoadFormHost& host;
    LoadFormProject project;
};

/// Opens the entry form of a kind for a new load, modally. A code of no kind brings the message "Load not
/// implemented.".
void DisplayNewLoadInputForm(std::int32_t loadType, const LoadFormServices& services);

/// Opens the entry form of a stored load, modally.
/// @param stepNumber position of the load's step.
void EditLoad(Load& load, std::int32_t stepNumber, const LoadFormServices& services);

}  // namespace genvara
