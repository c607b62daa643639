#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace genvara {

/// The best records of a run, sorted by derated rating, never more than the list may show.
///
/// Equal ratings keep the order in which they came, so that the list is the one that sorting all records
/// and cutting would give.
template <typename Record, typename Before>
class ResultList {
  public:
    /// @param limit length of the list; below 0 counts as 0.
    ResultList(std::int32_t limit, Before before)
        : m_limit(static_cast<std::size_t>(std::max(limit, 0))), m_before(before) {}

    /// Whether a record of this rating [kW] would find a place.
    [[nodiscard]] bool Takes(double rating) const {
        return m_records.size() < m_limit ||
               (m_limit > 0 && m_before(rating, m_records.back().DeratedRating));
    }

    void Insert(Record record) {
        if (m_records.size() == m_limit) {
            m_records.pop_back();
            m_arrivals.pop_back();
        }
        const auto place = std::upper_bound(
            m_records.begin(), m_records.end(), record.DeratedRating,
            [this](double rating, const Record& other) { return m_before(rating, other.DeratedRating); });
        m_arrivals.insert(m_arrivals.begin() + (place - m_records.begin()), m_next++);
        m_records.insert(place, std::move(record));
    }

    [[nodiscard]] const std::vector<Record>& Records() const noexcept { return m_records; }
    [[nodiscard]] std::vector<Record> Release() { return std::move(m_records); }
    /// The records in the order in which they came.
    [[nodiscard]] std::vector<Record> ReleaseUnsorted() {
        std::vector<std::size_t> positions(m_records.size());
        std::iota(positions.begin(), positions.end(), std::size_t{0});
        std::ranges::sort(positions, {}, [this](std::size_t position) { return m_arrivals[position]; });
        std::vector<Record> records;
        records.reserve(m_records.size());
        for (const std::size_t position : positions) {
            records.push_back(std::move(m_records[position]));
        }
        return records;
    }

  private:
    std::size_t m_limit;
    Before m_before;
    std::vector<Record> m_records;
    std::vector<std::size_t> m_arrivals;  ///< when each came
    std::size_t m_next = 0;
};

}  // namespace genvara
