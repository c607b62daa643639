#pragma once

#include <compare>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Stopping.h"
#include "Variation.h"

/// Which loads should start together, and in which order, so that the smallest set does.
namespace genvara {

/// Where a load stands in a project as given; both count from 1.
struct LoadPlace {
    std::int32_t step = 0;
    std::int32_t load = 0;

    auto operator<=>(const LoadPlace&) const = default;  // NOLINT(modernize-use-nullptr): none is meant
};

/// The loads of each step.
using LoadOrder = std::vector<std::vector<LoadPlace>>;
using LoadPair = std::pair<LoadPlace, LoadPlace>;

/// What an order must keep to.
struct OrderRules {
    std::int32_t maxSteps = 0;
    std::vector<LoadPair> before;    ///< the first starts in an earlier step than the second
    std::vector<LoadPair> together;  ///< both start in one step
};

/// "Step[1].Load[2]".
[[nodiscard]] std::string PlaceText(const LoadPlace& place);

/// The load of a text as in "Step[1].Load[2]".
/// @throws RaisedError 0 with a sentence for a text that is none, or a load that the profile lacks.
[[nodiscard]] LoadPlace ParsePlace(std::string_view text, const CLoadProfile& profile);

/// Two loads with a mark between them, as in "Step[1].Load[2]<Step[3].Load[1]".
/// @throws RaisedError 0 as `ParsePlace`.
[[nodiscard]] LoadPair ParsePair(std::string_view text, char mark, const CLoadProfile& profile);

/// The loads of a profile as they stand; a step without any has an empty list.
[[nodiscard]] LoadOrder PresentOrder(const CLoadProfile& profile);

/// The project with its loads in another order. A step that the project has with these loads is kept; a new
/// one has the least dip limit of the steps that its loads came from, and is described by them.
/// @throws RaisedError of `CLoadStep::AddLoad` for a step with more loads than it can have.
[[nodiscard]] StudyProject Reordered(const StudyProject& project, const LoadOrder& order);

/// A row of the catalogue that an order may do with, or that no order can be proved to do without.
struct CatalogueRow {
    std::string ModelNum;
    std::string AltNum;
    std::string EngineNum;
    double NominalRating = 0.0;  ///< kW
    double DeratedRating = 0.0;  ///< kW
};

struct OrderAnswer {
    Sizing now;
    Sizing best;  ///< of a permitted order
    bool presentIsPermitted = true;
    bool isPresent = true;              ///< `steps` is the order of the project as given
    bool proven = false;                ///< no permitted order does with a smaller set
    std::optional<CatalogueRow> bound;  ///< the smallest row that no proof excludes
    LoadOrder steps;
};

/// Up to so many loads, those that start together counting as one, every order is tried.
inline constexpr std::size_t kMostLoadsTried = 8;

/// How far a search may go.
struct SearchEffort {
    double seconds = 10.0;                                          ///< with more loads than are all tried
    std::function<void(std::int64_t)> count = [](std::int64_t) {};  ///< is told of the orders judged
};

/// Finds the best permitted order: all of them up to `kMostLoadsTried` loads; with more, the best that a
/// search comes upon, and whether a bound or having tried all proves it. With no time limit reached the same
/// question has the same answer everywhere.
/// @throws RaisedError of the present project's sizing; 0 with a sentence for rules that no order keeps to,
/// and
///         naming the loads that are to start before each other in a circle; StudyStopped.
[[nodiscard]] OrderAnswer FindOrder(const StudyProject& project, const OrderRules& rules,
                                    const StudyTables& tables, const SearchEffort& effort,
                                    const StopFlag& stop);

/// Makes sure that some order keeps to the rules.
/// @throws RaisedError 0 as `FindOrder`.
void RequireOrder(const CLoadProfile& profile, const OrderRules& rules);

}  // namespace genvara
