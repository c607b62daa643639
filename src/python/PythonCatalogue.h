#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "CachedGensets.h"
#include "Catalogue.h"
#include "MemberChange.h"
#include "SiteCandidates.h"

namespace genvara::python {

/// A catalogue that is fit to size with, and what of it is kept in memory. Any number of threads may size
/// with it at the same time.
class PythonCatalogue {
  public:
    /// @throws RaisedError if the database is missing or unfit; unfit is 0.
    explicit PythonCatalogue(const std::filesystem::path& file);

    [[nodiscard]] std::string File() const { return m_catalogue.File().string(); }
    [[nodiscard]] Catalogue& Data() noexcept { return m_catalogue; }
    [[nodiscard]] GensetSource& Gensets() noexcept { return m_gensets; }
    [[nodiscard]] CandidateStore& Candidates() noexcept { return m_candidates; }
    /// What changes of members are worked out by.
    /// @throws RaisedError of a motor table that cannot be read.
    [[nodiscard]] EntryRules Rules();

  private:
    Catalogue m_catalogue;
    CachedGensets m_gensets;
    CandidateStore m_candidates;
};

/// The catalogue beside the program, opened at the first call.
/// @throws RaisedError as `PythonCatalogue`.
[[nodiscard]] std::shared_ptr<PythonCatalogue> CatalogueBesideProgram();

/// The one that is given, or else the one beside the program.
[[nodiscard]] std::shared_ptr<PythonCatalogue> CatalogueOr(std::shared_ptr<PythonCatalogue> given);

}  // namespace genvara::python
