#include "OrderSearch.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::uint32_t kSeed = 1;
/// Arrangements at random among which a search looks for where to begin, and how many of them it improves.
constexpr int kRandomStarts = 2000;
constexpr std::size_t kImprovedStarts = 8;
/// Smaller sets that a search comes nearer to at a time.
constexpr std::size_t kMostTargetsWeighed = 12;
/// Steps that trying all may judge where it need not come to its end.
constexpr std::int64_t kMostStepsTried = 300000;
/// Items of which all groups can be formed.
constexpr std::size_t kMostGrouped = 16;

ItemGroup Without(ItemGroup group, std::uint32_t item) {
    std::erase(group, item);
    return group;
}

ItemGroup With(ItemGroup group, std::uint32_t item) {
    group.insert(std::ranges::lower_bound(group, item), item);
    return group;
}

void DropEmpty(Arrangement& arrangement) {
    std::erase_if(arrangement, [](const ItemGroup& group) { return group.empty(); });
}

}  // namespace

OrderSearch::OrderSearch(OrderJudge& judge, const OrderItems& items, const SearchEffort& effort,
                         const StopFlag& stop)
    : m_judge(&judge),
      m_margins(judge),
      m_items(&items),
      m_effort(&effort),
      m_stop(&stop),
      m_end(std::chrono::steady_clock::now() +
            std::chrono::duration_cast<std::chrono::steady_clock::duration>(
                std::chrono::duration<double>(std::min(effort.seconds, 1e6)))),
      m_dice(kSeed) {
    for (std::uint32_t i = 0; i < judge.Sets().size(); ++i) {
        if (!judge.IsExcluded(i)) {
            m_targets.push_back(i);
        }
    }
}

void OrderSearch::Begin(const Arrangement& arrangement, std::optional<double> total) {
    m_best = arrangement;
    if (total) {
        Keep(arrangement, *total);
    }
}

void OrderSearch::Run() {
    if (m_best.empty()) {
        m_best = BySurplus();
        Try(m_best);
    }
    if (m_targets.empty()) {
        return;
    }
    const bool tryAll = m_items->Size() <= kMostLoadsTried;
    if (!tryAll) {
        Explore();
    }
    if (Proven() || m_gaveUp) {
        return;
    }
    m_stepsLeft = tryAll ? std::numeric_limits<std::int64_t>::max() : kMostStepsTried;
    Arrangement begun;
    std::vector<bool> started(m_items->Size());
    const std::vector<std::uint32_t> targets = m_targets;
    TryAll(begun, {}, started, m_items->Size(), targets);
    m_triedAll = !m_gaveUp;
}

void OrderSearch::Keep(const Arrangement& arrangement, double total) {
    m_best = arrangement;
    m_total = total;
    std::erase_if(m_targets, [&](std::uint32_t target) { return !(m_judge->TotalOf(target) < total); });
}

/// The total of an arrangement, which is kept if it is the best so far.
std::optional<double> OrderSearch::Try(const Arrangement& arrangement) {
    CountOne();
    try {
        const std::optional<double> total = m_judge->Total(m_judge->FiguresOf(arrangement));
        if (total && (!m_total || *total < *m_total)) {
            Keep(arrangement, *total);
        }
        return total;
    } catch (const RaisedError&) {
        return std::nullopt;
    }
}

void OrderSearch::CountOne() {
    RequireGoingOn(*m_stop);
    m_effort->count(++m_judged);
}

/// Searches on from an arrangement, to come nearer to the largest of the smaller sets.
void OrderSearch::Stand(const Arrangement& arrangement) {
    std::vector<std::uint32_t> targets = m_targets;
    std::ranges::stable_sort(targets, std::greater<>{},
                             [&](std::uint32_t target) { return m_judge->TotalOf(target); });
    m_margins.Stand(arrangement, std::move(targets), kMostTargetsWeighed);
}

/// The items that may start next.
ItemGroup OrderSearch::Startable(const std::vector<bool>& started) const {
    ItemGroup items;
    for (std::uint32_t item = 0; item < started.size(); ++item) {
        const bool isDue =
            !started[item] && std::ranges::all_of(m_items->Before(item),
                                                  [&](std::uint32_t earlier) { return started[earlier]; });
        if (isDue) {
            items.push_back(item);
        }
    }
    return items;
}

/// Tries every way to go on from steps that are there. A way on which none of the smaller sets is left is
/// not followed.
void OrderSearch::TryAll(Arrangement& begun, const StepFigures& before, std::vector<bool>& started,
                         std::size_t left, const std::vector<std::uint32_t>& targets) {
    const ItemGroup items = Startable(started);
    if (items.size() > kMostGrouped) {
        m_gaveUp = true;
        return;
    }
    const bool isLast = begun.size() + 1 == m_items->MaxSteps();
    const std::uint32_t groups = 1U << items.size();
    for (std::uint32_t mask = isLast ? groups - 1 : 1; mask < groups && !m_gaveUp && !m_targets.empty();
         ++mask) {
        ItemGroup group;
        for (std::size_t i = 0; i < items.size(); ++i) {
            if ((mask >> i & 1U) != 0) {
                group.push_back(items[i]);
            }
        }
        if (!isLast || group.size() == left) {
            TryGroup(begun, before, started, left, targets, group);
        }
    }
}

void OrderSearch::TryGroup(Arrangement& begun, const StepFigures& before, std::vector<bool>& started,
                           std::size_t left, const std::vector<std::uint32_t>& targets,
                           const ItemGroup& group) {
    RequireGoingOn(*m_stop);
    if (m_stepsLeft-- <= 0 || (m_items->Size() > kMostLoadsTried && IsOver())) {
        m_gaveUp = true;
        return;
    }
    std::optional<StepFigures> step;
    try {
        step = FiguresOn(m_judge->Own(group), before);
    } catch (const RaisedError&) {
        return;  // the run of such an order fails
    }
    std::vector<std::uint32_t> still = targets;
    if (m_total) {
        std::erase_if(still, [&](std::uint32_t target) { return !(m_judge->TotalOf(target) < *m_total); });
    }
    still = m_judge->Passing(*step, still);
    if (still.empty()) {
        return;
    }
    begun.push_back(group);
    if (group.size() == left) {
        Try(begun);
    } else {
        for (const std::uint32_t item : group) {
            started[item] = true;
        }
        TryAll(begun, *step, started, left - group.size(), still);
        for (const std::uint32_t item : group) {
            started[item] = false;
        }
    }
    begun.pop_back();
}

/// Improves the present order, the one by surplus of starting over running power, and the best of many.
void OrderSearch::Explore() {
    const Arrangement present = m_best;
    if (!present.empty()) {
        Improve(present);
    }
    Improve(BySurplus());
    for (Arrangement& start : StartsAtRandom()) {
        Improve(std::move(start));
    }
}

/// Of many arrangements at random those that come nearest to a smaller set, the nearest first.
std::vector<Arrangement> OrderSearch::StartsAtRandom() {
    std::vector<std::pair<double, Arrangement>> starts;
    Stand({});
    for (int i = 0; i < kRandomStarts && !Proven() && !m_gaveUp; ++i) {
        Arrangement start = AtRandom();
        CountOne();
        double least = OrderMargins::kHopeless;
        if (starts.size() >= kImprovedStarts) {
            least = starts.back().first;
        }
        const OrderMargins::Nearness nearness = m_margins.Judge(start, least);
        if (nearness.mayDo && Try(start)) {
            Stand({});
        }
        if (nearness.margin > least) {
            starts.resize(std::min(starts.size(), kImprovedStarts - 1));
            const auto place = std::ranges::upper_bound(starts, nearness.margin, std::greater<>{},
                                                        &std::pair<double, Arrangement>::first);
            starts.emplace(place, nearness.margin, std::move(start));
        }
        m_gaveUp = IsOver();
    }
    std::vector<Arrangement> nearest;
    nearest.reserve(starts.size());
    for (auto& [margin, start] : starts) {
        nearest.push_back(std::move(start));
    }
    return nearest;
}

void OrderSearch::Improve(Arrangement arrangement) {
    if (Proven() || m_gaveUp) {
        return;
    }
    Try(arrangement);
    Stand(arrangement);
    while (!Proven() && !m_gaveUp && ImproveOnce(arrangement)) {
    }
}

/// Takes the first move or exchange that makes an arrangement better.
bool OrderSearch::ImproveOnce(Arrangement& arrangement) {
    const std::size_t steps = arrangement.size();
    for (std::size_t from = 0; from < steps; ++from) {
        for (const std::uint32_t item : ItemGroup(arrangement[from])) {
            Arrangement lifted = arrangement;
            lifted[from] = Without(lifted[from], item);
            for (std::size_t to = 0; to < steps; ++to) {
                Arrangement moved = lifted;
                moved[to] = With(moved[to], item);
                if (to != from && TakeIfBetter(arrangement, std::move(moved))) {
                    return true;
                }
            }
            for (std::size_t to = 0; to <= steps; ++to) {
                Arrangement moved = lifted;
                moved.insert(moved.begin() + static_cast<std::ptrdiff_t>(to), {item});
                if (TakeIfBetter(arrangement, std::move(moved))) {
                    return true;
                }
            }
            for (std::size_t to = from + 1; to < steps; ++to) {
                for (const std::uint32_t other : arrangement[to]) {
                    Arrangement exchanged = lifted;
                    exchanged[to] = With(Without(exchanged[to], other), item);
                    exchanged[from] = With(exchanged[from], other);
                    if (TakeIfBetter(arrangement, std::move(exchanged))) {
                        return true;
                    }
                }
            }
        }
    }
    return false;
}

bool OrderSearch::TakeIfBetter(Arrangement& arrangement, Arrangement changed) {
    DropEmpty(changed);
    m_gaveUp = m_gaveUp || IsOver();
    if (m_gaveUp || !m_items->Permits(changed)) {
        return false;
    }
    CountOne();
    const OrderMargins::Nearness nearness = m_margins.Judge(changed, m_margins.Margin());
    const std::optional<double> total = m_total;
    if (nearness.mayDo) {
        Try(changed);
    }
    if (m_total == total && !(nearness.margin > m_margins.Margin())) {
        return false;
    }
    arrangement = std::move(changed);
    Stand(arrangement);
    return true;
}

/// One item a step, as long as there are steps, those that start with the largest surplus first.
Arrangement OrderSearch::BySurplus() {
    ItemGroup items = m_items->InOrder();
    const auto surplus = [&](std::uint32_t item) {
        const StepFigures& own = m_judge->Own({item});
        return own.stepStartKW - own.runKW[0];
    };
    try {
        std::ranges::stable_sort(items, std::greater<>{}, surplus);
    } catch (const RaisedError&) {
        items = m_items->InOrder();
    }
    Arrangement arrangement(m_items->MaxSteps());
    const std::size_t last = m_items->MaxSteps() - 1;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const std::size_t step = i * m_items->MaxSteps() / items.size();
        arrangement[std::clamp(step, m_items->StepsBefore(items[i]), last - m_items->StepsBehind(items[i]))]
            .push_back(items[i]);
    }
    std::ranges::for_each(arrangement, [](ItemGroup& group) { std::ranges::sort(group); });
    DropEmpty(arrangement);
    return m_items->Permits(arrangement) ? arrangement : AtRandom();
}

Arrangement OrderSearch::AtRandom() {
    Arrangement arrangement(m_items->MaxSteps());
    std::vector<std::size_t> step(m_items->Size());
    for (const std::uint32_t item : m_items->InOrder()) {
        std::size_t least = m_items->StepsBefore(item);
        for (const std::uint32_t earlier : m_items->Before(item)) {
            least = std::max(least, step[earlier] + 1);
        }
        const std::size_t most = m_items->MaxSteps() - 1 - m_items->StepsBehind(item);
        step[item] = least + m_dice() % (most - least + 1);
        arrangement[step[item]].push_back(item);
    }
    std::ranges::for_each(arrangement, [](ItemGroup& group) { std::ranges::sort(group); });
    DropEmpty(arrangement);
    return arrangement;
}

bool OrderSearch::IsOver() {
    RequireGoingOn(*m_stop);
    return std::chrono::steady_clock::now() >= m_end;
}

}  // namespace genvara
