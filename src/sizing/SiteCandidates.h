#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "CandidateReader.h"
#include "GensetSource.h"
#include "Kept.h"

namespace genvara {

/// The candidates of a site with all that they refer to, read once: what thousands of runs over the same rows
/// share. Nothing changes it, so that any number of threads may look at it.
///
/// Candidates stand in the order of the catalogue. In their rows a key of a derate code or an alternator is
/// its position here. What cannot be read is kept as the failure that strikes a run which comes to it, where
/// a run over the database would have met it.
class SiteCandidates {
  public:
    /// @throws RaisedError of the database if the candidates cannot be asked for.
    SiteCandidates(GensetSource& gensets, const SiteFilter& filter);

    [[nodiscard]] const std::vector<GensetNumbers>& Rows() const noexcept { return m_rows; }
    [[nodiscard]] const GensetTexts& Texts(std::size_t candidate) const { return m_texts[candidate]; }
    [[nodiscard]] const std::vector<Kept<DerateRow>>& DerateCodes() const noexcept { return m_derateCodes; }
    [[nodiscard]] const std::vector<Kept<AlternatorData>>& Alternators() const noexcept {
        return m_alternators;
    }
    /// The failure to read the candidates behind the last one.
    [[nodiscard]] const std::optional<RaisedError>& BrokenOff() const noexcept { return m_brokenOff; }

  private:
    void Read(GensetSource& gensets, GensetCursor& cursor);

    std::vector<GensetNumbers> m_rows;
    std::vector<GensetTexts> m_texts;
    std::vector<Kept<DerateRow>> m_derateCodes;
    std::vector<Kept<AlternatorData>> m_alternators;
    std::optional<RaisedError> m_brokenOff;
};

/// The candidates of every site that was asked for, each read at its first question. Any number of threads
/// may ask at the same time.
class CandidateStore {
  public:
    /// The source outlives the store; others may ask it too if it allows that.
    explicit CandidateStore(GensetSource& gensets) : m_gensets(&gensets) {}

    /// @throws RaisedError of the database.
    [[nodiscard]] std::shared_ptr<const SiteCandidates> Of(const SiteFilter& filter);

  private:
    GensetSource* m_gensets;
    std::mutex m_mutex;
    std::map<SiteFilter, std::shared_ptr<const SiteCandidates>> m_sites;
};

/// What of a site decides which rows are candidates.
[[nodiscard]] SiteFilter FilterOf(const CPwrSys& site);

}  // namespace genvara
