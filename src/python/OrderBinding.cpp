#include <fmt/format.h>
#include <pybind11/stl.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Bindings.h"
#include "Order.h"
#include "PythonStudy.h"
#include "SetMembers.h"
#include "States.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

struct PythonOrder {
    StudyPtr study;
    OrderAnswer answer;
};

/// A load as its path, or as itself.
std::string PlaceOf(const py::handle& load) {
    return py::hasattr(load, "path") ? load.attr("path").cast<std::string>() : load.cast<std::string>();
}

std::vector<LoadPair> PairsOf(const py::iterable& pairs, const CLoadProfile& profile) {
    std::vector<LoadPair> made;
    for (const py::handle pair : pairs) {
        const auto loads = py::tuple(py::reinterpret_borrow<py::object>(pair));
        if (py::isinstance<py::str>(pair) || loads.size() != 2) {
            throw py::type_error("a pair of loads is a tuple of two: paths, or loads themselves");
        }
        made.emplace_back(ParsePlace(PlaceOf(loads[0]), profile), ParsePlace(PlaceOf(loads[1]), profile));
    }
    return made;
}

PythonOrder FoundOrder(const PythonProject& project, const CataloguePtr& catalogue,
                       std::optional<std::int32_t> maxSteps, const py::iterable& before,
                       const py::iterable& together, double seconds, const py::kwargs& limits) {
    if (maxSteps && *maxSteps < 1) {
        throw py::value_error("max_steps must be at least 1");
    }
    if (!(seconds >= 0.0)) {
        throw py::value_error("seconds must not be below 0");
    }
    const StudyPtr study = BeginStudy("order", project, catalogue, limits);
    const CLoadProfile& profile = study->Project().loadProfile;
    const OrderRules rules{.maxSteps = maxSteps.value_or(profile.NumLoadSteps()),
                           .before = PairsOf(before, profile),
                           .together = PairsOf(together, profile)};
    RequireOrder(profile, rules);
    SearchEffort effort;
    effort.seconds = seconds;
    return {study, DoInterruptibly([&](const StopFlag& stop) {
                return FindOrder(study->Project(), rules, study->Tables(), effort, stop);
            })};
}

py::object BoundOf(const PythonOrder& self) {
    const std::optional<CatalogueRow>& row = self.answer.bound;
    if (!row) {
        return py::none();
    }
    py::dict bound;
    bound["model_num"] = row->ModelNum;
    bound["alt_num"] = row->AltNum;
    bound["engine_num"] = row->EngineNum;
    bound["nominal_rating"] = row->NominalRating;
    bound["derated_rating"] = row->DeratedRating;
    return bound;
}

ProjectPtr OrderedProject(const PythonOrder& self) {
    const StudyProject& given = self.study->Project();
    return self.study->Made(self.answer.isPresent ? given : Reordered(given, self.answer.steps));
}

// ---- state for pickle

using BoundState = std::pair<std::array<std::string, 3>, std::array<double, 2>>;
/// Study, present and best sizing, whether the present order is permitted, is that of the answer, and is
/// proven best; bound, steps.
using OrderState = std::tuple<StudyState, SizingState, SizingState, std::array<bool, 3>,
                              std::optional<BoundState>, std::vector<std::vector<std::string>>>;

OrderState StateOfOrder(const PythonOrder& self) {
    const OrderAnswer& answer = self.answer;
    OrderState state{StateOf(*self.study), StateOf(answer.now),
                     StateOf(answer.best), {answer.presentIsPermitted, answer.isPresent, answer.proven},
                     std::nullopt,         PathsOf(answer.steps)};
    if (const auto& row = answer.bound) {
        std::get<4>(state) = BoundState({row->ModelNum, row->AltNum, row->EngineNum},
                                        {row->NominalRating, row->DeratedRating});
    }
    return state;
}

PythonOrder OrderFrom(const OrderState& state) {
    const auto& [studyState, now, best, flags, bound, steps] = state;
    PythonOrder order{.study = StudyOf(studyState), .answer = {}};
    OrderAnswer& answer = order.answer;
    answer.now = SizingOf(now);
    answer.best = SizingOf(best);
    answer.presentIsPermitted = flags[0];
    answer.isPresent = flags[1];
    answer.proven = flags[2];
    if (bound) {
        const auto& [names, ratings] = *bound;
        answer.bound = CatalogueRow{.ModelNum = names[0],
                                    .AltNum = names[1],
                                    .EngineNum = names[2],
                                    .NominalRating = ratings[0],
                                    .DeratedRating = ratings[1]};
    }
    answer.steps = OrderOf(steps, order.study->Project().loadProfile);
    return order;
}

}  // namespace

void BindOrder(py::module_& module) {
    py::class_<PythonOrder>(module, "Order", "In which order loads should start, and which set then does.")
        .def_property_readonly(
            "now", [](const PythonOrder& self) { return self.answer.now.set; },
            "The first recommended set as the project stands; None without any.")
        .def_property_readonly(
            "best", [](const PythonOrder& self) { return self.answer.best.set; },
            "That of the best permitted order; None without any.")
        .def_property_readonly(
            "proven", [](const PythonOrder& self) { return self.answer.proven; },
            "Whether no permitted order does with a smaller set.")
        .def_property_readonly(
            "present_is_permitted", [](const PythonOrder& self) { return self.answer.presentIsPermitted; },
            "Whether the present order keeps to the rules.")
        .def_property_readonly("bound", BoundOf,
                               "The smallest row of the catalogue that no proof excludes, or None.")
        .def_property_readonly(
            "steps", [](const PythonOrder& self) { return PathsOf(self.answer.steps); },
            "The loads of each step, by their paths in the project as given.")
        .def_property_readonly("project", OrderedProject, "A copy of the project in that order.")
        .def("__repr__",
             [](const PythonOrder& self) {
                 const auto nameOf = [](const Sizing& sizing) {
                     return sizing.set ? sizing.set->ModelNum : std::string("none");
                 };
                 return fmt::format("<genvara.Order now {}, best {}{}>", nameOf(self.answer.now),
                                    nameOf(self.answer.best), self.answer.proven ? ", proven" : "");
             })
        .def("__reduce__", Reduced<PythonOrder>(
                               module, "_order", [](const PythonOrder& self) { return StateOfOrder(self); },
                               [](const OrderState& state) { return OrderFrom(state); }));
    // The class of projects is bound by now; this is the part of it that is about orders.
    const py::object project = module.attr("Project");
    project.attr("order") = py::cpp_function(
        FoundOrder, py::name("order"), py::is_method(project), py::arg("catalogue").none(false),
        py::kw_only(), py::arg("max_steps") = py::none(), py::arg("before") = py::tuple(),
        py::arg("together") = py::tuple(), py::arg("seconds") = 10.0,
        "In which order loads should start, so that the smallest set does, in at most `max_steps` steps (now "
        "as many as there are). Of each pair of `before` the first load starts in an earlier step, and each "
        "pair of `together` in one. The search stops after `seconds`. Other keywords are the limits of the "
        "run.");
}

}  // namespace genvara::python
