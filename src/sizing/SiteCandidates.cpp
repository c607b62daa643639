#include "SiteCandidates.h"

#include <unordered_map>

namespace genvara {
namespace {

/// Gives each key the position of its answer; a new key's answer is asked for.
template <typename Answer>
class Positions {
  public:
    explicit Positions(std::vector<Kept<Answer>>& answers) : m_answers(&answers) {}

    /// The field with its key's position in place of the key. A field that is no key stays what it is.
    template <typename Question>
    [[nodiscard]] DbNumber Renumbered(const DbNumber& field, Question question) {
        if (!field.IsInteger()) {
            return field;
        }
        const std::int32_t key = field.Integer("");
        const auto [place, isNew] = m_positions.try_emplace(key, m_answers->size());
        if (isNew) {
            m_answers->push_back(Kept<Answer>::Of([&] { return question(key); }));
        }
        return DbNumber(static_cast<double>(place->second));
    }

  private:
    std::vector<Kept<Answer>>* m_answers;
    std::unordered_map<std::int32_t, std::size_t> m_positions;
};

}  // namespace

SiteCandidates::SiteCandidates(GensetSource& gensets, const SiteFilter& filter) {
    const std::unique_ptr<GensetCursor> cursor = gensets.SelectGensets(filter);
    try {
        Read(gensets, *cursor);
    } catch (const RaisedError& failure) {
        m_brokenOff = failure;
    }
}

void SiteCandidates::Read(GensetSource& gensets, GensetCursor& cursor) {
    Positions derateCodes(m_derateCodes);
    Positions alternators(m_alternators);
    while (const GensetRow* row = cursor.Next()) {
        GensetNumbers& kept = m_rows.emplace_back(*row);
        m_texts.emplace_back(*row);
        kept.DerateCode = derateCodes.Renumbered(kept.DerateCode,
                                                 [&](std::int32_t key) { return gensets.DerateCode(key); });
        kept.AltModel = alternators.Renumbered(
            kept.AltModel, [&](std::int32_t key) { return AlternatorDataOf(gensets.Alternator(key)); });
    }
}

std::shared_ptr<const SiteCandidates> CandidateStore::Of(const SiteFilter& filter) {
    const std::lock_guard lock(m_mutex);
    std::shared_ptr<const SiteCandidates>& site = m_sites[filter];
    if (!site) {
        site = std::make_shared<const SiteCandidates>(*m_gensets, filter);
    }
    return site;
}

SiteFilter FilterOf(const CPwrSys& site) {
    return {.frequency = site.Freq(),
            .connectCode = site.ConnectCode(),
            .voltage = site.Voltage(),
            .fuel = site.Fuel()};
}

}  // namespace genvara
