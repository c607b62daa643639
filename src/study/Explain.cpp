#include "Explain.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>

#include "DesignRun.h"
#include "JudgeInOrder.h"
#include "PreparedSite.h"
#include "ProfileFigures.h"
#include "ResultList.h"
#include "TransientClass.h"

namespace genvara {
namespace {

/// A candidate's place in one of the two lists.
struct Listed {
    double DeratedRating = 0.0;
    std::size_t candidate = 0;
};

/// What became of a candidate.
struct Judged {
    Fate fate = Fate::Recommended;
    std::int32_t reason = 0;
    double margin = 0.0;  ///< of its tightest test [percent]
};

/// Whether one undersized set is asked about rather than another: it is larger, or misses by less.
struct Nearness {
    double rating;
    double margin;

    auto operator<=>(const Nearness&) const = default;  // NOLINT(modernize-use-nullptr): none is meant
};

class Explainer {
  public:
    Explainer(const std::shared_ptr<const SiteCandidates>& candidates, const CPwrSys& site,
              const CLoadProfile& profile, const DesignLimits& limits)
        : m_chosen(limits.MaxSetsRecommended(), std::less<>{}),
          m_rejected(limits.MaxSetsUndersized(), std::greater<>{}) {
        m_prepared.Prepare(candidates, RequirementsOf(site, limits));
        if (!candidates->Rows().empty()) {
            m_profile = FiguresOf(profile, site);
        }
        m_judge.Begin(m_prepared.Site(), m_profile);
    }

    [[nodiscard]] Explanation Run(const ExplainChoice& choice, const StopFlag& stop) {
        JudgeAll(stop);
        Explanation explanation;
        explanation.counts = m_counts;
        for (const std::size_t candidate : Chosen(choice, explanation.unknownModels)) {
            RequireGoingOn(stop);
            explanation.sets.push_back(At(candidate));
        }
        if (!m_chosen.Records().empty()) {
            explanation.first = At(m_chosen.Records().front().candidate);
        }
        if (const auto next = NextSmaller(explanation.first)) {
            explanation.nextSmaller = At(*next);
        }
        return explanation;
    }

  private:
    void JudgeAll(const StopFlag& stop) {
        JudgeInOrder(m_prepared, m_profile, m_judge, [&](std::size_t i, Fate fate, std::int32_t reason) {
            RequireGoingOn(stop);
            const Candidate& set = m_prepared.Sets()[i];
            const std::optional<Tightest> tightest = m_judge.TightestOf(set);
            m_judged.push_back(
                {fate, reason, tightest ? tightest->margin : -std::numeric_limits<double>::infinity()});
            Count(m_counts, fate);
            List(m_chosen, fate == Fate::Recommended, set.deratedRating, i);
            List(m_rejected, fate == Fate::Undersized, set.deratedRating, i);
        });
    }

    template <typename Before>
    static void List(ResultList<Listed, Before>& list, bool belongs, double rating, std::size_t candidate) {
        if (belongs && list.Takes(rating)) {
            list.Insert({rating, candidate});
        }
    }

    /// The candidates of a choice; the models that none of them has go to `unknown`.
    [[nodiscard]] std::vector<std::size_t> Chosen(const ExplainChoice& choice,
                                                  std::vector<std::string>& unknown) const {
        std::vector<std::size_t> candidates;
        if (choice.IsOfLists()) {
            for (const Listed& listed : m_chosen.Records()) {
                candidates.push_back(listed.candidate);
            }
            for (const Listed& listed : m_rejected.Records()) {
                candidates.push_back(listed.candidate);
            }
            return candidates;
        }
        unknown = choice.models;
        for (std::size_t i = 0; i < m_judged.size(); ++i) {
            const std::string model = ModelOf(i);
            std::erase(unknown, model);
            if (choice.all || std::ranges::find(choice.models, model) != choice.models.end()) {
                candidates.push_back(i);
            }
        }
        return candidates;
    }

    /// The set that one asks about beside the first recommended one.
    [[nodiscard]] std::optional<std::size_t> NextSmaller(const std::optional<ExplainedSet>& first) const {
        std::optional<std::size_t> next;
        Nearness best{};
        for (std::size_t i = 0; i < m_judged.size(); ++i) {
            const Candidate& set = m_prepared.Sets()[i];
            if (m_judged[i].fate != Fate::Undersized ||
                (first && !(set.nominalRating < first->set.NominalRating))) {
                continue;
            }
            const Nearness nearness =
                first ? Nearness{set.nominalRating, m_judged[i].margin} : Nearness{set.deratedRating, 0.0};
            if (!next || nearness > best) {
                next = i;
                best = nearness;
            }
        }
        return next;
    }

    [[nodiscard]] ExplainedSet At(std::size_t candidate) {
        const Candidate& set = m_prepared.Sets()[candidate];
        m_judge.Judge(set);
        ExplainedSet explained;
        explained.set = RecordAt(candidate);
        explained.fate = m_judged[candidate].fate;
        explained.reason = m_judged[candidate].reason;
        explained.transientClass = TransientClassOf(explained.set);
        explained.loading = LoadingOf(set, m_profile.totalRunningKW);
        explained.steps = VerdictsOf(explained.set, m_profile, m_prepared.Site());
        explained.tightest = m_judge.TightestOf(set);
        return explained;
    }

    /// A set that is dropped may lack names, for which no run asks.
    [[nodiscard]] ChosenSet RecordAt(std::size_t candidate) {
        const GensetNumbers& row = m_prepared.Candidates().Rows()[candidate];
        const GensetTexts& texts = m_prepared.Candidates().Texts(candidate);
        const Candidate& set = m_prepared.Sets()[candidate];
        const std::string& altNum = m_prepared.ModelNum(set.alternator);
        if (HasNames(row, texts)) {
            return RecordOf(row, m_prepared.NamesOf(candidate), altNum, set, m_judge);
        }
        const std::string model = TextOrNone(texts.GensetModel);
        const std::string engine = TextOrNone(texts.EngineModel);
        const std::int32_t fuelType = row.Fuel.IsInteger() ? row.Fuel.Integer("Explain") : fuel::kAny;
        return RecordOf(row, {.model = model, .engine = engine, .fuelType = fuelType}, altNum, set, m_judge);
    }

    [[nodiscard]] std::string ModelOf(std::size_t candidate) const {
        return TextOrNone(m_prepared.Candidates().Texts(candidate).GensetModel);
    }

    [[nodiscard]] static std::string TextOrNone(const DbText& text) {
        return text.IsNull() ? std::string() : text.Text("Explain");
    }

    PreparedSite m_prepared;
    ProfileFigures m_profile;
    StepJudge m_judge;
    std::vector<Judged> m_judged;
    RunCounts m_counts;
    ResultList<Listed, std::less<>> m_chosen;
    ResultList<Listed, std::greater<>> m_rejected;
};

}  // namespace

std::optional<double> LoadingOf(const Candidate& set, double totalRunningKW) noexcept {
    const double loading = totalRunningKW * 100.0 / set.siteRating;
    return std::isfinite(loading) ? std::optional(loading) : std::nullopt;
}

Explanation Explain(const std::shared_ptr<const SiteCandidates>& candidates, const CPwrSys& site,
                    const CLoadProfile& profile, const DesignLimits& limits, const ExplainChoice& choice,
                    const StopFlag& stop) {
    return Explainer(candidates, site, profile, limits).Run(choice, stop);
}

}  // namespace genvara
