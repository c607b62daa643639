#include <pybind11/pybind11.h>

#include <exception>
#include <utility>

#include "Bindings.h"
#include "CodeEnums.h"
#include "ProgramVersion.h"
#include "RaisedError.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

void RaiseInPython(std::exception_ptr thrown) {
    try {
        if (thrown) {
            std::rethrow_exception(std::move(thrown));
        }
    } catch (const RaisedError& error) {
        const py::object type = py::module_::import("genvara._errors").attr("RaisedError");
        const py::object raised = type(error.Number(), error.Source(), error.Description());
        PyErr_SetObject(type.ptr(), raised.ptr());
    }
}

/// Names that a user sees: all but those of the module's own.
py::list PublicNames(const py::module_& module) {
    py::list names;
    for (const auto& [name, value] : module.attr("__dict__").cast<py::dict>()) {
        if (!name.cast<std::string>().starts_with("_")) {
            names.append(name);
        }
    }
    return names;
}

}  // namespace

void ForbidNew(py::handle bound) {
    const py::object staticMethod = py::module_::import("builtins").attr("staticmethod");
    bound.attr("__new__") = staticMethod(py::cpp_function(
        [](const py::object& type, const py::args&, const py::kwargs&) -> py::object {
            throw py::type_error(py::str(type.attr("__name__")).cast<std::string>() + " has no constructor");
        },
        py::name("__new__")));
}

PYBIND11_MODULE(_core, module) {
    py::register_exception_translator(RaiseInPython);
    AddCodeEnums(module);
    BindCatalogue(module);
    BindResult(module);
    BindExplanation(module);
    BindProject(module);
    BindRecords(module);
    BindAdvice(module);
    BindOrder(module);
    BindSweep(module);
    BindTrials(module);
    BindDescribe(module);
    for (const char* name : {"Project", "Result", "PowerSystem", "Step", "Load", "ChosenSet", "ExplainedSet",
                             "Test", "Tightest", "Advice", "AdviceList", "Order", "SweepPoint", "Sweep"}) {
        ForbidNew(module.attr(name));
    }
    module.attr("__all__") = PublicNames(module);
    module.attr("__version__") = kProgramVersionText;
}

}  // namespace genvara::python
