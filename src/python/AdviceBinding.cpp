#include <fmt/format.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Advise.h"
#include "AlteredProject.h"
#include "Bindings.h"
#include "NearestNames.h"
#include "PythonStudy.h"
#include "SetMembers.h"
#include "States.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

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

// ---- states for pickle

/// Kind, member and value, load and side that it moves to, order, place.
using AlterationState = std::tuple<std::size_t, std::optional<std::pair<std::string, py::object>>,
                                   std::optional<std::pair<std::string, bool>>,
                                   std::optional<std::vector<std::vector<std::string>>>, std::size_t>;
using DifferenceState = std::tuple<std::string, py::object, py::object, bool>;
/// An advice without its study.
using PieceState = std::tuple<std::vector<AlterationState>, std::vector<DifferenceState>, std::string,
                              SizingState, std::optional<double>>;
using AdviceState = std::pair<StudyState, PieceState>;
/// A list without advice has no study.
using AdviceListState = std::tuple<SizingState, bool, std::optional<StudyState>, std::vector<PieceState>>;

/// A project to look members up in as changes bring them.
class MemberProbe {
  public:
    explicit MemberProbe(const PythonStudy& study) : m_study(&study), m_project(study.Project()) {}

    [[nodiscard]] PropertyFacts FactsOf(const std::string& path) { return FactsAt(m_project, path); }
    void Take(const MemberValue& change) { TryChange(m_project, change, m_study->Tables().rules); }

  private:
    const PythonStudy* m_study;
    StudyProject m_project;
};

AlterationState StateOfAlteration(const Alteration& alteration, MemberProbe& probe) {
    AlterationState state;
    auto& [kind, member, move, order, place] = state;
    kind = static_cast<std::size_t>(alteration.kind);
    if (alteration.member) {
        const auto& [path, value] = *alteration.member;
        member.emplace(path, ToPython(probe.FactsOf(path), value));
        probe.Take(*alteration.member);
    }
    if (alteration.move) {
        move.emplace(PlaceText(alteration.move->load), alteration.move->isBefore);
    }
    if (alteration.order) {
        order = PathsOf(*alteration.order);
    }
    place = alteration.place;
    return state;
}

Alteration AlterationOf(const AlterationState& state, const CLoadProfile& profile, MemberProbe& probe) {
    const auto& [kind, member, move, order, place] = state;
    if (kind >= kAdviceKinds.size()) {
        throw py::value_error(fmt::format("there is no kind {} of advice", kind));
    }
    if (int{member.has_value()} + int{move.has_value()} + int{order.has_value()} != 1) {
        throw py::value_error("an alteration is one of a member, of a load's step or of the order");
    }
    Alteration alteration;
    alteration.kind = static_cast<AdviceKind>(kind);
    alteration.place = place;
    if (member) {
        const auto& [path, value] = *member;
        alteration.member = MemberValue{path, FromPython(probe.FactsOf(path), value)};
        probe.Take(*alteration.member);
    }
    if (move) {
        alteration.move = LoadMove{.load = ParsePlace(move->first, profile), .isBefore = move->second};
    }
    if (order) {
        alteration.order = OrderOf(*order, profile);
    }
    return alteration;
}

PieceState StateOfPiece(const PythonAdvice& self) {
    PieceState state;
    auto& [alterations, differences, text, sizing, saved] = state;
    MemberProbe probe(*self.study);
    for (const Alteration& alteration : self.advice.alterations) {
        alterations.push_back(StateOfAlteration(alteration, probe));
    }
    for (const MemberDifference& difference : self.advice.differences) {
        differences.emplace_back(difference.path, ToPython(difference.facts, difference.from),
                                 ToPython(difference.facts, difference.to), difference.follows);
    }
    text = self.advice.text;
    sizing = StateOf(self.advice.sizing);
    saved = self.advice.saved;
    return state;
}

PythonAdvice PieceOf(const StudyPtr& study, const PieceState& state) {
    const auto& [alterations, differences, text, sizing, saved] = state;
    PythonAdvice made{
        .study = study,
        .advice = {
            .alterations = {}, .differences = {}, .text = text, .sizing = SizingOf(sizing), .saved = saved}};
    MemberProbe probe(*study);
    std::size_t members = 0;
    for (const AlterationState& alteration : alterations) {
        made.advice.alterations.push_back(AlterationOf(alteration, study->Project().loadProfile, probe));
        members += made.advice.alterations.back().member ? 1 : 0;
    }
    if (alterations.empty() || differences.size() < members) {
        throw py::value_error("an advice has alterations, and a difference for each of a member");
    }
    for (const auto& [path, from, to, follows] : differences) {
        const PropertyFacts facts = probe.FactsOf(path);
        made.advice.differences.push_back({.path = path,
                                           .facts = facts,
                                           .from = FromPython(facts, from),
                                           .to = FromPython(facts, to),
                                           .follows = follows});
    }
    return made;
}

AdviceListState StateOfList(const PythonAdviceList& self) {
    AdviceListState state{StateOf(self.now), self.allBelowMinLoading, std::nullopt, {}};
    for (const PythonAdvice& advice : self.advice) {
        std::get<3>(state).push_back(StateOfPiece(advice));
    }
    if (!self.advice.empty()) {
        std::get<2>(state) = StateOf(*self.advice.front().study);
    }
    return state;
}

PythonAdviceList ListOf(const AdviceListState& state) {
    const auto& [now, allBelowMinLoading, studyState, pieces] = state;
    PythonAdviceList list{.now = SizingOf(now), .allBelowMinLoading = allBelowMinLoading, .advice = {}};
    if (pieces.empty()) {
        return list;
    }
    if (!studyState) {
        throw py::value_error("a list of advice is about a project");
    }
    const StudyPtr study = StudyOf(*studyState);
    for (const PieceState& piece : pieces) {
        list.advice.push_back(PieceOf(study, piece));
    }
    return list;
}

}  // namespace

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
        .def("__repr__", [](const PythonAdvice& self) { return "<genvara.Advice " + self.advice.text + ">"; })
        .def("__reduce__",
             Reduced<PythonAdvice>(
                 module, "_advice",
                 [](const PythonAdvice& self) {
                     return AdviceState(StateOf(*self.study), StateOfPiece(self));
                 },
                 [](const AdviceState& state) { return PieceOf(StudyOf(state.first), state.second); }));
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
        .def("__repr__",
             [](const PythonAdviceList& self) {
                 return fmt::format("<genvara.AdviceList of {}>", self.advice.size());
             })
        .def("__reduce__",
             Reduced<PythonAdviceList>(
                 module, "_advice_list", [](const PythonAdviceList& self) { return StateOfList(self); },
                 [](const AdviceListState& state) { return ListOf(state); }));
    // The class of projects is bound by now; this is the part of it that is about advice.
    const py::object project = module.attr("Project");
    project.attr("advise") = py::cpp_function(
        AdviseOn, py::name("advise"), py::is_method(project), py::arg("catalogue").none(false), py::kw_only(),
        py::arg("pairs") = false, py::arg("kinds") = py::none(), py::arg("jobs") = 1,
        "What would let a smaller set do: each change of the program's table, with `pairs` each two of them. "
        "`kinds` are some of \"order\", \"split\", \"starter\", \"rectifier\", \"limit\", \"rise\", "
        "\"sets\", "
        "\"fuel\"; `jobs` threads share the work. Other keywords are the limits of the run.");
}

}  // namespace genvara::python
