#include "StudyDesk.h"

namespace genvara {
namespace {

/// Any number of threads may ask the rules once the connections are read.
EntryRules RulesOf(Catalogue& catalogue) {
    (void)catalogue.Connections();
    return catalogue.Rules();
}

}  // namespace

StudyDesk::StudyDesk(Catalogue& catalogue)
    : m_database(catalogue.File()),
      m_gensets(m_database),
      m_candidates(m_gensets),
      m_tables{RulesOf(catalogue), m_candidates} {}

}  // namespace genvara
