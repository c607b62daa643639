#include <fmt/format.h>
#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "Bindings.h"
#include "LoadFactory.h"
#include "Members.h"
#include "PythonProject.h"
#include "SizingResult.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

using ProjectPtr = std::shared_ptr<PythonProject>;

// What Python holds of a record keeps the project, so that it never outlives its owner.

struct SiteRef {
    ProjectPtr project;

    [[nodiscard]] CPwrSys& Record() const { return project->PowerSystem(); }
    bool operator==(const SiteRef&) const = default;
};

struct StepRef {
    ProjectPtr project;
    std::int32_t number;  ///< from 1

    [[nodiscard]] CLoadStep& Record() const { return project->LoadProfile().LoadStep(number); }
    bool operator==(const StepRef&) const = default;
};

struct LoadRef {
    ProjectPtr project;
    Load* load;  ///< steps and loads stay where they are as long as the project does

    [[nodiscard]] Load& Record() const { return *load; }
    bool operator==(const LoadRef&) const = default;
};

/// A load of one kind.
template <std::int32_t>
struct KindRef : LoadRef {};

// ---- members

template <typename Ref, typename Record, typename Class>
void AddRecordMembers(Class& bound, std::span<const Property<Record>> table) {
    AddMembers<Ref>(
        bound, table,
        [](const Ref& ref, const Property<Record>& row) {
            return ToPython(row.facts, row.get(ref.Record()));
        },
        [](Ref& ref, const Property<Record>& row, const PropertyValue& value) {
            ref.project->Change(BoundProperty<Record>{&row, &ref.Record()}, value);
        });
}

/// A power that every load can be asked for, an input or not.
struct LoadFigure {
    const char* name;
    double (Load::*figure)() const;
    const char* doc;
};

constexpr std::array kLoadFigures{
    LoadFigure{"running_real_power", &Load::RunningRealPower,
               "Real power of one unit while running. Unit: W."},
    LoadFigure{"running_app_power", &Load::RunningAppPower,
               "Apparent power of one unit while running. Unit: VA."},
    LoadFigure{"running_img_power", &Load::RunningImgPower,
               "Reactive power of one unit while running. Unit: var."},
    LoadFigure{"starting_real_power", &Load::StartingRealPower,
               "Real power of one unit while starting. Unit: W."},
    LoadFigure{"starting_app_power", &Load::StartingAppPower,
               "Apparent power of one unit while starting. Unit: VA."},
    LoadFigure{"starting_img_power", &Load::StartingImgPower,
               "Reactive power of one unit while starting. Unit: var."},
};

bool IsFigure(std::string_view name) {
    return std::ranges::any_of(kLoadFigures,
                               [&name](const LoadFigure& row) { return SnakeCase(name) == row.name; });
}

/// A member that the load's entry method does not use does not exist for it.
void RequireMember(const Property<Load>& row, const Load& load) {
    if (!Exists(row, load)) {
        throw py::attribute_error(
            fmt::format("{} does not exist for a load of this entry method", SnakeCase(row.facts.name)));
    }
}

template <std::int32_t Kind>
void BindKind(py::module_& module) {
    using Ref = KindRef<Kind>;
    const std::string name(FindLoadKindRow(Kind)->name);
    const std::string doc = fmt::format("A load of the kind {}.", name);
    py::class_<Ref, LoadRef> bound(module, name.c_str(), doc.c_str());
    AddMembers<Ref>(
        bound, LoadProperties(Kind),
        [](const Ref& ref, const Property<Load>& row) {
            if (!IsFigure(row.facts.name)) {
                RequireMember(row, ref.Record());
            }
            return ToPython(row.facts, row.get(ref.Record()));
        },
        [](Ref& ref, const Property<Load>& row, const PropertyValue& value) {
            RequireMember(row, ref.Record());
            ref.project->Change(BoundProperty<Load>{&row, &ref.Record()}, value);
        });
}

/// A load as an object of its kind's class.
template <std::int32_t... Kinds>
py::object AsKind(const LoadRef& load, std::integer_sequence<std::int32_t, Kinds...> /*kinds*/) {
    py::object made = py::none();
    ((load.load->LoadType() == Kinds ? (void)(made = py::cast(KindRef<Kinds>{load})) : (void)0), ...);
    return made;
}

using AllKinds = std::make_integer_sequence<std::int32_t, 9>;

template <std::int32_t... Kinds>
void BindKinds(py::module_& module, std::integer_sequence<std::int32_t, Kinds...> /*kinds*/) {
    (BindKind<Kinds>(module), ...);
}

// ---- steps

struct StepFigure {
    const char* name;
    double (CLoadStep::*figure)(std::int32_t) const;
    const char* unit;
};

constexpr std::array kStepFigures{
    StepFigure{"total_running_real_power", &CLoadStep::TotalRunningRealPower, "W"},
    StepFigure{"total_running_img_power", &CLoadStep::TotalRunningImgPower, "var"},
    StepFigure{"total_running_apparent_power", &CLoadStep::TotalRunningApparentPower, "VA"},
    StepFigure{"total_starting_real_power", &CLoadStep::TotalStartingRealPower, "W"},
    StepFigure{"total_starting_img_power", &CLoadStep::TotalStartingImgPower, "var"},
    StepFigure{"total_starting_apparent_power", &CLoadStep::TotalStartingApparentPower, "VA"},
};

py::list LoadsOf(const StepRef& ref) {
    py::list loads;
    for (Load& load : ref.Record()) {
        loads.append(AsKind(LoadRef{ref.project, &load}, AllKinds()));
    }
    return loads;
}

py::list StepsOf(const ProjectPtr& project) {
    py::list steps;
    for (std::int32_t number = 1; number <= project->LoadProfile().NumLoadSteps(); ++number) {
        steps.append(StepRef{project, number});
    }
    return steps;
}

// ---- projects

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

DesignLimits LimitsOf(const py::kwargs& arguments) {
    DesignLimits limits;
    for (const auto& [key, value] : arguments) {
        const auto name = key.cast<std::string>();
        const auto rows = DesignerProperties();
        const auto row = std::ranges::find_if(rows, [&name](const Property<DesignLimits>& limit) {
            return SnakeCase(limit.facts.name) == name;
        });
        if (row == rows.end()) {
            throw py::type_error(fmt::format("size() got an unexpected keyword argument '{}'", name));
        }
        row->set(limits, FromPython(row->facts, value));
    }
    return limits;
}

std::shared_ptr<SizingResult> Size(const PythonProject& project,
                                   const std::shared_ptr<PythonCatalogue>& catalogue,
                                   const py::kwargs& arguments) {
    auto result = std::make_shared<SizingResult>(project, catalogue, LimitsOf(arguments));
    const py::gil_scoped_release others;
    result->Size();
    return result;
}

ProjectPtr Restored(std::shared_ptr<PythonCatalogue> tables, const std::string& json,
                    const std::vector<double>& powers) {
    auto project = std::make_shared<PythonProject>(CatalogueOr(std::move(tables)));
    project->ReadJson(json, "the copy");
    RestorePowers(project->LoadProfile(), powers);
    return project;
}

void BindRecords(py::module_& module) {
    py::class_<SiteRef> site(module, "PowerSystem", "What the site demands of the generator sets.");
    AddRecordMembers<SiteRef>(site, PowerSystemProperties());
    site.def(py::self == py::self).def("__repr__", [](const SiteRef& ref) {
        return fmt::format("<genvara.PowerSystem {} V, {} Hz>", ref.Record().Voltage(), ref.Record().Freq());
    });

    py::class_<LoadRef> load(module, "Load",
                             "One line of a load step: a number of identical units that start together.");
    load.def_property_readonly(
            "kind", [](const LoadRef& ref) { return FindLoadKindRow(ref.load->LoadType())->name; },
            "Kind of the load.")
        .def_property_readonly(
            "summary", [](const LoadRef& ref) { return ref.load->Summary(); }, "The load in one line.")
        .def(py::self == py::self)
        .def("__repr__", [](const LoadRef& ref) {
            return fmt::format("<genvara.{} \"{}\">", FindLoadKindRow(ref.load->LoadType())->name,
                               ref.load->name());
        });
    for (const LoadFigure& row : kLoadFigures) {
        load.def_property_readonly(
            row.name, [&row](const LoadRef& ref) { return (ref.load->*row.figure)(); }, row.doc);
    }
    BindKinds(module, AllKinds());

    py::class_<StepRef> step(module, "Step", "Loads that are switched on together.");
    AddRecordMembers<StepRef>(step, StepProperties());
    step.def_property_readonly(
            "number", [](const StepRef& ref) { return ref.number; }, "Position, from 1.")
        .def_property_readonly("loads", LoadsOf, "The loads of the step.")
        .def(py::self == py::self)
        .def("__repr__", [](const StepRef& ref) {
            return fmt::format("<genvara.Step {} \"{}\", {} loads>", ref.number, ref.Record().Description(),
                               ref.Record().NumLoads());
        });
    for (const StepFigure& row : kStepFigures) {
        const std::string doc = fmt::format(
            "Total of the step's loads, quantities included. Unit: {}. Phase 0 is all of them, 1 to 3 are "
            "A to C.",
            row.unit);
        step.def(
            row.name,
            [&row](const StepRef& ref, std::int32_t phase) { return (ref.Record().*row.figure)(phase); },
            py::arg("phase") = 0, doc.c_str());
    }
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
    BindRecords(module);
    project
        .def_property_readonly(
            "power_system", [](const ProjectPtr& self) { return SiteRef{self}; }, "The site.")
        .def_property_readonly("steps", StepsOf,
                               "The load steps, in the order in which they are switched on.")
        .def_property_readonly("skipped", SkippedOf, "What of the file could not be used, an entry each.")
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
                                  py::make_tuple(self.Tables(), self.Json(), KeptPowers(self.LoadProfile())));
        });
    module.def("_project", Restored);
    module.def("read", ReadFile, py::arg("path"), py::arg("catalogue") = py::none(),
               "Reads a project from a .prj or a JSON file. Its motors are worked out by the tables of the "
               "catalogue, by "
               "default those of the one beside the program.");
    module.def("loads", ReadText, py::arg("text"), py::arg("catalogue") = py::none(),
               "Reads a project from a JSON text.");
}

}  // namespace genvara::python
