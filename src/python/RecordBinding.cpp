#include <fmt/format.h>
#include <pybind11/operators.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <array>
#include <utility>

#include "Bindings.h"
#include "LoadFactory.h"
#include "Members.h"
#include "NearestNames.h"
#include "Order.h"
#include "RecordRefs.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

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
    const std::int32_t kind = load.Record().LoadType();
    ((kind == Kinds ? (void)(made = py::cast(KindRef<Kinds>{load})) : (void)0), ...);
    return made;
}

using AllKinds = std::make_integer_sequence<std::int32_t, load_type::kCount>;

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

py::tuple LoadsOf(const StepRef& ref) {
    py::list loads;
    for (const Load& load : ref.Record()) {
        loads.append(AsKind({ref.project, ref.id, load.ID()}, AllKinds()));
    }
    py::tuple all(loads);
    return all;
}

// ---- what comes and goes

std::int32_t KindOf(const py::object& kind) {
    const std::string name = PyType_Check(kind.ptr()) ? kind.attr("__name__").cast<std::string>()
                             : py::isinstance<py::str>(kind)
                                 ? kind.cast<std::string>()
                                 : throw py::type_error("the kind of a load is its name or its class");
    std::vector<std::string_view> names;
    for (const LoadKindRow& row : LoadKindRows()) {
        if (SameLetters(row.name, name)) {
            return row.loadType;
        }
        names.push_back(row.name);
    }
    throw RaisedError(
        0, "", fmt::format("There is no load of the kind \"{}\"; {}.", name, SuggestionText(name, names)));
}

/// The row of an attribute's name.
const Property<Load>& RowOf(const Load& load, const std::string& attribute) {
    for (const Property<Load>& row : LoadProperties(load.LoadType())) {
        if (SnakeCase(row.facts.name) == attribute) {
            RequireMember(row, load);
            return row;
        }
    }
    throw py::attribute_error(
        fmt::format("{} has no member \"{}\"", FindLoadKindRow(load.LoadType())->name, attribute));
}

/// Adds a load once all of its members are taken.
py::object AddLoad(const StepRef& ref, const py::object& kind, const py::kwargs& members) {
    ref.Record().RequireRoom();
    const EntryRules rules = ref.project->Tables()->Rules();
    std::unique_ptr<Load> load = MakeLoad(KindOf(kind), rules.motors.conversions);
    for (const auto& [name, value] : members) {
        const Property<Load>& row = RowOf(*load, name.cast<std::string>());
        ref.project->Change(BoundProperty<Load>{&row, load.get()}, FromPython(row.facts, value));
    }
    // What members are taken from may be anybody's code.
    return AsKind({ref.project, ref.id, ref.Record().AddLoad(std::move(load))}, AllKinds());
}

void DeleteLoad(const LoadRef& ref) {
    const Load& load = ref.Record();
    ref.Step().Record().DeleteLoad(load.ID());
}

void DeleteStep(const StepRef& ref) {
    const CLoadStep& step = ref.Record();
    ref.project->LoadProfile().DeleteLoadStep(step.StepID());
}

void MoveStep(const StepRef& ref, std::int32_t to) {
    CLoadProfile& profile = ref.project->LoadProfile();
    std::int32_t at = ref.Number();
    if (to < 1 || to > profile.NumLoadSteps()) {
        throw py::index_error(
            fmt::format("there is no position {} among {} steps", to, profile.NumLoadSteps()));
    }
    for (; at < to; ++at) {
        profile.RaiseLoadStep(at);
    }
    for (; at > to; --at) {
        profile.LowerLoadStep(at);
    }
}

std::string PathOf(const LoadRef& ref) {
    return PlaceText({.step = ref.Step().Number(), .load = ref.Number()});
}

}  // namespace

void BindRecords(py::module_& module) {
    py::class_<SiteRef> site(module, "PowerSystem", "What the site demands of the generator sets.");
    AddRecordMembers<SiteRef>(site, PowerSystemProperties());
    site.def(py::self == py::self);  // NOLINT(misc-redundant-expression)
    site.def("__repr__", [](const SiteRef& ref) {
        return fmt::format("<genvara.PowerSystem {} V, {} Hz>", ref.Record().Voltage(), ref.Record().Freq());
    });

    py::class_<LoadRef> load(module, "Load",
                             "One line of a load step: a number of identical units that start together.");
    load.def_property_readonly(
            "kind", [](const LoadRef& ref) { return FindLoadKindRow(ref.Record().LoadType())->name; },
            "Kind of the load.")
        .def_property_readonly(
            "summary", [](const LoadRef& ref) { return ref.Record().Summary(); }, "The load in one line.")
        .def_property_readonly("path", PathOf,
                               "Where the load stands, as in \"Step[1].Load[2]\"; positions count from 1.")
        .def("delete", DeleteLoad, "Deletes the load from its project.")
        .def(py::self == py::self)  // NOLINT(misc-redundant-expression)
        .def("__repr__", [](const LoadRef& ref) {
            const Load* found = ref.Find();
            return found == nullptr ? std::string("<genvara.Load, deleted>")
                                    : fmt::format("<genvara.{} \"{}\">",
                                                  FindLoadKindRow(found->LoadType())->name, found->name());
        });
    for (const LoadFigure& row : kLoadFigures) {
        load.def_property_readonly(
            row.name, [&row](const LoadRef& ref) { return (ref.Record().*row.figure)(); }, row.doc);
    }
    BindKinds(module, AllKinds());

    py::class_<StepRef> step(module, "Step", "Loads that are switched on together.");
    AddRecordMembers<StepRef>(step, StepProperties());
    step.def_property_readonly("number", &StepRef::Number, "Position, from 1.")
        .def_property_readonly("loads", LoadsOf, "The loads of the step.")
        .def(
            "add_load", AddLoad, py::arg("kind"),
            "Adds a load of a kind, \"Motor\" or genvara.Motor, behind the others. Keywords are its members, "
            "taken one after the other; with one that is refused nothing is added.")
        .def("delete", DeleteStep, "Deletes the step with its loads from the project.")
        .def("move", MoveStep, py::arg("number"),
             "Moves the step to a position, from 1. IndexError for no position.")
        .def(py::self == py::self)  // NOLINT(misc-redundant-expression)
        .def("__repr__", [](const StepRef& ref) {
            const CLoadStep* found = ref.Find();
            return found == nullptr ? std::string("<genvara.Step, deleted>")
                                    : fmt::format("<genvara.Step {} \"{}\", {} loads>", ref.Number(),
                                                  found->Description(), found->NumLoads());
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

}  // namespace genvara::python
