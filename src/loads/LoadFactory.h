#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "Load.h"
#include "MotorConversions.h"

namespace genvara {

/// One of the nine kinds of load.
struct LoadKindRow {
    std::int32_t loadType;       ///< code of `load_type`
    std::string_view name;       ///< where a project names its kinds: in JSON, in `describe`
    std::string_view className;  ///< as in "CMtrLoad"
    /// A new load with the kind's defaults. The motor tables outlive it.
    std::unique_ptr<Load> (*make)(const MotorConversions& motors);
};

/// The kinds, by their codes from 0.
[[nodiscard]] std::span<const LoadKindRow> LoadKindRows() noexcept;

/// The kind of a code; null for a code of no kind.
[[nodiscard]] const LoadKindRow* FindLoadKindRow(std::int32_t loadType) noexcept;

/// A new load of a kind, with the kind's defaults; null for a code of no kind. The motor tables outlive it.
[[nodiscard]] std::unique_ptr<Load> MakeLoad(std::int32_t loadType, const MotorConversions& motors);

}  // namespace genvara
