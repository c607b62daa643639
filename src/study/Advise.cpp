#include "Advise.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "Alterations.h"
#include "AlteredProject.h"
#include "Explain.h"
#include "InOrder.h"
#include "RaisedError.h"
#include "VariedProject.h"

namespace genvara {
namespace {

bool MoveOneLoad(const Alteration& one, const Alteration& other) {
    return one.move && other.move && one.move->load == other.move->load;
}

/// Whether two changes can be made together and are no third change of their own.
bool IsPair(const StudyProject& project, const Alteration& one, const Alteration& other) {
    if (one.member && other.member) {
        return one.member->path != other.member->path;
    }
    if ((one.order && other.move) || (one.move && other.order) || MoveOneLoad(one, other)) {
        return false;
    }
    // The step that both leave must keep a load.
    return !one.move || !other.move || one.move->load.step != other.move->load.step ||
           project.loadProfile.LoadStep(one.move->load.step).NumLoads() > 2;
}

/// What one change, or one value of a limit, comes to; nothing where the project does not take it.
using Outcome = std::optional<Sizing>;

bool Beats(const Outcome& outcome, const Outcome& other) {
    return outcome && (!other || outcome->IsSmaller(*other));
}

/// Where a change stands in the table and, of one kind, in the profile.
std::pair<AdviceKind, std::size_t> PlaceOf(const Alteration& alteration) {
    return {alteration.kind, alteration.place};
}

/// Finds the advice for one project.
class Adviser {
  public:
    Adviser(const StudyProject& project, const AdviceChoice& choice, const StudyTables& tables,
            std::int32_t jobs, const StopFlag& stop, const CountVariations& count)
        : m_project(&project),
          m_choice(choice),
          m_tables(&tables),
          m_jobs(jobs),
          m_stop(&stop),
          m_count(&count),
          m_plain(PlainAlterations(project, choice, tables.rules)),
          m_limits(LimitAxes(project, choice)) {}

    [[nodiscard]] AdviceList Run() {
        ProjectSizer sizer(*m_tables);
        m_list.now = sizer.Size(*m_project);
        NoteMinLoading();
        AddOrder();
        NotePlaces();
        m_total = CountAll();
        TrySingles();
        if (m_choice.pairs) {
            TryPairs();
        }
        std::ranges::stable_sort(m_list.advice, {}, [](const Advice& advice) {
            return std::tuple(advice.sizing.total, advice.alterations.size(),
                              PlaceOf(advice.alterations.front()), PlaceOf(advice.alterations.back()));
        });
        return std::move(m_list);
    }

  private:
    /// An alteration that is listed, and what it comes to.
    struct Found {
        std::vector<Alteration> alterations;
        Sizing sizing;
    };

    /// Sizes variations on one thread: a project with some alterations, and limits on top of it.
    class Trial {
      public:
        explicit Trial(const Adviser& adviser)
            : m_adviser(&adviser),
              m_sizer(*adviser.m_tables),
              m_varied(*adviser.m_project, adviser.m_tables->rules) {}

        /// Begins with alterations; false where the project does not take them.
        [[nodiscard]] bool Begin(std::span<const Alteration> alterations) {
            try {
                m_project = &m_varied.With(MembersOf(alterations));
                if (MovesLoads(alterations)) {
                    m_moved.emplace(m_varied.IsOfPieces() ? Moved(*m_project, alterations)
                                                          : Altered(*m_adviser->m_project, alterations,
                                                                    m_adviser->m_tables->rules));
                    m_project = &*m_moved;
                }
                return true;
            } catch (const RaisedError&) {
                return false;
            }
        }
        [[nodiscard]] Outcome Size() {
            RequireGoingOn(*m_adviser->m_stop);
            try {
                return m_sizer.Size(*m_project);
            } catch (const RaisedError&) {
                return std::nullopt;
            }
        }
        [[nodiscard]] Outcome Of(std::span<const Alteration> alterations) {
            return Begin(alterations) ? Size() : std::nullopt;
        }
        /// The outcome for every higher value of a limit. A limit is a whole number, which every format
        /// keeps, and so it may be set in the project that was opened again.
        [[nodiscard]] std::vector<Outcome> Raised(const LimitAxis& axis) {
            std::vector<Outcome> outcomes;
            for (std::int32_t value = axis.now + 1; value <= axis.most; ++value) {
                Set(axis, value);
                outcomes.push_back(Size());
            }
            Set(axis, axis.now);
            return outcomes;
        }
        void Set(const LimitAxis& axis, std::int32_t value) {
            SetValue(FollowPath(axis.path, RootsOf(*m_project)), value);
        }

      private:
        const Adviser* m_adviser;
        ProjectSizer m_sizer;
        VariedProject m_varied;
        std::optional<StudyProject> m_moved;  ///< with loads in other steps
        StudyProject* m_project = nullptr;    ///< the one of the two that is tried
    };

    void NoteMinLoading() {
        if (m_list.now.set) {
            return;
        }
        const auto candidates = m_tables->candidates.Of(FilterOf(m_project->powerSystem));
        const RunCounts counts = Explain(candidates, m_project->powerSystem, m_project->loadProfile,
                                         m_project->limits, {}, *m_stop)
                                     .counts;
        m_list.allBelowMinLoading = counts.Candidates() > 0 && counts.underloaded == counts.Candidates();
    }

    void AddOrder() {
        if (!m_choice.Has(AdviceKind::Order)) {
            return;
        }
        const OrderRules rules{
            .maxSteps = m_project->loadProfile.NumLoadSteps(), .before = {}, .together = {}};
        OrderAnswer answer = FindOrder(*m_project, rules, *m_tables, {}, *m_stop);
        if (answer.best.IsSmaller(m_list.now)) {
            m_plain.insert(
                m_plain.begin(),
                {.kind = AdviceKind::Order, .member = {}, .move = {}, .order = std::move(answer.steps)});
        }
    }

    /// Of one kind, values of limits stand before the switches that turn a limit off.
    void NotePlaces() {
        for (std::size_t i = 0; i < m_plain.size(); ++i) {
            m_plain[i].place = m_limits.size() + i;
        }
    }

    [[nodiscard]] std::int64_t CountAll() const {
        const auto plain = static_cast<std::int64_t>(m_plain.size());
        std::int64_t values = 0;
        std::int64_t squares = 0;
        for (const LimitAxis& axis : m_limits) {
            const std::int64_t of = std::max(axis.most - axis.now, 0);
            values += of;
            squares += of * of;
        }
        const std::int64_t singles = plain + values;
        const std::int64_t pairs = plain * (plain - 1) / 2 + plain * values + (values * values - squares) / 2;
        return singles + (m_choice.pairs ? pairs : 0);
    }

    void Count(std::int64_t variations) {
        m_done += variations;
        (*m_count)(m_done, m_total);
    }

    /// Does tasks on all threads; each gives what it found, which is filed in the order of the tasks.
    template <typename Task, typename Take>
    void DoAll(std::size_t tasks, Task task, Take take) {
        DoInOrder(
            static_cast<std::int64_t>(tasks), m_jobs, *m_stop,
            [&] {
                return [&, trial = Trial(*this)](std::int64_t index) mutable {
                    return task(trial, static_cast<std::size_t>(index));
                };
            },
            [&](std::int64_t index, auto result) {
                take(static_cast<std::size_t>(index), std::move(result));
            });
    }

    void TrySingles() {
        m_plainOutcomes.resize(m_plain.size());
        DoAll(
            m_plain.size(),
            [&](Trial& trial, std::size_t i) {
                return trial.Of({&m_plain[i], 1});
            },
            [&](std::size_t i, Outcome outcome) {
                m_plainOutcomes[i] = std::move(outcome);
                Count(1);
            });
        m_limitOutcomes.resize(m_limits.size());
        DoAll(
            m_limits.size(),
            [&](Trial& trial, std::size_t i) {
                return trial.Begin({}) ? trial.Raised(m_limits[i]) : std::vector<Outcome>();
            },
            [&](std::size_t i, std::vector<Outcome> outcomes) {
                Count(static_cast<std::int64_t>(outcomes.size()));
                m_limitOutcomes[i] = std::move(outcomes);
            });
        FileSingles();
    }

    /// In the order of the table: plain ones of kinds up to the starters and rectifiers, limits, then the
    /// rest.
    void FileSingles() {
        for (std::size_t kind = 0; kind < kAdviceKinds.size(); ++kind) {
            if (kind == static_cast<std::size_t>(AdviceKind::Limit)) {
                for (std::size_t axis = 0; axis < m_limits.size(); ++axis) {
                    FileLeast({}, axis, m_limitOutcomes[axis], std::nullopt);
                }
            }
            for (std::size_t i = 0; i < m_plain.size(); ++i) {
                if (static_cast<std::size_t>(m_plain[i].kind) == kind &&
                    Beats(m_plainOutcomes[i], m_list.now)) {
                    File({{m_plain[i]}, *m_plainOutcomes[i]});
                }
            }
        }
    }

    /// Files the least value of a limit for each set that it reaches, on top of another change or of none.
    void FileLeast(const std::vector<Alteration>& besides, std::size_t axis,
                   const std::vector<Outcome>& outcomes, const std::optional<Outcome>& other) {
        for (Found& found : Least(besides, axis, outcomes, other)) {
            File(std::move(found));
        }
    }
    [[nodiscard]] std::vector<Found> Least(const std::vector<Alteration>& besides, std::size_t axis,
                                           const std::vector<Outcome>& outcomes,
                                           const std::optional<Outcome>& other) const {
        std::vector<Found> found;
        for (std::size_t i = 0; i < outcomes.size(); ++i) {
            const Outcome& outcome = outcomes[i];
            const bool helps =
                Beats(outcome, m_list.now) &&
                (!other || (Beats(outcome, *other) && Beats(outcome, m_limitOutcomes[axis][i])));
            const auto isReached = [&](const Found& earlier) { return earlier.sizing.IsSameRow(*outcome); };
            if (helps && std::ranges::none_of(found, isReached)) {
                std::vector<Alteration> both = besides;
                both.push_back(Raise(axis, i));
                found.push_back({std::move(both), *outcome});
            }
        }
        return found;
    }

    [[nodiscard]] Alteration Raise(std::size_t axis, std::size_t index) const {
        const LimitAxis& limit = m_limits[axis];
        return {.kind = AdviceKind::Limit,
                .member = MemberValue{limit.path, limit.now + 1 + static_cast<std::int32_t>(index)},
                .move = {},
                .order = {},
                .place = axis};
    }

    void TryPairs() {
        const auto file = [&](std::size_t /*task*/, std::pair<std::int64_t, std::vector<Found>> result) {
            for (Found& found : result.second) {
                File(std::move(found));
            }
            Count(result.first);
        };
        DoAll(
            m_plain.size(), [&](Trial& trial, std::size_t i) { return PairsOf(trial, i); }, file);
        DoAll(
            m_limits.size(), [&](Trial& trial, std::size_t i) { return LimitPairsOf(trial, i); }, file);
    }

    using PairResult = std::pair<std::int64_t, std::vector<Found>>;

    /// A plain change with each behind it, and with each limit.
    [[nodiscard]] PairResult PairsOf(Trial& trial, std::size_t i) {
        PairResult result;
        for (std::size_t j = i + 1; j < m_plain.size(); ++j) {
            ++result.first;
            if (!IsPair(*m_project, m_plain[i], m_plain[j])) {
                continue;
            }
            const std::vector<Alteration> both{m_plain[i], m_plain[j]};
            const Outcome outcome = trial.Of(both);
            if (Beats(outcome, m_list.now) && Beats(outcome, m_plainOutcomes[i]) &&
                Beats(outcome, m_plainOutcomes[j])) {
                result.second.push_back({both, *outcome});
            }
        }
        for (std::size_t axis = 0; axis < m_limits.size(); ++axis) {
            std::vector<Outcome> outcomes = RaisedWith(trial, m_plain[i], axis);
            result.first += static_cast<std::int64_t>(outcomes.size());
            for (Found& found : Least({m_plain[i]}, axis, outcomes, m_plainOutcomes[i])) {
                result.second.push_back(std::move(found));
            }
        }
        return result;
    }

    /// A step's limit goes with its step wherever a move or an order puts it, and so such a pair is made anew
    /// for each value.
    [[nodiscard]] std::vector<Outcome> RaisedWith(Trial& trial, const Alteration& plain, std::size_t axis) {
        const bool keepsSteps = plain.member.has_value();
        if (keepsSteps) {
            return trial.Begin({&plain, 1}) ? trial.Raised(m_limits[axis])
                                            : std::vector<Outcome>(m_limitOutcomes[axis].size());
        }
        std::vector<Outcome> outcomes;
        for (std::size_t i = 0; i < m_limitOutcomes[axis].size(); ++i) {
            const std::vector<Alteration> both{plain, Raise(axis, i)};
            outcomes.push_back(trial.Of(both));
        }
        return outcomes;
    }

    /// A limit with each behind it: for each set the pairs of values of which none is higher in both.
    [[nodiscard]] PairResult LimitPairsOf(Trial& trial, std::size_t first) {
        PairResult result;
        if (!trial.Begin({})) {
            return result;
        }
        for (std::size_t second = first + 1; second < m_limits.size(); ++second) {
            std::vector<std::pair<std::size_t, Found>> kept;  // with the index of the second value
            for (std::size_t i = 0; i < m_limitOutcomes[first].size(); ++i) {
                trial.Set(m_limits[first], m_limits[first].now + 1 + static_cast<std::int32_t>(i));
                const std::vector<Outcome> outcomes = trial.Raised(m_limits[second]);
                result.first += static_cast<std::int64_t>(outcomes.size());
                for (Found& found : Least({Raise(first, i)}, second, outcomes, m_limitOutcomes[first][i])) {
                    const auto value = std::get<std::int32_t>(found.alterations.back().member->value);
                    const auto index = static_cast<std::size_t>(value - m_limits[second].now - 1);
                    const bool isLess = std::ranges::none_of(kept, [&](const auto& earlier) {
                        return earlier.first <= index && earlier.second.sizing.IsSameRow(found.sizing);
                    });
                    if (isLess) {
                        kept.emplace_back(index, std::move(found));
                    }
                }
            }
            trial.Set(m_limits[first], m_limits[first].now);
            for (auto& [index, found] : kept) {
                result.second.push_back(std::move(found));
            }
        }
        return result;
    }

    void File(Found found) {
        Advice advice;
        std::ranges::stable_sort(found.alterations, {}, PlaceOf);
        for (const Alteration& alteration : found.alterations) {
            const std::string sentence = SentenceOf(*m_project, alteration);
            advice.text += (advice.text.empty() ? "" : "; and: ") + sentence;
        }
        advice.text += ".";
        advice.differences = DifferencesOf(*m_project, found.alterations, m_tables->rules);
        advice.alterations = std::move(found.alterations);
        advice.sizing = std::move(found.sizing);
        if (m_list.now.set) {
            advice.saved = m_list.now.total - advice.sizing.total;
        }
        m_list.advice.push_back(std::move(advice));
    }

    const StudyProject* m_project;
    AdviceChoice m_choice;
    const StudyTables* m_tables;
    std::int32_t m_jobs;
    const StopFlag* m_stop;
    const CountVariations* m_count;
    std::vector<Alteration> m_plain;
    std::vector<LimitAxis> m_limits;
    std::vector<Outcome> m_plainOutcomes;
    std::vector<std::vector<Outcome>> m_limitOutcomes;  ///< by limit, then value
    AdviceList m_list;
    std::int64_t m_total = 0;
    std::int64_t m_done = 0;
};

}  // namespace

AdviceList Advise(const StudyProject& project, const AdviceChoice& choice, const StudyTables& tables,
                  std::int32_t jobs, const StopFlag& stop, const CountVariations& count) {
    return Adviser(project, choice, tables, jobs, stop, count).Run();
}

}  // namespace genvara
