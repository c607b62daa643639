#include "States.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "TransientClass.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

template <typename Value>
auto OptionalState(const std::optional<Value>& value) {
    return value ? std::optional(StateOf(*value)) : std::nullopt;
}

/// The class of a name, which has to outlive every state.
std::string_view ClassOf(const std::string& name) {
    const auto* const found = std::ranges::find(kTransientClasses, name, &TransientClass::name);
    if (found != kTransientClasses.end()) {
        return found->name;
    }
    if (name != kNoTransientClass) {
        throw py::value_error(fmt::format("there is no transient class \"{}\"", name));
    }
    return kNoTransientClass;
}

Fate FateOf(std::int32_t code) {
    for (const Fate fate : {Fate::Recommended, Fate::Undersized, Fate::BelowMinLoading}) {
        if (static_cast<std::int32_t>(fate) == code) {
            return fate;
        }
    }
    throw py::value_error(fmt::format("there is no verdict {}", code));
}

}  // namespace

LimitsState StateOf(const DesignLimits& limits) {
    return {limits.MinLoading(), limits.MaxLoading(), limits.MaxSetsRecommended(),
            limits.MaxSetsUndersized()};
}

DesignLimits LimitsOf(const LimitsState& state) {
    DesignLimits limits;
    limits.MinLoading(state[0]);
    limits.MaxLoading(state[1]);
    limits.MaxSetsRecommended(state[2]);
    limits.MaxSetsUndersized(state[3]);
    return limits;
}

SetState StateOf(const ChosenSet& set) {
    return {{set.ModelNum, set.AltNum, set.EngineNum},
            set.FuelType,
            {set.NominalRating, set.DeratedRating, set.StartingPower, set.StartKVA35},
            {set.VoltageDips, set.FreqDips, set.StepVTHD_A, set.StepVTHD_B, set.StepVTHD_C},
            {set.MaxStepVoltDip, set.MaxStepFreqDip, set.MaxStepVTHD},
            set.FreqDipAvail};
}

ChosenSet SetOf(const SetState& state) {
    const auto& [names, fuel, powers, steps, greatest, hasDips] = state;
    return {.ModelNum = names[0],
            .AltNum = names[1],
            .EngineNum = names[2],
            .FuelType = fuel,
            .NominalRating = powers[0],
            .DeratedRating = powers[1],
            .StartingPower = powers[2],
            .StartKVA35 = powers[3],
            .VoltageDips = steps[0],
            .FreqDips = steps[1],
            .StepVTHD_A = steps[2],
            .StepVTHD_B = steps[3],
            .StepVTHD_C = steps[4],
            .MaxStepVoltDip = greatest[0],
            .MaxStepFreqDip = greatest[1],
            .MaxStepVTHD = greatest[2],
            .FreqDipAvail = hasDips,
            .figures = {}};
}

TightestState StateOf(const Tightest& tightest) {
    return {tightest.test, tightest.stepNumber, tightest.margin};
}

Tightest TightestOf(const TightestState& state) {
    const auto& [test, stepNumber, margin] = state;
    if (test >= kStepTests.size()) {
        throw py::value_error(fmt::format("there is no test {}", test));
    }
    return {.test = test, .stepNumber = stepNumber, .margin = margin};
}

VerdictState StateOf(const Verdict& verdict) {
    return {verdict.needed, verdict.available, verdict.applies};
}

Verdict VerdictOf(const VerdictState& state) {
    const auto& [needed, available, applies] = state;
    return {.needed = needed, .available = available, .applies = applies};
}

ExplainedState StateOf(const ExplainedSet& explained) {
    ExplainedState state{StateOf(explained.set),
                         static_cast<std::int32_t>(explained.fate),
                         explained.reason,
                         std::nullopt,
                         explained.loading,
                         {},
                         OptionalState(explained.tightest)};
    if (explained.transientClass) {
        std::get<3>(state).emplace(*explained.transientClass);
    }
    for (const StepVerdicts& verdicts : explained.steps) {
        auto& tests = std::get<5>(state).emplace_back();
        std::ranges::transform(verdicts, tests.begin(),
                               [](const Verdict& verdict) { return StateOf(verdict); });
    }
    return state;
}

ExplainedSet ExplainedOf(const ExplainedState& state) {
    const auto& [set, fate, reason, transientClass, loading, steps, tightest] = state;
    ExplainedSet explained{.set = SetOf(set),
                           .fate = FateOf(fate),
                           .reason = reason,
                           .transientClass = std::nullopt,
                           .loading = loading,
                           .steps = {},
                           .tightest = std::nullopt};
    if (transientClass) {
        explained.transientClass = ClassOf(*transientClass);
    }
    for (const auto& tests : steps) {
        std::ranges::transform(tests, explained.steps.emplace_back().begin(), VerdictOf);
    }
    if (tightest) {
        explained.tightest = TightestOf(*tightest);
    }
    return explained;
}

SizingState StateOf(const Sizing& sizing) {
    return {OptionalState(sizing.set), OptionalState(sizing.tightest), sizing.total, sizing.numChosenSets};
}

Sizing SizingOf(const SizingState& state) {
    const auto& [set, tightest, total, numChosenSets] = state;
    Sizing sizing;
    if (set) {
        sizing.set = SetOf(*set);
    }
    if (tightest) {
        sizing.tightest = TightestOf(*tightest);
    }
    sizing.total = total;
    sizing.numChosenSets = numChosenSets;
    return sizing;
}

StudyState StateOf(const PythonStudy& study) {
    return {study.Made(study.Project()), study.Catalogue(), StateOf(study.Project().limits)};
}

StudyPtr StudyOf(const StudyState& state) {
    const auto& [project, catalogue, limits] = state;
    if (!project || !catalogue) {
        throw py::type_error("a study has a project and a catalogue");
    }
    return std::make_shared<const PythonStudy>(*project, catalogue, LimitsOf(limits));
}

}  // namespace genvara::python
