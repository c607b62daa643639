#include "OrderItems.h"

#include <fmt/format.h>

#include <algorithm>
#include <numeric>

#include "RaisedError.h"

namespace genvara {
namespace {

/// "Step[1].Load[2]", or "Step[1].Load[2]+Step[1].Load[3]" of loads that start together.
std::string PlacesText(const std::vector<LoadPlace>& places) {
    std::string text;
    for (const LoadPlace& place : places) {
        text += (text.empty() ? "" : "+") + PlaceText(place);
    }
    return text;
}

}  // namespace

OrderItems::OrderItems(const CLoadProfile& profile, const OrderRules& rules)
    : m_maxSteps(static_cast<std::size_t>(std::max(rules.maxSteps, 1))) {
    Join(PresentOrder(profile), rules.together);
    m_before.resize(m_items.size());
    m_depth.resize(m_items.size());
    m_height.resize(m_items.size());
    Sort(rules.before);
    const std::size_t steps = m_depth.empty() ? 0 : *std::ranges::max_element(m_depth) + 1;
    if (steps > m_maxSteps) {
        throw RaisedError(
            0, "",
            fmt::format("Loads that must start one before the other need {} steps, and there may be "
                        "no more than {}.",
                        steps, m_maxSteps));
    }
}

/// Makes the items: each load one, until pairs join them.
void OrderItems::Join(const LoadOrder& present, const std::vector<LoadPair>& together) {
    for (const auto& step : present) {
        for (const LoadPlace& place : step) {
            m_items.push_back({place});
        }
    }
    for (const auto& [one, other] : together) {
        const std::uint32_t kept = std::min(ItemOf(one), ItemOf(other));
        const std::uint32_t joined = std::max(ItemOf(one), ItemOf(other));
        if (kept != joined) {
            std::vector<LoadPlace>& loads = m_items[kept];
            loads.insert(loads.end(), m_items[joined].begin(), m_items[joined].end());
            std::ranges::sort(loads);
            m_items.erase(m_items.begin() + joined);
        }
    }
}

/// Puts the items in an order that keeps to the pairs, and counts the steps that each needs around it.
void OrderItems::Sort(const std::vector<LoadPair>& before) {
    for (const auto& [first, second] : before) {
        const std::uint32_t earlier = ItemOf(first);
        ItemGroup& others = m_before[ItemOf(second)];
        if (std::ranges::find(others, earlier) == others.end()) {
            others.push_back(earlier);
        }
    }
    ItemGroup left(m_items.size());
    std::iota(left.begin(), left.end(), 0U);
    while (!left.empty()) {
        const auto isFree = [&](std::uint32_t item) {
            return std::ranges::none_of(m_before[item], [&](std::uint32_t earlier) {
                return std::ranges::find(left, earlier) != left.end();
            });
        };
        const auto next = std::ranges::find_if(left, isFree);
        if (next == left.end()) {
            RefuseCircle(left);
        }
        for (const std::uint32_t earlier : m_before[*next]) {
            m_depth[*next] = std::max(m_depth[*next], m_depth[earlier] + 1);
        }
        m_inOrder.push_back(*next);
        left.erase(next);
    }
    for (std::size_t i = m_inOrder.size(); i-- > 0;) {
        for (const std::uint32_t earlier : m_before[m_inOrder[i]]) {
            m_height[earlier] = std::max(m_height[earlier], m_height[m_inOrder[i]] + 1);
        }
    }
}

std::uint32_t OrderItems::ItemOf(const LoadPlace& place) const {
    const auto found = std::ranges::find_if(
        m_items, [&](const auto& loads) { return std::ranges::find(loads, place) != loads.end(); });
    return static_cast<std::uint32_t>(found - m_items.begin());
}

/// Names a circle: every item that is left waits for another one that is.
void OrderItems::RefuseCircle(const ItemGroup& left) const {
    ItemGroup way;
    std::uint32_t item = left.front();
    while (std::ranges::find(way, item) == way.end()) {
        way.push_back(item);
        item = *std::ranges::find_if(m_before[item], [&](std::uint32_t earlier) {
            return std::ranges::find(left, earlier) != left.end();
        });
    }
    way.erase(way.begin(), std::ranges::find(way, item));
    way.push_back(item);
    std::string text;
    for (std::size_t i = way.size(); i-- > 0;) {
        text += (text.empty() ? "" : " < ") + PlacesText(m_items[way[i]]);
    }
    throw RaisedError(0, "", fmt::format("Loads cannot start before each other in a circle: {}.", text));
}

bool OrderItems::Permits(const Arrangement& arrangement) const {
    if (arrangement.size() > m_maxSteps) {
        return false;
    }
    std::vector<std::size_t> step(m_items.size());
    for (std::size_t s = 0; s < arrangement.size(); ++s) {
        for (const std::uint32_t item : arrangement[s]) {
            step[item] = s;
        }
    }
    for (std::size_t item = 0; item < m_before.size(); ++item) {
        if (std::ranges::any_of(m_before[item],
                                [&](std::uint32_t earlier) { return step[earlier] >= step[item]; })) {
            return false;
        }
    }
    return true;
}

std::vector<LoadPlace> OrderItems::LoadsOf(std::span<const std::uint32_t> group) const {
    std::vector<LoadPlace> loads;
    for (const std::uint32_t item : group) {
        loads.insert(loads.end(), m_items[item].begin(), m_items[item].end());
    }
    std::ranges::sort(loads);
    return loads;
}

LoadOrder OrderItems::OrderOf(const Arrangement& arrangement) const {
    LoadOrder order;
    for (const ItemGroup& group : arrangement) {
        order.push_back(LoadsOf(group));
    }
    return order;
}

std::optional<Arrangement> OrderItems::ArrangementOf(const LoadOrder& order) const {
    Arrangement arrangement;
    for (const auto& loads : order) {
        ItemGroup group;
        for (const LoadPlace& place : loads) {
            group.push_back(ItemOf(place));
        }
        std::ranges::sort(group);
        group.erase(std::unique(group.begin(), group.end()), group.end());
        if (LoadsOf(group) != loads) {
            return std::nullopt;
        }
        if (!group.empty()) {
            arrangement.push_back(std::move(group));
        }
    }
    return arrangement;
}

}  // namespace genvara
