#include "StudyDesk.h"

#include <optional>
#include <utility>

namespace genvara {
namespace {

EntryRules RulesOf(Catalogue& catalogue) {
    std::map<std::int32_t, std::int32_t> phases;
    for (const ConnectionRecord& connection : catalogue.Connections()) {
        if (const auto count = catalogue.PhasesOf(connection.ID)) {
            phases.emplace(connection.ID, *count);
        }
    }
    return {
        .motors = {catalogue.Motors(), catalogue.MotorCodeLetters(), catalogue.MotorStartingMultipliers()},
        .phasesOf = [phases = std::move(phases)](std::int32_t code) {
            const auto found = phases.find(code);
            return found == phases.end() ? std::nullopt : std::optional(found->second);
        }};
}

}  // namespace

StudyDesk::StudyDesk(Catalogue& catalogue)
    : m_database(catalogue.File()),
      m_gensets(m_database),
      m_candidates(m_gensets),
      m_tables{RulesOf(catalogue), m_candidates} {}

}  // namespace genvara
