#include "RecordRefs.h"

#include <pybind11/pybind11.h>

namespace genvara::python {
namespace {

[[noreturn]] void RaiseDeleted(const char* what) {
    PyErr_Format(PyExc_ReferenceError, "the %s was deleted from its project", what);
    throw pybind11::error_already_set();
}

/// Position of a record among others, from 1.
template <typename Record, typename List>
std::int32_t PositionOf(const Record& record, List& list) {
    std::int32_t position = 1;
    for (const Record& one : list) {
        if (&one == &record) {
            break;
        }
        ++position;
    }
    return position;
}

}  // namespace

CLoadStep& StepRef::Record() const {
    CLoadStep* step = Find();
    if (step == nullptr) {
        RaiseDeleted("step");
    }
    return *step;
}

std::int32_t StepRef::Number() const {
    return PositionOf(Record(), project->LoadProfile());
}

Load* LoadRef::Find() const {
    CLoadStep* step = Step().Find();
    return step == nullptr ? nullptr : step->LoadItem(id);
}

Load& LoadRef::Record() const {
    Load* load = Find();
    if (load == nullptr) {
        RaiseDeleted("load");
    }
    return *load;
}

std::int32_t LoadRef::Number() const {
    return PositionOf(Record(), Step().Record());
}

}  // namespace genvara::python
