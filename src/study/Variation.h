#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "CProject.h"
#include "DesignSearch.h"
#include "MemberChange.h"
#include "ProjectFormat.h"
#include "SiteCandidates.h"

/// A project that is changed and sized in memory, thousands of times.
namespace genvara {

/// A project as a study varies it.
struct StudyProject {
    CProject project;
    CPwrSys powerSystem;
    CLoadProfile loadProfile;
    DesignLimits limits;
    ProjectFormat format = ProjectFormat::Records;  ///< that it was read in
};

/// What every variation of a project is worked out by. All of it outlives the study; any number of threads
/// may use it.
struct StudyTables {
    EntryRules rules;
    CandidateStore& candidates;
};

/// One member of a project with a new value, as in "PowerSystem.Altitude".
struct MemberValue {
    std::string path;
    PropertyValue value;
};

[[nodiscard]] PathRoots RootsOf(StudyProject& project) noexcept;

/// Changes one member as its entry form would.
/// @throws RaisedError of `FollowPath` or `ChangeMember`.
void Change(StudyProject& project, const MemberValue& change, const EntryRules& rules);

/// The project that stands when this one has been saved in its format and opened again, with the phases of
/// its connection.
/// @throws RaisedError of the reader; 0 with a sentence for a project whose file could not be read in full.
[[nodiscard]] StudyProject Reopened(const StudyProject& project, const EntryRules& rules);

/// The same into a project at hand, of which nothing is kept but its defaults.
/// @throws RaisedError as `Reopened`; the project at hand is then of no use.
void ReopenInto(const StudyProject& project, const EntryRules& rules, StudyProject& opened);

/// The project with some members changed, in the order given, saved and opened again.
/// @throws RaisedError as the two above.
[[nodiscard]] StudyProject Changed(const StudyProject& project, std::span<const MemberValue> changes,
                                   const EntryRules& rules);

/// Makes sure that there is something to size, at a connection that the catalogue knows.
/// @throws RaisedError 0 with a sentence.
void RequireSizable(const StudyProject& project, const EntryRules& rules);

/// Nominal rating [kW] of all sets of a site in parallel, from that of one.
[[nodiscard]] double TotalRating(double nominalRating, const CPwrSys& site) noexcept;

/// What sizing a project comes to.
struct Sizing {
    std::optional<ChosenSet> set;      ///< the first recommended one
    std::optional<Tightest> tightest;  ///< of that set
    std::int32_t sets = 1;             ///< in parallel
    double total = 0.0;                ///< nominal rating of all of them [kW]
    std::int32_t numChosenSets = 0;    ///< as listed; 1 at most where the first alone was asked for
    SiteFilter filter{};               ///< whose candidates there were
    std::size_t row = 0;               ///< position of the set among them

    /// Whether two projects need the same row of the catalogue, or both none.
    [[nodiscard]] bool IsSameRow(const Sizing& other) const noexcept;
    /// Whether this one does with a smaller set, or with one at all.
    [[nodiscard]] bool IsSmaller(const Sizing& other) const noexcept {
        return set && (!other.set || total < other.total);
    }
};

/// Sizes one project after the other. Of one thread.
class ProjectSizer {
  public:
    explicit ProjectSizer(const StudyTables& tables) : m_tables(&tables) {}

    /// The answer of a run of the designer, to the last bit.
    /// @throws RaisedError of the run, of a load's figure that nothing but its report asks for, or 0 with a
    ///         sentence for a project without loads or with an unknown connection.
    [[nodiscard]] Sizing Size(const StudyProject& project,
                              DesignSearch::Goal goal = DesignSearch::Goal::First);

  private:
    const StudyTables* m_tables;
    DesignSearch m_search;
};

}  // namespace genvara
