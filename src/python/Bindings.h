#pragma once

#include <pybind11/pybind11.h>

/// What the module consists of; each adds its classes and functions.
namespace genvara::python {

void BindCatalogue(pybind11::module_& module);
void BindProject(pybind11::module_& module);
void BindResult(pybind11::module_& module);
void BindExplanation(pybind11::module_& module);
void BindDescribe(pybind11::module_& module);

/// A path as Python gives it: a text, or what `os.fspath` takes.
[[nodiscard]] std::string PathText(pybind11::handle path);

}  // namespace genvara::python
