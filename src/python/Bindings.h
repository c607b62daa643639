#pragma once

#include <pybind11/pybind11.h>

/// What the module consists of; each adds its classes and functions.
namespace genvara::python {

void BindCatalogue(pybind11::module_& module);
void BindProject(pybind11::module_& module);
void BindRecords(pybind11::module_& module);
void BindAdvice(pybind11::module_& module);
void BindOrder(pybind11::module_& module);
void BindSweep(pybind11::module_& module);
void BindTrials(pybind11::module_& module);
void BindResult(pybind11::module_& module);
void BindExplanation(pybind11::module_& module);
void BindDescribe(pybind11::module_& module);

/// Lets a class have no objects but those of the program: one that was never filled would be no memory at
/// all.
void ForbidNew(pybind11::handle bound);

/// Lets a function make the objects of a class, whole from the start.
template <typename Make, typename... Extra>
void MakeNewBy(pybind11::handle bound, Make make, const Extra&... extra) {
    const pybind11::object staticMethod = pybind11::module_::import("builtins").attr("staticmethod");
    bound.attr("__new__") =
        staticMethod(pybind11::cpp_function(make, pybind11::name("__new__"), pybind11::arg("cls"), extra...));
    bound.attr("__init__") =
        pybind11::cpp_function([](const pybind11::object&, const pybind11::args&, const pybind11::kwargs&) {},
                               pybind11::is_method(bound));
}

/// A path as Python gives it: a text, or what `os.fspath` takes.
[[nodiscard]] std::string PathText(pybind11::handle path);

}  // namespace genvara::python
