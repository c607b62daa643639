#pragma once

#include <cstdint>
#include <map>

#include "CachedGensets.h"
#include "Catalogue.h"
#include "GensetDatabase.h"
#include "SiteCandidates.h"
#include "Variation.h"

namespace genvara {

/// What studies beside the window's thread are worked out by: a connection of their own to the catalogue,
/// what they have read of it, and the rules of entry. Any number of threads may use it.
class StudyDesk {
  public:
    /// Reads what entry forms are worked out by. The catalogue outlives the desk.
    /// @throws RaisedError of the catalogue.
    explicit StudyDesk(Catalogue& catalogue);

    [[nodiscard]] const StudyTables& Tables() const noexcept { return m_tables; }

  private:
    GensetDatabase m_database;
    CachedGensets m_gensets;
    CandidateStore m_candidates;
    StudyTables m_tables;
};

}  // namespace genvara
