#include "SizedProject.h"

#include <fmt/format.h>

namespace genvara {

SizedProject::SizedProject(const std::filesystem::path& file, const SharedCatalogue& shared,
                           ProjectReadObserver& observer)
    : m_document(m_defaults, shared.catalogue, shared.gensets) {
    try {
        if (m_document.Read(file, observer) == ReadResult::Incompatible) {
            throw RaisedError(0, "frmMain::ReadProjectFile", WhyIncompatible(file));
        }
        m_document.RequireConnection(fmt::format(" of the project file {}", file.string()));
    } catch (const RaisedError& failure) {
        throw ProjectFailure{Status::Unreadable, failure};
    }
}

void SizedProject::Size(const DesignLimits& limits) {
    try {
        RequireLoads(LoadProfile());
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
