#include <fmt/format.h>
#include <pybind11/stl.h>

#include <utility>

#include "Bindings.h"
#include "LimitArguments.h"
#include "Members.h"
#include "RecordRefs.h"
#include "SizingResult.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

py::tuple StepsOf(const ProjectPtr& project) {
    py::list steps;
    for (const CLoadStep& step : project->LoadProfile()) {
        steps.append(StepRef{project, step.StepID()});
    }
    py::tuple all(steps);
    return all;
}

/// As the window's form adds one, with the site's allowed dip unless there is another.
StepRef AddStep(const ProjectPtr& project, const std::string& description,
                std::optional<std::int32_t> percent, const std::optional<StepRef>& before) {
    if (before && before->project != project) {
        throw py::value_error("the step to stand before is of another project");
    }
    const std::int32_t dip = percent.value_or(project->PowerSystem().MaxVoltageDip());
    return {project, project->LoadProfile().AddLoadStep(description, dip, before ? before->Number() : 0)};
}

py::list SkippedOf(const PythonProject& project) {
    py::list items;
    for (const SkippedItem& item : project.Skipped()) {
        py::dict row;
        row["line"] = item.line;
        row["record"] = item.record;
        row["expected"] = item.expected;
        row["found"] = item.found;
        items.append(row);
    }
    return items;
}

void Warn(const std::string& text) {
    if (PyErr_WarnEx(PyExc_UserWarning, text.c_str(), 1) != 0) {
        throw py::error_already_set();
    }
}

void WarnOfSkipped(const PythonProject& project, const std::string& name) {
    if (const std::size_t count = project.Skipped().size(); count > 0) {
        Warn(fmt::format("{}: {} item{} could not be used; \"skipped\" lists {}.", name, count,
                         count == 1 ? "" : "s", count == 1 ? "it" : "them"));
    }
}

ProjectPtr ReadFile(const py::handle& path, std::shared_ptr<PythonCatalogue> catalogue) {
    const std::string file = PathText(path);
    auto project = std::make_shared<PythonProject>(CatalogueOr(std::move(catalogue)));
    project->Read(file);
    WarnOfSkipped(*project, file);
    return project;
}

/// For workers of many threads, in which warnings are nobody's.
ProjectPtr ReadQuietly(const std::string& file, std::shared_ptr<PythonCatalogue> catalogue) {
    auto project = std::make_shared<PythonProject>(CatalogueOr(std::move(catalogue)));
    project->Read(file);
    return project;
}

ProjectPtr ReadText(const std::string& text, std::shared_ptr<PythonCatalogue> catalogue) {
    auto project = std::make_shared<PythonProject>(CatalogueOr(std::move(catalogue)));
    project->ReadJson(text, "the text");
    WarnOfSkipped(*project, "the text");
    return project;
}

void Save(const PythonProject& project, const py::handle& path) {
    const std::string file = PathText(path);
    if (const std::size_t lost = project.Save(file); lost > 0) {
        Warn(fmt::format("{}: {} character{} that the file cannot hold {} written as \"?\".", file, lost,
                         lost == 1 ? "" : "s", lost == 1 ? "was" : "were"));
    }
}

std::shared_ptr<SizingResult> Size(const PythonProject& project,
                                   const std::shared_ptr<PythonCatalogue>& catalogue,
                                   const py::kwargs& arguments) {
    auto result = std::make_shared<SizingResult>(project, catalogue, LimitsOf("size", arguments));
    const py::gil_scoped_release others;
    result->Size();
    return result;
}

/// @param isJson whether the project was read from JSON; else from a `.prj`.
ProjectPtr Restored(std::shared_ptr<PythonCatalogue> tables, const std::string& json,
                    const std::vector<double>& powers, bool isJson) {
    auto project = std::make_shared<PythonProject>(CatalogueOr(std::move(tables)));
    project->ReadJson(json, "the copy");
    RestorePowers(project->LoadProfile(), powers);
    project->Format(isJson ? ProjectFormat::Json : ProjectFormat::Records);
    return project;
}

/// What a copy of a project elsewhere is made from, but for the catalogue.
py::tuple StateOf(const PythonProject& project) {
    return py::make_tuple(project.Json(), KeptPowers(project.LoadProfile()),
                          project.Format() == ProjectFormat::Json);
}

ProjectPtr NewProject(std::shared_ptr<PythonCatalogue> catalogue) {
    return std::make_shared<PythonProject>(CatalogueOr(std::move(catalogue)));
}

}  // namespace

std::string PathText(py::handle path) {
    const py::object text = py::module_::import("os").attr("fsdecode")(path);
    return py::module_::import("os").attr("fsencode")(text).cast<std::string>();
}

void BindProject(py::module_& module) {
    py::class_<PythonProject, ProjectPtr> project(module, "Project", "A site and its load profile.");
    AddMembers<PythonProject>(
        project, ProjectProperties(),
        [](const PythonProject& self, const Property<CProject>& row) {
            return ToPython(row.facts, row.get(self.Project()));
        },
        [](PythonProject& self, const Property<CProject>& row, const PropertyValue& value) {
            self.Change(BoundProperty<CProject>{&row, &self.Project()}, value);
        });
    project
        .def_property_readonly(
            "power_system", [](const ProjectPtr& self) { return SiteRef{self}; }, "The site.")
        .def_property_readonly("steps", StepsOf,
                               "The load steps, in the order in which they are switched on.")
        .def_property_readonly("skipped", SkippedOf, "What of the file could not be used, an entry each.")
        .def("add_step", AddStep, py::arg("description") = "", py::arg("max_voltage_dip") = py::none(),
             py::kw_only(), py::arg("before") = py::none(),
             "Adds a load step, behind the others or before one of them. Its allowed voltage dip [%] is the "
             "site's unless another is given.")
        .def("save", Save, py::arg("path"),
             "Saves the project, as JSON if the name ends in .json, else as .prj; the old file stays whole "
             "until the "
             "new one stands.")
        .def("dumps", &PythonProject::Json, "The project as a JSON text.")
        .def("size", Size, py::arg("catalogue").none(false),
             "Sizes the project as it is now. Keywords are the limits of the run: min_loading and "
             "max_loading in "
             "percent, max_sets_recommended, max_sets_undersized.")
        .def("__repr__",
             [](const PythonProject& self) {
                 return fmt::format("<genvara.Project \"{}\", {} steps>", self.Project().ProjName(),
                                    self.LoadProfile().NumLoadSteps());
             })
        .def("__copy__", [](const PythonProject& self) { return std::make_shared<PythonProject>(self); })
        .def("__deepcopy__", [](const PythonProject& self,
                                const py::dict& /*known*/) { return std::make_shared<PythonProject>(self); })
        .def("__reduce__", [](const PythonProject& self) {
            return py::make_tuple(py::module_::import("genvara._copies").attr("project"),
                                  py::make_tuple(self.Tables()) + StateOf(self));
        });
    module.def("_project", Restored);
    module.def("_state", StateOf);
    module.def("_read", ReadQuietly);
    module.def("_limits", [](const py::kwargs& limits) { (void)LimitsOf("size", limits); });
    module.def("new", NewProject, py::arg("catalogue") = py::none(),
               "A project as the program begins one, without any load step.");
    module.def("read", ReadFile, py::arg("path"), py::arg("catalogue") = py::none(),
               "Reads a project from a .prj or a JSON file. Its motors are worked out by the tables of the "
               "catalogue, by "
               "default those of the one beside the program.");
    module.def("loads", ReadText, py::arg("text"), py::arg("catalogue") = py::none(),
               "Reads a project from a JSON text.");
}

}  // namespace genvara::python
