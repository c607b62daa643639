#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "Candidate.h"
#include "CandidateReader.h"
#include "SiteCandidates.h"
#include "SiteRequirements.h"

namespace genvara {

/// Candidates with the figures that they have at a site, before any load is looked at. Of one thread; a
/// second preparation uses the room of the first.
class PreparedSite final : private SiteTables {
  public:
    /// Works the figures out, unless they are those of the preparation before.
    void Prepare(std::shared_ptr<const SiteCandidates> candidates, const SiteRequirements& site);

    [[nodiscard]] const SiteCandidates& Candidates() const noexcept { return *m_candidates; }
    [[nodiscard]] const SiteRequirements& Site() const noexcept { return m_site; }

    /// The candidates' figures in the order of the catalogue, up to the first that has none.
    [[nodiscard]] const std::vector<Candidate>& Sets() const noexcept { return m_sets; }
    /// What strikes a run behind the last of them: a candidate that cannot be worked out, or a catalogue that
    /// cannot be read to its end.
    [[nodiscard]] const std::optional<RaisedError>& Failure() const noexcept { return m_failure; }

    /// The positions of the candidates by derated rating, smallest first, equal ones in the order of the
    /// catalogue; none if a run may fail at one of them.
    [[nodiscard]] const std::vector<std::uint32_t>& SmallestFirst() const noexcept { return m_smallestFirst; }

    /// What the lists of a run show of a candidate beside figures.
    /// @throws RaisedError as `genvara::NamesOf`.
    [[nodiscard]] SetNames NamesOf(std::size_t candidate) const;
    /// Model number of an alternator, by its position.
    [[nodiscard]] const std::string& ModelNum(std::size_t alternator) const;

  private:
    [[nodiscard]] const DerateFactors& Derate(std::int32_t key) override;
    [[nodiscard]] const AlternatorOnSite& Alternator(std::int32_t key) override;
    void ReadSets();
    void SortSets();

    std::shared_ptr<const SiteCandidates> m_candidates;
    SiteRequirements m_site;
    std::vector<std::optional<DerateFactors>> m_derateFactors;
    std::vector<std::optional<AlternatorOnSite>> m_alternators;
    std::vector<Candidate> m_sets;
    std::optional<RaisedError> m_failure;
    std::vector<std::uint32_t> m_smallestFirst;
};

}  // namespace genvara
