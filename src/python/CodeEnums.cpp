#include "CodeEnums.h"

#include <algorithm>
#include <map>
#include <stdexcept>

#include "Names.h"
#include "Properties.h"

namespace genvara::python {
namespace {

namespace py = pybind11;

bool AreSame(std::span<const CodeName> left, std::span<const CodeName> right) {
    return left.data() == right.data() && left.size() == right.size();
}

/// A table with the member that refers to it, and how many kinds of record do.
struct Use {
    std::string_view member;
    std::string_view firstKind;
    std::span<const CodeName> codes;
    std::int32_t kinds = 1;
};

std::vector<Use> AllUses() {
    std::vector<Use> uses;
    for (const RecordKind& kind : RecordKinds()) {
        for (const PropertyFacts* facts : kind.members) {
            if (facts->type != PropertyType::Code) {
                continue;
            }
            const auto known = std::ranges::find_if(uses, [facts](const Use& use) {
                return use.member == facts->name && AreSame(use.codes, facts->codes);
            });
            if (known != uses.end()) {
                ++known->kinds;
            } else {
                uses.push_back({.member = facts->name, .firstKind = kind.name, .codes = facts->codes});
            }
        }
    }
    return uses;
}

/// Whether a table is that of more kinds than any other that a member of this name has.
bool IsOfMost(const Use& use, const std::vector<Use>& uses) {
    return std::ranges::all_of(uses, [&use](const Use& other) {
        return &other == &use || other.member != use.member || other.kinds < use.kinds;
    });
}

std::vector<CodeTable> NameTables() {
    const std::vector<Use> uses = AllUses();
    std::vector<CodeTable> tables;
    for (const Use& use : uses) {
        const std::string prefix(IsOfMost(use, uses) ? std::string_view() : use.firstKind);
        tables.push_back({.name = prefix + std::string(use.member), .codes = use.codes});
    }
    return tables;
}

/// The enums by the tables that they are made of. They live as long as the interpreter, which must not be
/// asked to drop them after its end.
std::map<const CodeName*, py::object>& Enums() {
    static auto* const enums = new std::map<const CodeName*, py::object>;
    return *enums;
}

}  // namespace

const std::vector<CodeTable>& CodeTables() {
    static const std::vector<CodeTable> tables = NameTables();
    return tables;
}

const CodeTable& TableOf(const PropertyFacts& facts) {
    const auto found = std::ranges::find_if(
        CodeTables(), [&facts](const CodeTable& table) { return AreSame(table.codes, facts.codes); });
    if (found == CodeTables().end()) {
        throw std::logic_error("a member without a table of codes");
    }
    return *found;
}

void AddCodeEnums(py::module_& module) {
    const py::object intEnum = py::module_::import("enum").attr("IntEnum");
    for (const CodeTable& table : CodeTables()) {
        py::list members;
        for (const CodeName& code : table.codes) {
            members.append(py::make_tuple(ConstantName(code.Name()), code.Code()));
        }
        py::object made = intEnum(table.name, members, py::arg("module") = "genvara");
        module.attr(table.name.c_str()) = made;
        Enums().emplace(table.codes.data(), made);
    }
}

py::object ConstantOf(const PropertyFacts& facts, std::int32_t code) {
    const bool isNamed =
        std::ranges::any_of(facts.codes, [code](const CodeName& name) { return name.Code() == code; });
    return isNamed ? Enums().at(facts.codes.data())(code) : py::int_(code);
}

}  // namespace genvara::python
