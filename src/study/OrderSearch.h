#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "OrderJudge.h"
#include "OrderMargins.h"

namespace genvara {

/// Looks for the arrangement that does with the smallest sets.
class OrderSearch {
  public:
    /// All of these outlive the search.
    OrderSearch(OrderJudge& judge, const OrderItems& items, const SearchEffort& effort, const StopFlag& stop);

    /// An arrangement to begin with, and its total if it has a set; without one, one of the search's own.
    void Begin(const Arrangement& arrangement, std::optional<double> total);
    /// Tries every arrangement up to `kMostLoadsTried` items; beyond, searches and then tries as many as it
    /// may.
    void Run();

    /// The best arrangement, and its total; no total where none has a set.
    [[nodiscard]] const Arrangement& Best() const noexcept { return m_best; }
    [[nodiscard]] const std::optional<double>& Total() const noexcept { return m_total; }
    /// Candidates of a smaller total than the best that nothing excludes, in the order of the catalogue.
    [[nodiscard]] const std::vector<std::uint32_t>& Targets() const noexcept { return m_targets; }
    /// Whether none of them is left, or every arrangement was tried.
    [[nodiscard]] bool Proven() const noexcept { return m_triedAll || m_targets.empty(); }

  private:
    void Keep(const Arrangement& arrangement, double total);
    std::optional<double> Try(const Arrangement& arrangement);
    void CountOne();
    void Stand(const Arrangement& arrangement);
    void TryAll(Arrangement& begun, const StepFigures& before, std::vector<bool>& started, std::size_t left,
                const std::vector<std::uint32_t>& targets);
    void TryGroup(Arrangement& begun, const StepFigures& before, std::vector<bool>& started, std::size_t left,
                  const std::vector<std::uint32_t>& targets, const ItemGroup& group);
    [[nodiscard]] ItemGroup Startable(const std::vector<bool>& started) const;
    void Explore();
    [[nodiscard]] std::vector<Arrangement> StartsAtRandom();
    void Improve(Arrangement arrangement);
    [[nodiscard]] bool ImproveOnce(Arrangement& arrangement);
    [[nodiscard]] bool TakeIfBetter(Arrangement& arrangement, Arrangement changed);
    [[nodiscard]] Arrangement BySurplus();
    [[nodiscard]] Arrangement AtRandom();
    [[nodiscard]] bool IsOver();

    OrderJudge* m_judge;
    OrderMargins m_margins;  ///< of the smaller sets, with the arrangement that is improved
    const OrderItems* m_items;
    const SearchEffort* m_effort;
    const StopFlag* m_stop;
    std::chrono::steady_clock::time_point m_end;
    std::mt19937 m_dice;  ///< its numbers are the same everywhere
    Arrangement m_best;
    std::optional<double> m_total;
    std::vector<std::uint32_t> m_targets;
    std::int64_t m_judged = 0;
    std::int64_t m_stepsLeft = 0;  ///< that trying all may still judge
    bool m_gaveUp = false;
    bool m_triedAll = false;
};

}  // namespace genvara
