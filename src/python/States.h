#pragma once

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "DesignLimits.h"
#include "DesignResults.h"
#include "Explain.h"
#include "PythonStudy.h"
#include "Variation.h"

/// What runs and studies came to as tuples of plain values, of which pickle makes it again: what Python sees
/// of it, to the last bit. Whatever is passed in place of such a tuple is refused with a TypeError, a
/// ValueError or a RaisedError.
namespace genvara::python {

using LimitsState = std::array<std::int32_t, 4>;
[[nodiscard]] LimitsState StateOf(const DesignLimits& limits);
/// @throws RaisedError of a limit's setter.
[[nodiscard]] DesignLimits LimitsOf(const LimitsState& state);

/// Model, alternator, engine, fuel; ratings, starting power and starting kVA; figures of the steps; the
/// greatest of them; whether there are data of frequency dips.
using SetState = std::tuple<std::array<std::string, 3>, std::int32_t, std::array<double, 4>,
                            std::array<std::vector<double>, 5>, std::array<double, 3>, bool>;
[[nodiscard]] SetState StateOf(const ChosenSet& set);
[[nodiscard]] ChosenSet SetOf(const SetState& state);

using TightestState = std::tuple<std::size_t, std::int32_t, double>;
[[nodiscard]] TightestState StateOf(const Tightest& tightest);
/// @throws ValueError for a test that there is not.
[[nodiscard]] Tightest TightestOf(const TightestState& state);

using VerdictState = std::tuple<double, double, bool>;
[[nodiscard]] VerdictState StateOf(const Verdict& verdict);
[[nodiscard]] Verdict VerdictOf(const VerdictState& state);

using ExplainedState =
    std::tuple<SetState, std::int32_t, std::int32_t, std::optional<std::string>, std::optional<double>,
               std::vector<std::array<VerdictState, kStepTests.size()>>, std::optional<TightestState>>;
[[nodiscard]] ExplainedState StateOf(const ExplainedSet& explained);
/// @throws ValueError for a fate, class or test that there is not.
[[nodiscard]] ExplainedSet ExplainedOf(const ExplainedState& state);

/// Which row of which candidates the set was is left out: nobody asks for it once a study has ended.
using SizingState = std::tuple<std::optional<SetState>, std::optional<TightestState>, double, std::int32_t>;
[[nodiscard]] SizingState StateOf(const Sizing& sizing);
/// @throws ValueError as `TightestOf`.
[[nodiscard]] Sizing SizingOf(const SizingState& state);

/// A project, its catalogue and the limits of its runs.
using StudyState = std::tuple<ProjectPtr, CataloguePtr, LimitsState>;
[[nodiscard]] StudyState StateOf(const PythonStudy& study);
/// @throws TypeError for None; RaisedError as `PythonStudy`, or of a limit's setter.
[[nodiscard]] StudyPtr StudyOf(const StudyState& state);

/// What a class answers to "__reduce__", so that pickle and copy make its objects again from their states.
/// @param maker name of the module's function that takes a state, which is defined here.
/// @param stateOf answers `(const Owner&)` with a state.
/// @param make answers `(const State&)` with an object.
template <typename Owner, typename StateOfOwner, typename Make>
auto Reduced(pybind11::module_& module, const char* maker, StateOfOwner stateOf, Make make) {
    namespace py = pybind11;
    module.def(maker, make, py::arg("state"));
    return [maker, stateOf](const Owner& self) {
        return py::make_tuple(py::module_::import("genvara._copies").attr("made"),
                              py::make_tuple(maker, stateOf(self)));
    };
}

}  // namespace genvara::python
