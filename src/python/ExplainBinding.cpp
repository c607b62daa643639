#include <fmt/format.h>
#include <pybind11/stl.h>

#include <optional>
#include <string>
#include <vector>

#include "Bindings.h"
#include "SetMembers.h"
#include "SizingResult.h"
#include "States.h"
#include "StepTests.h"
#include "VerdictWords.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

/// A test of a step with its two figures.
struct TestOfStep {
    const StepTest* test;
    Verdict verdict;
};

struct SetWithReason {
    ExplainedSet explained;
    std::string reason;
};

using TestState = std::tuple<std::size_t, VerdictState>;
using TightestTestState = std::tuple<std::string, std::int32_t, double>;
using ReasonState = std::tuple<ExplainedState, std::string>;

TestState StateOfTest(const TestOfStep& test) {
    return {static_cast<std::size_t>(test.test - kStepTests.data()), StateOf(test.verdict)};
}

TestOfStep TestOf(const TestState& state) {
    const auto& [test, verdict] = state;
    if (test >= kStepTests.size()) {
        throw py::value_error(fmt::format("there is no test {}", test));
    }
    return {&kStepTests[test], VerdictOf(verdict)};
}

std::vector<std::vector<TestOfStep>> StepsOf(const SetWithReason& set) {
    std::vector<std::vector<TestOfStep>> steps;
    for (const StepVerdicts& verdicts : set.explained.steps) {
        std::vector<TestOfStep>& tests = steps.emplace_back();
        for (std::size_t i = 0; i < verdicts.size(); ++i) {
            tests.push_back({&kStepTests[i], verdicts[i]});
        }
    }
    return steps;
}

std::optional<TightestTest> TightestOfSet(const SetWithReason& set) {
    return NamedTightest(set.explained.tightest);
}

std::vector<SetWithReason> ExplainedBy(const SizingResult& result, bool all,
                                       const std::vector<std::string>& models) {
    const py::gil_scoped_release others;
    Explanation explanation = result.Explained({.all = all, .models = models});
    std::vector<SetWithReason> sets;
    for (ExplainedSet& explained : explanation.sets) {
        std::string reason = ReasonOf(explained, result.LoadProfile(), result.Designer().MinLoading());
        sets.push_back({std::move(explained), std::move(reason)});
    }
    return sets;
}

void BindTests(py::module_& module) {
    py::class_<TestOfStep>(module, "Test", "A test of a step with the two figures that decide it.")
        .def_property_readonly(
            "name", [](const TestOfStep& self) { return self.test->name; }, "Name of the test.")
        .def_property_readonly(
            "bit", [](const TestOfStep& self) { return self.test->bit; },
            "Bit of the test in a rejection reason.")
        .def_property_readonly(
            "unit", [](const TestOfStep& self) { return self.test->unit; }, "Unit of the figures.")
        .def_property_readonly(
            "needed", [](const TestOfStep& self) { return self.verdict.needed; }, "What the step asks for.")
        .def_property_readonly(
            "available", [](const TestOfStep& self) { return self.verdict.available; },
            "What the set offers.")
        .def_property_readonly(
            "applies", [](const TestOfStep& self) { return self.verdict.applies; },
            "False where the site sets no limit or the set has no data.")
        .def_property_readonly(
            "fails", [](const TestOfStep& self) { return self.verdict.Fails(); },
            "Whether the set fails the test.")
        .def_property_readonly(
            "margin", [](const TestOfStep& self) { return self.verdict.Margin(); },
            "What is left, in percent of what is there; None where the test does not apply.")
        .def("__repr__",
             [](const TestOfStep& self) {
                 return fmt::format("<genvara.Test {}: {:.1f} needed, {:.1f} available, {}>", self.test->name,
                                    self.verdict.needed, self.verdict.available, self.test->unit);
             })
        .def("__reduce__", Reduced<TestOfStep>(
                               module, "_test", [](const TestOfStep& self) { return StateOfTest(self); },
                               [](const TestState& state) { return TestOf(state); }));
    py::class_<TightestTest>(module, "Tightest", "The test that comes closest to failing, or fails by most.")
        .def_readonly("name", &TightestTest::name, "Name of the test.")
        .def_readonly("step_number", &TightestTest::stepNumber, "Position of the step, from 1.")
        .def_readonly("margin", &TightestTest::margin, "What is left, in percent of what is there.")
        .def("__repr__",
             [](const TightestTest& self) {
                 return fmt::format("<genvara.Tightest {} at step {}, {:.1f} %>", self.name, self.stepNumber,
                                    self.margin);
             })
        .def("__reduce__", Reduced<TightestTest>(
                               module, "_tightest",
                               [](const TightestTest& self) {
                                   return TightestTestState(self.name, self.stepNumber, self.margin);
                               },
                               [](const TightestTestState& state) {
                                   const auto& [name, stepNumber, margin] = state;
                                   return TightestTest{
                                       .name = name, .stepNumber = stepNumber, .margin = margin};
                               }));
}

}  // namespace

void BindExplanation(py::module_& module) {
    BindTests(module);
    py::class_<SetWithReason> set(module, "ExplainedSet", "A set with every test at every step.");
    AddSetMembers<SetWithReason>(
        set, [](const SetWithReason& self) -> const ChosenSet& { return self.explained.set; });
    set.def_property_readonly(
           "verdict", [](const SetWithReason& self) { return WordOf(self.explained.fate); },
           "\"recommended\", \"undersized\" or \"below minimum loading\".")
        .def_readonly("reason", &SetWithReason::reason, "Why, in a sentence.")
        .def_property_readonly(
            "transient_class", [](const SetWithReason& self) { return self.explained.transientClass; },
            "Class of ISO 8528-5 by its dips, \"none\", or None where it has no figures.")
        .def_property_readonly(
            "loading", [](const SetWithReason& self) { return self.explained.loading; },
            "Share of the rating that the whole profile uses. Unit: %.")
        .def_property_readonly("steps", StepsOf, "The tests of each step.")
        .def_property_readonly("tightest", TightestOfSet, "The tightest of all tests; None without any.")
        .def("__repr__",
             [](const SetWithReason& self) {
                 return fmt::format("<genvara.ExplainedSet {}: {}>", self.explained.set.ModelNum,
                                    WordOf(self.explained.fate));
             })
        .def("__reduce__",
             Reduced<SetWithReason>(
                 module, "_explained_set",
                 [](const SetWithReason& self) { return ReasonState(StateOf(self.explained), self.reason); },
                 [](const ReasonState& state) {
                     return SetWithReason{ExplainedOf(std::get<0>(state)), std::get<1>(state)};
                 }));
    // The class of results is bound by now; this is the part of it that is about single tests.
    const py::object result = module.attr("Result");
    result.attr("explain") =
        py::cpp_function(ExplainedBy, py::name("explain"), py::is_method(result), py::kw_only(),
                         py::arg("all") = false, py::arg("models") = std::vector<std::string>(),
                         "Why sets are recommended or not: those of the two lists, all candidates, or the "
                         "candidates of some models.");
}

}  // namespace genvara::python
