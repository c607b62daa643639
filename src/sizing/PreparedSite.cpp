#include "PreparedSite.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "CannotFail.h"

namespace genvara {
namespace {

/// Whether candidates have the same figures at two sites: a test's limit is no part of them.
bool HaveSameFigures(const SiteRequirements& one, const SiteRequirements& other) noexcept {
    SiteRequirements same = other;
    same.maxFreqDipEnabled = one.maxFreqDipEnabled;
    same.maxFreqDip = one.maxFreqDip;
    same.maxHarmonicsEnabled = one.maxHarmonicsEnabled;
    same.maxHarmonics = one.maxHarmonics;
    same.minLoading = one.minLoading;
    return same == one;
}

}  // namespace

void PreparedSite::Prepare(std::shared_ptr<const SiteCandidates> candidates, const SiteRequirements& site) {
    const bool isReady = candidates == m_candidates && HaveSameFigures(site, m_site);
    m_site = site;
    if (isReady) {
        return;
    }
    m_candidates = std::move(candidates);
    m_derateFactors.assign(m_candidates->DerateCodes().size(), std::nullopt);
    m_alternators.assign(m_candidates->Alternators().size(), std::nullopt);
    m_sets.clear();
    m_failure.reset();
    m_smallestFirst.clear();
    try {
        ReadSets();
        m_failure = m_candidates->BrokenOff();
    } catch (const RaisedError& failure) {
        m_failure = failure;
    }
    SortSets();
}

SetNames PreparedSite::NamesOf(std::size_t candidate) const {
    return genvara::NamesOf(m_candidates->Rows()[candidate], m_candidates->Texts(candidate));
}

const std::string& PreparedSite::ModelNum(std::size_t alternator) const {
    return m_candidates->Alternators()[alternator].Get().ModelNum;
}

const DerateFactors& PreparedSite::Derate(std::int32_t key) {
    const auto position = static_cast<std::size_t>(key);
    std::optional<DerateFactors>& factors = m_derateFactors[position];
    if (!factors) {
        factors = FactorsAt(m_candidates->DerateCodes()[position].Get(), m_site.ambTemp, m_site.altitude);
    }
    return *factors;
}

const AlternatorOnSite& PreparedSite::Alternator(std::int32_t key) {
    const auto position = static_cast<std::size_t>(key);
    std::optional<AlternatorOnSite>& placed = m_alternators[position];
    if (!placed) {
        placed = AlternatorAt(m_candidates->Alternators()[position].Get(), m_site, position);
    }
    return *placed;
}

void PreparedSite::ReadSets() {
    m_sets.reserve(m_candidates->Rows().size());
    for (const GensetNumbers& row : m_candidates->Rows()) {
        m_sets.push_back(CandidateAt(row, m_site, *this));
    }
}

void PreparedSite::SortSets() {
    const auto mayFail = [this](std::size_t i) {
        return !CannotFail(m_sets[i]) || !HasNames(m_candidates->Rows()[i], m_candidates->Texts(i));
    };
    m_smallestFirst.resize(m_sets.size());
    std::iota(m_smallestFirst.begin(), m_smallestFirst.end(), 0U);
    if (m_failure || std::ranges::any_of(m_smallestFirst, mayFail)) {
        m_smallestFirst.clear();
        return;
    }
    // Positions decide between equal ratings, so that no stable sort with room of its own is needed.
    std::ranges::sort(m_smallestFirst, [this](std::uint32_t a, std::uint32_t b) {
        const double ratingA = m_sets[a].deratedRating;
        const double ratingB = m_sets[b].deratedRating;
        return ratingA < ratingB || (ratingA == ratingB && a < b);
    });
}

}  // namespace genvara
