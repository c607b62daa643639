#include <fmt/format.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "Bindings.h"
#include "CReports.h"
#include "Members.h"
#include "RejectionReasons.h"
#include "ResultHtml.h"
#include "SetMembers.h"
#include "SizingResult.h"
#include "States.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

struct ReportName {
    std::string_view name;
    std::int32_t type;
};

constexpr std::array kReports{ReportName{"sizing", report_type::kSizing},
                              ReportName{"summary", report_type::kLoadProfile}};

std::int32_t TypeOf(const std::string& name) {
    const auto* const found = std::ranges::find(kReports, name, &ReportName::name);
    if (found == kReports.end()) {
        throw py::value_error(
            fmt::format("there is no report \"{}\": it is \"sizing\" or \"summary\"", name));
    }
    return found->type;
}

/// A report of rich text in the format that was asked for.
py::object InFormat(const std::string& format, const SizingResult& result, const std::string& richText) {
    if (format == "rtf") {
        return py::bytes(richText);
    }
    if (format != "pdf") {
        throw py::value_error(fmt::format("there is no format \"{}\": it is \"rtf\" or \"pdf\"", format));
    }
    return py::module_::import("genvara._pdf")
        .attr("drawn")(py::bytes(richText), result.ProjectRecord().ProjName());
}

ReportedList ListOf(bool undersized) {
    return undersized ? ReportedList::Undersized : ReportedList::Recommended;
}

/// The sets of a list as objects that keep their result.
template <typename Set>
py::list SetsOf(const py::object& result, const std::vector<Set>& sets) {
    py::list list;
    for (const Set& set : sets) {
        list.append(py::cast(&set, py::return_value_policy::reference_internal, result));
    }
    return list;
}

py::dict CountsOf(const SizingResult& result) {
    const RunCounts& counts = result.Designer().Counts();
    py::dict made;
    made["candidates"] = counts.Candidates();
    made["recommended"] = counts.recommended;
    made["undersized"] = counts.undersized;
    made["below_min_loading"] = counts.underloaded;
    return made;
}

std::shared_ptr<SizingResult> SizedAgain(const std::shared_ptr<PythonProject>& project,
                                         const std::shared_ptr<PythonCatalogue>& catalogue,
                                         const LimitsState& limits) {
    auto result = std::make_shared<SizingResult>(*project, catalogue, LimitsOf(limits));
    result->Size();
    return result;
}

using RejectedState = std::tuple<SetState, std::int32_t>;

void BindSets(py::module_& module) {
    py::class_<ChosenSet> chosen(module, "ChosenSet", "A recommended set as the run found it.");
    AddSetMembers<ChosenSet>(chosen, [](const ChosenSet& set) -> const ChosenSet& { return set; });
    chosen
        .def("__repr__",
             [](const ChosenSet& set) {
                 return fmt::format("<genvara set {}, {:.1f} kW derated>", set.ModelNum, set.DeratedRating);
             })
        .def("__reduce__", Reduced<ChosenSet>(
                               module, "_chosen_set", [](const ChosenSet& set) { return StateOf(set); },
                               [](const SetState& state) { return SetOf(state); }));
    py::class_<RejectedSet, ChosenSet>(module, "RejectedSet", "An undersized set with the reasons.")
        .def_property_readonly(
            "rejection_reason", [](const RejectedSet& set) { return set.RejectionReason; },
            "Bits of the tests that the set fails.")
        .def_property_readonly(
            "reasons",
            [](const RejectedSet& set) {
                py::list texts;
                for (const auto& text : RejectionTexts(set.RejectionReason)) {
                    texts.append(py::str(std::string(text)));
                }
                return texts;
            },
            "The same as sentences.")
        .def("__reduce__",
             Reduced<RejectedSet>(
                 module, "_rejected_set",
                 [](const RejectedSet& set) { return RejectedState(StateOf(set), set.RejectionReason); },
                 [](const RejectedState& state) {
                     return RejectedSet{SetOf(std::get<0>(state)), std::get<1>(state)};
                 }));
}

/// A figure of the run.
template <typename Class, typename Member>
void AddFigure(Class& bound, const char* name, Member member, const char* doc) {
    bound.def_property_readonly(
        name, [member](const SizingResult& result) { return (result.Designer().*member)(); }, doc);
}

}  // namespace

void BindResult(py::module_& module) {
    BindSets(module);
    py::class_<DesignLimits> limits(module, "Designer", "The limits of a run.");
    AddMembers<DesignLimits>(
        limits, DesignerProperties(),
        [](const DesignLimits& self, const Property<DesignLimits>& row) {
            return ToPython(row.facts, row.get(self));
        },
        [](DesignLimits& self, const Property<DesignLimits>& row, const PropertyValue& value) {
            row.set(self, value);
        });
    MakeNewBy(limits, [](const py::object& /*type*/) { return DesignLimits(); });

    py::class_<SizingResult, std::shared_ptr<SizingResult>> result(
        module, "Result", "What a run came to. It stays as it is, whatever becomes of the project.");
    result
        .def_property_readonly(
            "recommended",
            [](const py::object& self) {
                return SetsOf(self, self.cast<const SizingResult&>().Designer().ChosenSets());
            },
            "The recommended sets, smallest first.")
        .def_property_readonly(
            "undersized",
            [](const py::object& self) {
                return SetsOf(self, self.cast<const SizingResult&>().Designer().RejectedSets());
            },
            "The undersized sets, largest first.")
        .def_property_readonly("counts", CountsOf, "How many candidates there were, and what became of them.")
        .def_property_readonly(
            "designer", [](const SizingResult& self) { return DesignLimits(self.Designer()); },
            "The limits of the run.")
        .def_property_readonly("project", &SizingResult::Project, "A copy of the project as it was sized.")
        .def_property_readonly(
            "catalogue", [](const SizingResult& self) { return self.Catalogue(); },
            "The catalogue of the run.");
    AddFigure(result, "total_running_kw", &CDesigner::TotalRunningKW,
              "Running power of the whole profile. Unit: kW.");
    AddFigure(result, "peak_starting_kva", &CDesigner::PeakStartingKVA,
              "Largest start of the profile. Unit: kVA.");
    AddFigure(result, "vthd_calcs_valid", &CDesigner::VTHD_CalcsValid,
              "Whether distortion was worked out for the site's connection.");
    AddFigure(result, "database_version", &CDesigner::DatabaseVersion, "Version of the catalogue.");
    result
        .def(
            "report",
            [](const SizingResult& self, const std::string& type, std::int32_t set, bool undersized,
               bool metric, const std::string& format) {
                return InFormat(format, self, self.Report(TypeOf(type), ListOf(undersized), set, metric));
            },
            py::arg("type") = "sizing", py::kw_only(), py::arg("set") = 0, py::arg("undersized") = false,
            py::arg("metric") = false, py::arg("format") = "rtf",
            "A report on a set, \"sizing\" or \"summary\": the bytes of rich text, \"rtf\", or \"pdf\".")
        .def(
            "no_match_report",
            [](const SizingResult& self, bool metric, const std::string& format) {
                return InFormat(format, self, self.NoMatchReport(metric));
            },
            py::kw_only(), py::arg("metric") = false, py::arg("format") = "rtf",
            "The report that stands where no set was found, as \"rtf\" or \"pdf\".")
        .def(
            "spec",
            [](const SizingResult& self, std::int32_t set, bool undersized) {
                return py::bytes(self.Spec(ListOf(undersized), set, false));
            },
            py::kw_only(), py::arg("set") = 0, py::arg("undersized") = false,
            "The essentials of a set for other tools, as \"export-spec\" writes them.")
        .def("_repr_html_", HtmlOf)
        .def("__repr__",
             [](const SizingResult& self) {
                 return fmt::format("<genvara.Result, {} recommended, {} undersized>",
                                    self.Designer().NumChosenSets(), self.Designer().NumRejectedSets());
             })
        .def("__copy__", [](const std::shared_ptr<SizingResult>& self) { return self; })
        .def("__deepcopy__",
             [](const std::shared_ptr<SizingResult>& self, const py::dict& /*known*/) { return self; })
        .def("__reduce__", [](const SizingResult& self) {
            return py::make_tuple(py::module_::import("genvara._copies").attr("result"),
                                  py::make_tuple(self.Project(), self.Catalogue(), StateOf(self.Designer())));
        });
    module.def("_result", SizedAgain, py::arg("project").none(false), py::arg("catalogue").none(false),
               py::arg("limits"));
}

}  // namespace genvara::python
