#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "Order.h"

namespace genvara {

/// Positions of items, ascending.
using ItemGroup = std::vector<std::uint32_t>;
/// The items of each step; no step is empty.
using Arrangement = std::vector<ItemGroup>;

/// What an order arranges: loads, of which those that must start together are one item, and which item must
/// start before which.
class OrderItems {
  public:
    /// @throws RaisedError 0 with a sentence for a circle, or more steps in a row than there may be.
    OrderItems(const CLoadProfile& profile, const OrderRules& rules);

    [[nodiscard]] std::size_t Size() const noexcept { return m_items.size(); }
    [[nodiscard]] std::size_t MaxSteps() const noexcept { return m_maxSteps; }
    /// The loads of an item, in the order of the profile.
    [[nodiscard]] const std::vector<LoadPlace>& Loads(std::uint32_t item) const { return m_items[item]; }
    /// The items that must start in earlier steps.
    [[nodiscard]] const ItemGroup& Before(std::uint32_t item) const { return m_before[item]; }
    /// Number of steps that must come before an item's own, and behind it.
    [[nodiscard]] std::size_t StepsBefore(std::uint32_t item) const { return m_depth[item]; }
    [[nodiscard]] std::size_t StepsBehind(std::uint32_t item) const { return m_height[item]; }
    /// The items, each behind all that must start before it.
    [[nodiscard]] const ItemGroup& InOrder() const noexcept { return m_inOrder; }

    /// Whether an arrangement has no more steps than it may and starts what must be first before the rest.
    [[nodiscard]] bool Permits(const Arrangement& arrangement) const;
    /// The loads of a group, in the order of the profile.
    [[nodiscard]] std::vector<LoadPlace> LoadsOf(std::span<const std::uint32_t> group) const;
    [[nodiscard]] LoadOrder OrderOf(const Arrangement& arrangement) const;
    /// The arrangement of an order of all loads; nothing if loads of one item stand apart.
    [[nodiscard]] std::optional<Arrangement> ArrangementOf(const LoadOrder& order) const;

  private:
    void Join(const LoadOrder& present, const std::vector<LoadPair>& together);
    void Sort(const std::vector<LoadPair>& before);
    [[nodiscard]] std::uint32_t ItemOf(const LoadPlace& place) const;
    [[noreturn]] void RefuseCircle(const ItemGroup& left) const;

    std::size_t m_maxSteps;
    std::vector<std::vector<LoadPlace>> m_items;
    std::vector<ItemGroup> m_before;
    std::vector<std::size_t> m_depth;
    std::vector<std::size_t> m_height;
    ItemGroup m_inOrder;
};

}  // namespace genvara
