#include <fmt/format.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <utility>

#include "Advise.h"
#include "AlteredProject.h"
#include "Bindings.h"
#include "LimitArguments.h"
#include "NearestNames.h"
#include "Order.h"
#include "PropertyText.h"
#include "PythonStudy.h"
#include "SetMembers.h"
#include "SizingResult.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

using ProjectPtr = std::shared_ptr<PythonProject>;
using CataloguePtr = std::shared_ptr<PythonCatalogue>;
using StudyPtr = std::shared_ptr<const PythonStudy>;

StudyPtr BeginStudy(std::string_view function, const PythonProject& project, const CataloguePtr& catalogue,
                    const py::kwargs& limits) {
    return std::make_shared<const PythonStudy>(project, catalogue, LimitsOf(function, limits));
}

// ---- advise

/// A list of advice with the project that it is about.
struct PythonAdvice {
    StudyPtr study;
    Advice advice;
};

struct PythonAdviceList {
    Sizing now;
    bool allBelowMinLoading;
    std::vector<PythonAdvice> advice;
};

AdviceChoice ChoiceOf(bool pairs, const std::optional<std::vector<std::string>>& kinds) {
    AdviceChoice choice;
    choice.pairs = pairs;
    if (!kinds) {
        return choice;
    }
    choice.kinds.fill(false);
    for (const std::string& name : *kinds) {
        const auto* const found = std::ranges::find(kAdviceKinds, name);
        if (found == kAdviceKinds.end()) {
            throw RaisedError(0, "",
                              fmt::format("There is no advice of the kind \"{}\"; {}.", name,
                                          SuggestionText(name, kAdviceKinds)));
        }
        choice.kinds[static_cast<std::size_t>(found - kAdviceKinds.begin())] = true;
    }
    return choice;
}

PythonAdviceList AdviseOn(const PythonProject& project, const CataloguePtr& catalogue, bool pairs,
                          const std::optional<std::vector<std::string>>& kinds, std::int32_t jobs,
                          const py::kwargs& limits) {
    RequireJobs(jobs);
    const AdviceChoice choice = ChoiceOf(pairs, kinds);
    const StudyPtr study = BeginStudy("advise", project, catalogue, limits);
    AdviceList list = DoInterruptibly([&](const StopFlag& stop) {
        return Advise(study->Project(), choice, study->Tables(), jobs, stop,
                      [](std::int64_t /*done*/, std::int64_t /*total*/) {});
    });
    PythonAdviceList made{
        .now = std::move(list.now), .allBelowMinLoading = list.allBelowMinLoading, .advice = {}};
    for (Advice& advice : list.advice) {
        made.advice.push_back({study, std::move(advice)});
    }
    return made;
}

std::vector<std::vector<std::string>> PathsOf(const LoadOrder& order) {
    std::vector<std::vector<std::string>> steps;
    for (const auto& places : order) {
        std::vector<std::string>& loads = steps.emplace_back();
        for (const LoadPlace& place : places) {
            loads.push_back(PlaceText(place));
        }
    }
    return steps;
}

py::dict DifferenceRow(const MemberDifference& difference) {
    py::dict row;
    row["path"] = difference.path;
    row["from"] = ToPython(difference.facts, difference.from);
    row["to"] = ToPython(difference.facts, difference.to);
    row["follows"] = difference.follows;
    return row;
}

/// The changes of an advice in the order of the console's: those that are made, then what follows from them.
py::list ChangesOf(const PythonAdvice& self) {
    py::list changes;
    auto difference = self.advice.differences.begin();
    for (const Alteration& alteration : self.advice.alterations) {
        py::dict row;
        if (alteration.member) {
            row = DifferenceRow(*difference++);
        } else if (alteration.move) {
            row["move"] = PlaceText(alteration.move->load);
            row["to"] = fmt::format("new step {} {}", alteration.move->isBefore ? "before" : "behind",
                                    alteration.move->load.step);
        } else {
            row["order"] = PathsOf(*alteration.order);
        }
        changes.append(row);
    }
    for (; difference != self.advice.differences.end(); ++difference) {
        changes.append(DifferenceRow(*difference));
    }
    return changes;
}

std::string KindOf(const PythonAdvice& self) {
    std::string text;
    for (const Alteration& alteration : self.advice.alterations) {
        text += (text.empty() ? "" : "+") + std::string(NameOf(alteration.kind));
    }
    return text;
}

ProjectPtr Applied(const PythonAdvice& self) {
    return self.study->Made(
        Altered(self.study->Project(), self.advice.alterations, self.study->Tables().rules));
}

void BindAdvice(py::module_& module) {
    py::class_<PythonAdvice>(module, "Advice", "A change after which a smaller set does, or one at all.")
        .def_property_readonly("kind", KindOf, "Kind of the change, \"starter\" or \"starter+limit\".")
        .def_property_readonly(
            "text", [](const PythonAdvice& self) { return self.advice.text; }, "The change in a sentence.")
        .def_property_readonly("changes", ChangesOf,
                               "What is changed: path, from, to and follows of a member; move and to of a "
                               "load; order of all loads.")
        .def_property_readonly(
            "set", [](const PythonAdvice& self) { return self.advice.sizing.set; },
            "The first recommended set after the change.")
        .def_property_readonly(
            "saved", [](const PythonAdvice& self) { return self.advice.saved; },
            "Rating of all sets that is saved; None where no set did. Unit: kW.")
        .def_property_readonly(
            "tightest", [](const PythonAdvice& self) { return NamedTightest(self.advice.sizing.tightest); },
            "The tightest test of that set; None without any.")
        .def_property_readonly("project", Applied,
                               "A copy of the project with the change made. A most loading is no part of it.")
        .def("__repr__",
             [](const PythonAdvice& self) { return "<genvara.Advice " + self.advice.text + ">"; });
    py::class_<PythonAdviceList>(module, "AdviceList", "Advice, the smallest set first.")
        .def_property_readonly(
            "now", [](const PythonAdviceList& self) { return self.now.set; },
            "The first recommended set as the project stands; None without any.")
        .def_readonly("all_below_min_loading", &PythonAdviceList::allBelowMinLoading,
                      "Whether every candidate passes and is dropped as too large.")
        .def("__len__", [](const PythonAdviceList& self) { return self.advice.size(); })
        .def("__getitem__",
             [](const PythonAdviceList& self, std::ptrdiff_t index) {
                 const auto count = static_cast<std::ptrdiff_t>(self.advice.size());
                 const std::ptrdiff_t place = index < 0 ? index + count : index;
                 if (place < 0 || place >= count) {
                     throw py::index_error(fmt::format("there is no advice {} among {}", index, count));
                 }
                 return self.advice[static_cast<std::size_t>(place)];
             })
        .def("__iter__",
             [](const py::object& self) {
                 return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr()));
             })
        .def("__repr__", [](const PythonAdviceList& self) {
            return fmt::format("<genvara.AdviceList of {}>", self.advice.size());
        });
}

// ---- order

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

PythonOrder OrderOf(const PythonProject& project, const CataloguePtr& catalogue,
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
        .def("__repr__", [](const PythonOrder& self) {
            const auto nameOf = [](const Sizing& sizing) {
                return sizing.set ? sizing.set->ModelNum : std::string("none");
            };
            return fmt::format("<genvara.Order now {}, best {}{}>", nameOf(self.answer.now),
                               nameOf(self.answer.best), self.answer.proven ? ", proven" : "");
        });
}

}  // namespace

void BindStudies(py::module_& module) {
    BindAdvice(module);
    BindOrder(module);
    // The class of projects is bound by now; this is the part of it that is about studies.
    const py::object project = module.attr("Project");
    project.attr("advise") = py::cpp_function(
        AdviseOn, py::name("advise"), py::is_method(project), py::arg("catalogue").none(false), py::kw_only(),
        py::arg("pairs") = false, py::arg("kinds") = py::none(), py::arg("jobs") = 1,
        "What would let a smaller set do: each change of the program's table, with `pairs` each two of them. "
        "`kinds` are some of \"order\", \"split\", \"starter\", \"rectifier\", \"limit\", \"rise\", "
        "\"sets\", "
        "\"fuel\"; `jobs` threads share the work. Other keywords are the limits of the run.");
    project.attr("order") = py::cpp_function(
        OrderOf, py::name("order"), py::is_method(project), py::arg("catalogue").none(false), py::kw_only(),
        py::arg("max_steps") = py::none(), py::arg("before") = py::tuple(), py::arg("together") = py::tuple(),
        py::arg("seconds") = 10.0,
        "In which order loads should start, so that the smallest set does, in at most `max_steps` steps (now "
        "as many as there are). Of each pair of `before` the first load starts in an earlier step, and each "
        "pair of `together` in one. The search stops after `seconds`. Other keywords are the limits of the "
        "run.");
}

}  // namespace genvara::python
