#include <fmt/format.h>
#include <pybind11/stl.h>

#include <utility>

#include "Bindings.h"
#include "LimitArguments.h"
#include "NumberText.h"
#include "PropertyText.h"
#include "PythonStudy.h"
#include "SetMembers.h"
#include "States.h"
#include "Sweep.h"
#include "Values.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

struct Grid {
    StudyPtr study;
    std::vector<SweepAxis> axes;
    std::vector<SweepPoint> points;
};

/// A point with the grid that it is of, so that it outlives what Python holds of that.
struct GridPoint {
    std::shared_ptr<Grid> grid;
    std::size_t index;

    [[nodiscard]] const SweepPoint& Point() const { return grid->points[index]; }
};

using GridPtr = std::shared_ptr<Grid>;

std::vector<SweepAxis> AxesOf(const py::dict& values, const PythonStudy& study) {
    std::vector<SweepAxis> axes;
    StudyProject probe = study.Project();
    for (const auto& [path, list] : values) {
        SweepAxis axis;
        axis.path = path.cast<std::string>();
        axis.facts = FactsAt(probe, axis.path);
        if (py::isinstance<py::str>(list)) {
            throw py::type_error(fmt::format("the values of {} are a list, and not a text", axis.path));
        }
        for (const py::handle value : py::iter(list)) {
            axis.values.push_back(EnterableFromPython(axis.facts, value));
        }
        if (axis.values.empty()) {
            throw py::value_error(fmt::format("{} has no values", axis.path));
        }
        TryChange(probe, {axis.path, axis.values.front()}, study.Tables().rules);
        axes.push_back(std::move(axis));
    }
    return axes;
}

GridPtr SweepOver(const PythonProject& project, const CataloguePtr& catalogue, const py::dict& values,
                  std::int32_t jobs, double mostPoints, const py::kwargs& limits) {
    RequireJobs(jobs);
    auto grid = std::make_shared<Grid>();
    grid->study = std::make_shared<const PythonStudy>(project, catalogue, LimitsOf("sweep", limits));
    grid->axes = AxesOf(values, *grid->study);
    const double count = PointCount(grid->axes);
    if (!(count <= mostPoints)) {
        throw py::value_error(fmt::format("the sweep has {} points, and most_points is {}",
                                          RenderPlain(count), RenderPlain(mostPoints)));
    }
    grid->points.reserve(static_cast<std::size_t>(count));
    DoInterruptibly([&](const StopFlag& stop) {
        Sweep(grid->study->Project(), grid->axes, grid->study->Tables(), jobs, stop,
              [&grid](std::int64_t /*index*/, const SweepPoint& point) { grid->points.push_back(point); });
    });
    return grid;
}

py::dict AtOf(const GridPoint& self) {
    py::dict at;
    for (std::size_t i = 0; i < self.grid->axes.size(); ++i) {
        const SweepAxis& axis = self.grid->axes[i];
        at[py::str(axis.path)] = ToPython(axis.facts, self.Point().at[i]);
    }
    return at;
}

py::object ErrorOf(const SweepPoint& point) {
    if (!point.error) {
        return py::none();
    }
    const RaisedError& error = *point.error;
    return py::module_::import("genvara._errors")
        .attr("RaisedError")(error.Number(), error.Source(), error.Description());
}

/// A value of a table: a code by its name.
py::object CellOf(const PropertyFacts& facts, const PropertyValue& value) {
    return facts.type == PropertyType::Code ? py::str(ValueText(facts, value)) : ToPython(facts, value);
}

/// The columns of a table of points, each a list by its title.
py::dict ColumnsOf(const Grid& grid) {
    py::dict columns;
    const auto add = [&](std::string_view title, auto cell) {
        py::list cells;
        for (const SweepPoint& point : grid.points) {
            cells.append(cell(point));
        }
        columns[py::str(std::string(title))] = cells;
    };
    const auto ofSet = [&](std::string_view title, auto member) {
        add(title, [member](const SweepPoint& point) -> py::object {
            return point.sizing.set ? py::cast((*point.sizing.set).*member) : py::object(py::none());
        });
    };
    const auto ofTightest = [&](std::string_view title, auto member) {
        add(title, [member](const SweepPoint& point) -> py::object {
            const auto tightest = NamedTightest(point.sizing.tightest);
            return tightest ? py::cast((*tightest).*member) : py::object(py::none());
        });
    };
    for (std::size_t i = 0; i < grid.axes.size(); ++i) {
        add(grid.axes[i].path,
            [&, i](const SweepPoint& point) { return CellOf(grid.axes[i].facts, point.at[i]); });
    }
    ofSet("model_num", &ChosenSet::ModelNum);
    ofSet("alt_num", &ChosenSet::AltNum);
    ofSet("nominal_rating", &ChosenSet::NominalRating);
    ofSet("derated_rating", &ChosenSet::DeratedRating);
    add("num_chosen_sets", [](const SweepPoint& point) -> py::object {
        return point.error ? py::object(py::none()) : py::int_(point.sizing.numChosenSets);
    });
    ofTightest("tightest_test", &TightestTest::name);
    ofTightest("tightest_step", &TightestTest::stepNumber);
    ofTightest("tightest_margin", &TightestTest::margin);
    add("error", [](const SweepPoint& point) -> py::object {
        return point.error ? py::cast(point.error->Description()) : py::object(py::none());
    });
    return columns;
}

GridPoint PointAt(const GridPtr& grid, std::ptrdiff_t index) {
    if (!grid) {
        throw py::type_error("a point is one of a sweep");
    }
    const auto count = static_cast<std::ptrdiff_t>(grid->points.size());
    const std::ptrdiff_t place = index < 0 ? index + count : index;
    if (place < 0 || place >= count) {
        throw py::index_error(fmt::format("there is no point {} among {}", index, count));
    }
    return {grid, static_cast<std::size_t>(place)};
}

// ---- states for pickle

using AxisState = std::pair<std::string, py::list>;
using ErrorState = std::tuple<std::int32_t, std::string, std::string>;
using PointState = std::pair<SizingState, std::optional<ErrorState>>;
using GridState = std::tuple<StudyState, std::vector<AxisState>, std::vector<PointState>>;

GridState StateOfGrid(const Grid& grid) {
    GridState state{StateOf(*grid.study), {}, {}};
    for (const SweepAxis& axis : grid.axes) {
        auto& [path, values] = std::get<1>(state).emplace_back(axis.path, py::list());
        for (const PropertyValue& value : axis.values) {
            values.append(ToPython(axis.facts, value));
        }
    }
    for (const SweepPoint& point : grid.points) {
        auto& [sizing, error] = std::get<2>(state).emplace_back(StateOf(point.sizing), std::nullopt);
        if (point.error) {
            error = ErrorState(point.error->Number(), point.error->Source(), point.error->Description());
        }
    }
    return state;
}

GridPtr GridOf(const GridState& state) {
    const auto& [study, axes, points] = state;
    auto grid = std::make_shared<Grid>();
    grid->study = StudyOf(study);
    py::dict values;
    for (const auto& [path, list] : axes) {
        values[py::str(path)] = list;
    }
    grid->axes = AxesOf(values, *grid->study);
    if (PointCount(grid->axes) != static_cast<double>(points.size())) {
        throw py::value_error("a sweep has as many points as its grid");
    }
    for (const auto& [sizing, error] : points) {
        SweepPoint& point = grid->points.emplace_back();
        point.at = ValuesAt(grid->axes, static_cast<std::int64_t>(grid->points.size()) - 1);
        point.sizing = SizingOf(sizing);
        if (error) {
            const auto& [number, source, description] = *error;
            point.error.emplace(number, source, description);
        }
    }
    return grid;
}

}  // namespace

void BindSweep(py::module_& module) {
    py::class_<GridPoint>(module, "SweepPoint", "What a point of a sweep came to.")
        .def_property_readonly("at", AtOf, "The values of the point by their paths.")
        .def_property_readonly(
            "set", [](const GridPoint& self) { return self.Point().sizing.set; },
            "The first recommended set; None without any.")
        .def_property_readonly(
            "num_chosen_sets", [](const GridPoint& self) { return self.Point().sizing.numChosenSets; },
            "Number of recommended sets, as listed.")
        .def_property_readonly(
            "tightest", [](const GridPoint& self) { return NamedTightest(self.Point().sizing.tightest); },
            "The tightest test of that set; None without any.")
        .def_property_readonly(
            "error", [](const GridPoint& self) { return ErrorOf(self.Point()); },
            "Why the point could not be sized, a RaisedError; None if it could.")
        .def("__repr__",
             [](const GridPoint& self) {
                 const SweepPoint& point = self.Point();
                 return fmt::format("<genvara.SweepPoint {}: {}>", py::str(AtOf(self)).cast<std::string>(),
                                    point.error        ? point.error->Description()
                                    : point.sizing.set ? point.sizing.set->ModelNum
                                                       : "none");
             })
        .def("__reduce__", Reduced<GridPoint>(
                               module, "_sweep_point",
                               [](const GridPoint& self) { return std::pair(self.grid, self.index); },
                               [](const std::pair<GridPtr, std::size_t>& state) {
                                   return PointAt(state.first, static_cast<std::ptrdiff_t>(state.second));
                               }));
    py::class_<Grid, std::shared_ptr<Grid>>(module, "Sweep",
                                            "The points of a grid of values, the last path running fastest.")
        .def_property_readonly(
            "paths",
            [](const Grid& self) {
                std::vector<std::string> paths;
                for (const SweepAxis& axis : self.axes) {
                    paths.push_back(axis.path);
                }
                return paths;
            },
            "What is varied.")
        .def("__len__", [](const Grid& self) { return self.points.size(); })
        .def("__getitem__", PointAt)
        .def("__iter__",
             [](const py::object& self) {
                 return py::reinterpret_steal<py::object>(PySeqIter_New(self.ptr()));
             })
        .def("columns", ColumnsOf,
             "The points as a table: a list a column, by title. Codes stand there by name, and None where "
             "there is nothing.")
        .def(
            "to_pandas",
            [](const Grid& self) { return py::module_::import("pandas").attr("DataFrame")(ColumnsOf(self)); },
            "The same as a DataFrame, where pandas is installed.")
        .def("__repr__",
             [](const Grid& self) { return fmt::format("<genvara.Sweep of {} points>", self.points.size()); })
        .def("__reduce__", Reduced<Grid>(
                               module, "_sweep", [](const Grid& self) { return StateOfGrid(self); },
                               [](const GridState& state) { return GridOf(state); }));
    module.def("sweep", SweepOver, py::arg("project").none(false), py::arg("catalogue").none(false),
               py::arg("values"), py::kw_only(), py::arg("jobs") = 1, py::arg("most_points") = 1e6,
               "Sizes the project at every point of a grid: `values` has the values of each path, as in "
               "{\"PowerSystem.Altitude\": range(0, 3001, 250)}. A point that fails has its error. `jobs` "
               "threads share the work. Other keywords are the limits of the runs.");
}

}  // namespace genvara::python
