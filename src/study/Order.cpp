#include "Order.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string>

#include "EntryNumbers.h"
#include "OrderItems.h"
#include "OrderJudge.h"
#include "OrderSearch.h"
#include "RaisedError.h"

namespace genvara {
namespace {

[[noreturn]] void Refuse(std::string description) {
    throw RaisedError(0, "", std::move(description));
}

[[noreturn]] void RefusePlace(std::string_view text) {
    Refuse(fmt::format("\"{}\" is no load: one reads Step[1].Load[2].", text));
}

/// Takes a mark like "Step[" and the position behind it, up to its bracket.
std::int32_t TakePosition(std::string_view& left, std::string_view mark, std::string_view whole) {
    std::int32_t position = 0;
    if (!left.starts_with(mark)) {
        RefusePlace(whole);
    }
    left.remove_prefix(mark.size());
    const auto [end, failure] = std::from_chars(left.data(), left.data() + left.size(), position);
    left.remove_prefix(static_cast<std::size_t>(end - left.data()));
    if (failure != std::errc{} || position < 1 || !left.starts_with(']')) {
        RefusePlace(whole);
    }
    left.remove_prefix(1);
    return position;
}

const Load& LoadAt(const CLoadProfile& profile, const LoadPlace& place) {
    return *std::next(profile.LoadStep(place.step).begin(), place.load - 1);
}

/// The position of the project's step with just these loads; 0 if there is none.
std::int32_t StepWith(const LoadOrder& present, const std::vector<LoadPlace>& loads) {
    const auto found = std::ranges::find(present, loads);
    return found == present.end() ? 0 : static_cast<std::int32_t>(found - present.begin()) + 1;
}

std::string NamesOf(const CLoadProfile& profile, const std::vector<LoadPlace>& loads) {
    std::string names;
    for (const LoadPlace& place : loads) {
        names += (names.empty() ? "" : ", ") + LoadAt(profile, place).name();
    }
    return names;
}

/// The smallest of some rows; of equal ones the first of the catalogue.
std::optional<CatalogueRow> SmallestRow(const OrderJudge& judge, const std::vector<std::uint32_t>& rows) {
    const auto smallest =
        std::ranges::min_element(rows, {}, [&](std::uint32_t row) { return judge.TotalOf(row); });
    return smallest == rows.end() ? std::nullopt : std::optional(judge.RowOf(*smallest));
}

CatalogueRow RowOf(const ChosenSet& set) {
    return {.ModelNum = set.ModelNum,
            .AltNum = set.AltNum,
            .EngineNum = set.EngineNum,
            .NominalRating = set.NominalRating,
            .DeratedRating = set.DeratedRating};
}

}  // namespace

std::string PlaceText(const LoadPlace& place) {
    return fmt::format("Step[{}].Load[{}]", place.step, place.load);
}

LoadPlace ParsePlace(std::string_view text, const CLoadProfile& profile) {
    const std::string trimmed = Trimmed(text);
    std::string_view left = trimmed;
    LoadPlace place;
    place.step = TakePosition(left, "Step[", text);
    place.load = TakePosition(left, ".Load[", text);
    if (!left.empty()) {
        RefusePlace(text);
    }
    if (place.step > profile.NumLoadSteps() || place.load > profile.LoadStep(place.step).NumLoads()) {
        Refuse(
            fmt::format("{} does not exist: the project has {} step{}{}.", PlaceText(place),
                        profile.NumLoadSteps(), profile.NumLoadSteps() == 1 ? "" : "s",
                        place.step > profile.NumLoadSteps()
                            ? ""
                            : fmt::format(", and this one {} load{}", profile.LoadStep(place.step).NumLoads(),
                                          profile.LoadStep(place.step).NumLoads() == 1 ? "" : "s")));
    }
    return place;
}

LoadPair ParsePair(std::string_view text, char mark, const CLoadProfile& profile) {
    const std::size_t place = text.find(mark);
    if (place == std::string_view::npos) {
        Refuse(fmt::format("\"{}\" names no two loads: write Step[1].Load[2]{}Step[3].Load[1].", text, mark));
    }
    return {ParsePlace(text.substr(0, place), profile), ParsePlace(text.substr(place + 1), profile)};
}

LoadOrder PresentOrder(const CLoadProfile& profile) {
    LoadOrder order;
    for (const CLoadStep& step : profile) {
        std::vector<LoadPlace>& loads = order.emplace_back();
        for (std::int32_t load = 1; load <= step.NumLoads(); ++load) {
            loads.push_back({static_cast<std::int32_t>(order.size()), load});
        }
    }
    return order;
}

StudyProject Reordered(const StudyProject& project, const LoadOrder& order) {
    const CLoadProfile& old = project.loadProfile;
    const LoadOrder present = PresentOrder(old);
    StudyProject reordered{.project = project.project,
                           .powerSystem = project.powerSystem,
                           .loadProfile = {},
                           .limits = project.limits,
                           .format = project.format};
    for (const std::vector<LoadPlace>& loads : order) {
        const std::int32_t kept = StepWith(present, loads);
        std::int32_t dip = kept > 0 ? old.LoadStep(kept).MaxVoltageDipOverride() : kStepVoltageDip.greatest;
        for (const LoadPlace& place : loads) {
            dip = std::min(dip, old.LoadStep(place.step).MaxVoltageDipOverride());
        }
        CLoadProfile& profile = reordered.loadProfile;
        profile.AddLoadStep(kept > 0 ? old.LoadStep(kept).Description() : NamesOf(old, loads), dip, 0);
        CLoadStep& step = profile.LoadStep(profile.NumLoadSteps());
        for (const LoadPlace& place : loads) {
            step.AddLoad(LoadAt(old, place).Clone());
        }
    }
    return reordered;
}

void RequireOrder(const CLoadProfile& profile, const OrderRules& rules) {
    (void)OrderItems(profile, rules);
}

OrderAnswer FindOrder(const StudyProject& project, const OrderRules& rules, const StudyTables& tables,
                      const SearchEffort& effort, const StopFlag& stop) {
    ProjectSizer sizer(tables);
    OrderAnswer answer;
    answer.now = sizer.Size(project);
    answer.steps = PresentOrder(project.loadProfile);

    const OrderItems items(project.loadProfile, rules);
    const StudyProject saved = Reopened(project, tables.rules);
    answer.best = sizer.Size(saved);  // a file of more digits than are written has other last bits than now
    if (answer.now.IsSmaller(answer.best)) {
        answer.best = answer.now;
    }
    OrderJudge judge(saved, items, tables);
    OrderSearch search(judge, items, effort, stop);
    const std::optional<Arrangement> present = items.ArrangementOf(answer.steps);
    answer.presentIsPermitted =
        project.loadProfile.NumLoadSteps() <= rules.maxSteps && present && items.Permits(*present);
    if (answer.presentIsPermitted) {
        search.Begin(*present, answer.now.set ? std::optional(answer.now.total) : std::nullopt);
    }
    search.Run();

    answer.proven = search.Proven();
    const bool isBetter = search.Total() && (!answer.presentIsPermitted || !answer.now.set ||
                                             *search.Total() < answer.now.total);
    if (isBetter || !answer.presentIsPermitted) {
        answer.steps = items.OrderOf(search.Best());
        answer.isPresent = false;
        answer.best = sizer.Size(Reopened(Reordered(project, answer.steps), tables.rules));
    }
    if (!answer.proven) {
        answer.bound = SmallestRow(judge, search.Targets());
    } else if (answer.best.set) {
        answer.bound = RowOf(*answer.best.set);
    }
    return answer;
}

}  // namespace genvara
