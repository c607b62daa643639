#include "OrderMargins.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

#include "RaisedError.h"

namespace genvara {
namespace {

constexpr double kAll = std::numeric_limits<double>::infinity();
/// A set fails by no more than sums in another order differ by [percent].
constexpr double kAnyOrder = -1e-6;

void TakeLeast(std::vector<double>& margins, const std::vector<double>& others) {
    std::ranges::transform(margins, others, margins.begin(),
                           [](double one, double other) { return std::min(one, other); });
}

/// Adds what an item brings to what others bring to the same step, but for the last bits. Sums of these are
/// left for `FiguresOn`.
void Join(StepFigures& group, const StepFigures& item) {
    const auto add = [](auto& sums, const auto& figures) {
        std::ranges::transform(sums, figures, sums.begin(), std::plus<>{});
    };
    add(group.runKW, item.runKW);
    add(group.runKVAR, item.runKVAR);
    group.stepStartKW += item.stepStartKW;
    group.startKVAR += item.startKVAR;
    group.maxVoltageDip = std::min(group.maxVoltageDip, item.maxVoltageDip);
    group.startShare = std::min(group.startShare, item.startShare);
    group.rect6P += item.rect6P;
    group.rect12P += item.rect12P;
    group.rect6PFiltered += item.rect6PFiltered;
    group.rect12PFiltered += item.rect12PFiltered;
    group.phaseCtrl6P += item.phaseCtrl6P;
    add(group.rect1P, item.rect1P);
    add(group.ballastElec, item.ballastElec);
    add(group.ballastMag, item.ballastMag);
}

double MostOf(const std::vector<double>& margins, std::size_t count) {
    double most = OrderMargins::kHopeless;
    for (std::size_t i = 0; i < count; ++i) {
        most = std::max(most, margins[i]);
    }
    return most;
}

/// The margin of a test; a set that fails where nothing is there has none to get better.
double MarginOf(const Verdict& verdict) {
    return verdict.Margin().value_or(verdict.Fails() ? OrderMargins::kHopeless : kAll);
}

/// The least margin of the tests that look at a figure.
template <Figure figure>
double LeastMargin(const StepTrial& trial) {
    double least = kAll;
    const auto take = [&](const StepTest& test) {
        if (test.figure == figure) {
            least = std::min(least, MarginOf(test.judge(trial)));
        }
    };
    [&]<std::size_t... Test>(std::index_sequence<Test...>) {
        (take(kStepTests[Test]), ...);
    }
    (std::make_index_sequence<kStepTests.size()>{});
    return least;
}

}  // namespace

void OrderMargins::Stand(Arrangement arrangement, std::vector<std::uint32_t> sets, std::size_t weighed) {
    m_weighed = std::min(weighed, sets.size());
    m_arrangement = std::move(arrangement);
    m_sets = std::move(sets);
    m_margin = kHopeless;
    m_figures.clear();
    m_before.assign(1, std::vector<double>(m_sets.size(), kAll));
    m_behind.assign(m_arrangement.size() + 1, std::vector<double>(m_sets.size(), kAll));
    try {
        StepFigures before;
        for (std::size_t s = 0; s < m_arrangement.size(); ++s) {
            before = m_figures.emplace_back(FiguresOn(Brought(m_arrangement[s]), before));
            m_behind[s].assign(m_sets.size(), kAll);
            for (const Stage stage : kStages) {
                JudgeStep(before, stage, kHopeless, m_behind[s]);
            }
            m_before.push_back(m_before.back());
            TakeLeast(m_before.back(), m_behind[s]);
        }
    } catch (const RaisedError&) {
        // What cannot be judged has nothing in common with another arrangement.
        m_arrangement.clear();
        m_before.resize(1);
        m_behind.assign(1, std::vector<double>(m_sets.size(), kAll));
        return;
    }
    for (std::size_t s = m_arrangement.size(); s-- > 0;) {
        TakeLeast(m_behind[s], m_behind[s + 1]);
    }
    m_margin = MostOf(m_before.back(), m_weighed);
}

OrderMargins::Nearness OrderMargins::Judge(const Arrangement& arrangement, double least) {
    const auto [stood, tried] = std::ranges::mismatch(m_arrangement, arrangement);
    const auto first = static_cast<std::size_t>(tried - arrangement.begin());
    std::size_t last = arrangement.size();  // behind the last step that changed
    std::size_t behind = m_arrangement.size();
    while (last > first && behind > first && arrangement[last - 1] == m_arrangement[behind - 1]) {
        --last;
        --behind;
    }
    m_left = m_before[first];
    TakeLeast(m_left, m_behind[behind]);
    try {
        m_changed.clear();
        StepFigures before = first > 0 ? m_figures[first - 1] : StepFigures{};
        for (std::size_t s = first; s < last; ++s) {
            before = m_changed.emplace_back(FiguresOn(Brought(arrangement[s]), before));
        }
        for (const Stage stage : kStages) {
            for (std::size_t step = m_changed.size(); step-- > 0;) {
                if (IsHopeless(least)) {
                    return {};
                }
                JudgeStep(m_changed[step], stage, least, m_left);
            }
        }
    } catch (const RaisedError&) {
        return {};
    }
    Nearness nearness{.mayDo = MostOf(m_left, m_left.size()) > kAnyOrder};
    if (const double margin = MostOf(m_left, m_weighed); margin > least) {
        nearness.margin = margin;
    }
    return nearness;
}

/// The margin that a set must have to be of interest.
double OrderMargins::LeastOf(std::size_t set, double least) const noexcept {
    return set < m_weighed ? std::min(least, kAnyOrder) : kAnyOrder;
}

bool OrderMargins::IsHopeless(double least) const noexcept {
    for (std::size_t i = 0; i < m_left.size(); ++i) {
        if (m_left[i] > LeastOf(i, least)) {
            return false;
        }
    }
    return true;
}

StepFigures OrderMargins::Brought(const ItemGroup& group) {
    StepFigures brought = Item(group.front());
    for (auto item = std::next(group.begin()); item != group.end(); ++item) {
        Join(brought, Item(*item));
    }
    return brought;
}

const StepFigures& OrderMargins::Item(std::uint32_t item) {
    if (m_items.size() <= item) {
        m_items.resize(item + 1);
    }
    std::optional<StepFigures>& figures = m_items[item];
    return figures ? *figures : figures.emplace(m_judge->Own({item}));
}

/// Lowers the margin of each set that has more than the least to what some tests of a step leave it.
void OrderMargins::JudgeStep(const StepFigures& figures, Stage stage, double least,
                             std::vector<double>& margins) {
    std::optional<StepDistortion> distortion;
    for (std::size_t i = 0; i < margins.size(); ++i) {
        if (!(margins[i] > LeastOf(i, least))) {
            continue;
        }
        const Candidate& set = m_judge->Sets()[m_sets[i]];
        StepOutcome outcome;
        const StepTrial trial{.step = figures, .set = set, .outcome = outcome, .site = m_judge->Site()};
        double margin = kAll;
        if (stage == Stage::Powers) {
            margin = LeastMargin<Figure::None>(trial);
        } else if (stage == Stage::Dips) {
            outcome.freqDip = FrequencyDip(figures, set);
            outcome.voltDip = VoltageDip(figures, set, outcome.freqDip);
            margin =
                std::min(LeastMargin<Figure::FrequencyDip>(trial), LeastMargin<Figure::VoltageDip>(trial));
        } else if (AllowedDistortion(trial).applies) {
            if (!distortion) {
                distortion.emplace(figures);
            }
            outcome.distortion = distortion->On(set.generatorPower, set.generatorImpedance);
            margin = LeastMargin<Figure::Distortion>(trial);
        }
        margins[i] = std::min(margins[i], margin);
    }
}

}  // namespace genvara
