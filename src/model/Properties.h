#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "CLoadStep.h"
#include "CProject.h"
#include "CPwrSys.h"
#include "DesignLimits.h"
#include "Load.h"
#include "Property.h"

/// The one table of every property of a project. What lists, describes, reads or writes members by name is
/// made from it: JSON projects and their schema, the loads of `.prj` files, paths, `describe`.
namespace genvara {

/// What a person names a record by: "PowerSystem", "Step", "Motor".
namespace record_kind {
inline constexpr std::string_view kProject = "Project";
inline constexpr std::string_view kPowerSystem = "PowerSystem";
inline constexpr std::string_view kDesigner = "Designer";
inline constexpr std::string_view kStep = "Step";
}  // namespace record_kind

[[nodiscard]] std::span<const Property<CProject>> ProjectProperties() noexcept;
[[nodiscard]] std::span<const Property<CPwrSys>> PowerSystemProperties() noexcept;
/// The limits of a run, which are not part of a project.
[[nodiscard]] std::span<const Property<DesignLimits>> DesignerProperties() noexcept;
[[nodiscard]] std::span<const Property<CLoadStep>> StepProperties() noexcept;

/// The inputs of a kind of load, in the order of its records in a `.prj` file; those that all kinds share
/// come first, and the entry method before what it chooses. Powers that follow from inputs are none of them.
/// Empty for a code of no kind; the rows are for loads of the kind alone.
[[nodiscard]] std::span<const Property<Load>> LoadProperties(std::int32_t loadType) noexcept;

/// The member of motors and air conditioners that chooses how their size is given.
inline constexpr std::string_view kEntryMethodName = "DataEntryMethod";

/// Whether a load has a member at present: one that its entry method does not use does not exist for it.
[[nodiscard]] bool Exists(const Property<Load>& property, const Load& load);

/// Whether a member holds a value that its setter would take. One that does not was never given: it holds
/// what new records hold.
[[nodiscard]] bool IsGiven(const PropertyFacts& facts, const PropertyValue& value);

/// A kind of record with its members.
struct RecordKind {
    std::string_view name;
    std::vector<const PropertyFacts*> members;
};

/// All kinds of record: project, site, limits, step, and the nine kinds of load.
[[nodiscard]] const std::vector<RecordKind>& RecordKinds();

}  // namespace genvara
