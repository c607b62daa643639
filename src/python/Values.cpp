#include "Values.h"

#include <fmt/format.h>

#include <cstdint>
#include <limits>
#include <variant>

#include "CodeEnums.h"
#include "LanguageErrors.h"
#include "Names.h"
#include "Paths.h"
#include "PropertyText.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

[[noreturn]] void RefuseType(const PropertyFacts& facts, std::string_view expected, py::handle value) {
    const std::string type = py::str(py::type::of(value).attr("__name__"));
    throw py::type_error(fmt::format("{} takes {}, and not {}", SnakeCase(facts.name), expected, type));
}

double RealOf(const PropertyFacts& facts, py::handle value) {
    constexpr std::string_view kExpected = "a number";
    if (PyBool_Check(value.ptr())) {
        RefuseType(facts, kExpected, value);
    }
    const double number = PyFloat_AsDouble(value.ptr());
    if (PyErr_Occurred() != nullptr) {
        const bool isTooLarge = PyErr_ExceptionMatches(PyExc_OverflowError) != 0;
        const bool isOfType = PyErr_ExceptionMatches(PyExc_TypeError) == 0;
        if (isOfType && !isTooLarge) {
            throw py::error_already_set();
        }
        PyErr_Clear();
        if (isTooLarge) {
            RaiseOverflow(facts.name);
        }
        RefuseType(facts, kExpected, value);
    }
    return Finite(number, facts.name);
}

std::int32_t WholeOf(const PropertyFacts& facts, std::string_view expected, py::handle value) {
    if (PyBool_Check(value.ptr()) || !PyIndex_Check(value.ptr())) {
        RefuseType(facts, expected, value);
    }
    const auto index = py::reinterpret_steal<py::object>(PyNumber_Index(value.ptr()));
    if (!index) {
        throw py::error_already_set();
    }
    int overflow = 0;
    const long long number = PyLong_AsLongLongAndOverflow(index.ptr(), &overflow);
    if (overflow != 0 || number < std::numeric_limits<std::int32_t>::min() ||
        number > std::numeric_limits<std::int32_t>::max()) {
        RaiseOverflow(facts.name);
    }
    return static_cast<std::int32_t>(number);
}

DateTime MomentOf(const PropertyFacts& facts, py::handle value) {
    const py::object type = py::module_::import("datetime").attr("datetime");
    if (!py::isinstance(value, type) || !value.attr("tzinfo").is_none()) {
        RefuseType(facts, "a datetime without a time zone", value);
    }
    const auto part = [value](const char* name) { return value.attr(name).cast<std::int32_t>(); };
    const DateTime moment{part("year"), part("month"),  part("day"),
                          part("hour"), part("minute"), part("second")};
    if (!IsValid(moment)) {
        RaiseInvalidArgument(facts.name);
    }
    return moment;
}

}  // namespace

py::object ToPython(const DateTime& moment) {
    return py::module_::import("datetime")
        .attr("datetime")(moment.year, moment.month, moment.day, moment.hour, moment.minute, moment.second);
}

py::object ToPython(const PropertyFacts& facts, const PropertyValue& value) {
    struct Made {
        const PropertyFacts* facts;
        py::object operator()(double number) const { return py::float_(number); }
        py::object operator()(std::int32_t number) const {
            return facts->type == PropertyType::Code ? ConstantOf(*facts, number) : py::int_(number);
        }
        py::object operator()(bool truth) const { return py::bool_(truth); }
        py::object operator()(const std::string& text) const { return py::str(text); }
        py::object operator()(const DateTime& moment) const { return ToPython(moment); }
    };
    return std::visit(Made{&facts}, value);
}

PropertyValue FromPython(const PropertyFacts& facts, py::handle value) {
    const bool isText = PyUnicode_Check(value.ptr());
    switch (facts.type) {
        case PropertyType::Real:
            return RealOf(facts, value);
        case PropertyType::Whole:
            return WholeOf(facts, "a whole number", value);
        case PropertyType::Code:
            return isText ? ParseValue(facts, value.cast<std::string>())
                          : WholeOf(facts, "a code, its number or its name", value);
        case PropertyType::Truth:
            if (!PyBool_Check(value.ptr())) {
                RefuseType(facts, "True or False", value);
            }
            return value.ptr() == Py_True;
        case PropertyType::Text:
            if (!isText) {
                RefuseType(facts, "a text", value);
            }
            return value.cast<std::string>();
        case PropertyType::Moment:
            break;
    }
    return MomentOf(facts, value);
}

std::string DocOf(const PropertyFacts& facts) {
    std::string text = fmt::format("{} ", facts.meaning);
    if (!facts.unit.empty()) {
        text += fmt::format("Unit: {}. ", facts.unit);
    }
    if (facts.type == PropertyType::Code) {
        text += fmt::format("A {}; takes its names too.", TableOf(facts).name);
    } else {
        text += fmt::format("Takes {}.", ExpectedText(facts));
    }
    if (!facts.entered.HoldAnything()) {
        text += fmt::format(" Its entry form takes {}.", BoundsText(facts.entered));
    }
    return text;
}

}  // namespace genvara::python
