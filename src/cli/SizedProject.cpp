#include "SizedProject.h"

#include <fmt/format.h>

namespace genvara {

SizedProject::SizedProject(const std::filesystem::path& file, const SharedCatalogue& shared,
                           ProjectReadObserver& observer)
    : m_document(m_defaults, shared.catalogue, shared.gensets) {
    try {
        if (m_document.Read(file, observer) == ReadResult::Incompatible) {
            throw RaisedError(0, "frmMain::ReadProjectFile",
                              fmt::format("{} is no project file of a compatible version.", file.string()));
        }
        if (!m_document.KnowsConnection()) {
            throw RaisedError(
                0, "",
                fmt::format("The connection code {} of the project file {} is not in the genset database.",
                            PowerSystem().ConnectCode(), file.string()));
        }
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::Unreadable, failure};
    }
}

void SizedProject::Size(const DesignLimits& limits) {
    try {
        if (!m_document.HasLoads()) {
            throw RaisedError(0, "", kNothingToSize);
        }
        m_document.Designer().TakeLimits(limits);
        m_document.Size();
    } catch (const RaisedError& failure) {
        throw Failure(failure);
    }
}

ProjectFailure SizedProject::Failure(const RaisedError& error) const {
    return {.status = Status::RunFailed, .error = error, .culprit = m_document.Culprit(error)};
}

}  // namespace genvara
