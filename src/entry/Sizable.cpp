#include "Sizable.h"

#include <fmt/format.h>

#include "RaisedError.h"

namespace genvara {

void FollowConnection(CPwrSys& site, const PhasesOfConnection& phasesOf) {
    if (const auto phases = phasesOf(site.ConnectCode())) {
        site.Phases(*phases);
    }
}

void RequireConnection(const CPwrSys& site, const PhasesOfConnection& phasesOf, std::string_view whose) {
    if (!phasesOf(site.ConnectCode())) {
        throw RaisedError(0, "",
                          fmt::format("The connection code {}{} is not in the genset database.",
                                      site.ConnectCode(), whose));
    }
}

bool HasLoads(const CLoadProfile& profile) {
    return profile.NumLoadSteps() > 0 && profile.LoadStep(1).NumLoads() > 0;
}

void RequireLoads(const CLoadProfile& profile) {
    if (!HasLoads(profile)) {
        throw RaisedError(0, "", kNothingToSize);
    }
}

}  // namespace genvara
