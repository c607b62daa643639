#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "Load.h"
#include "MotorConversions.h"
#include "ValueReader.h"

namespace genvara {

/// What the loads of a file are rebuilt from besides their records.
struct LoadContext {
    const MotorConversions& motors;
    std::int32_t voltage = 0;  ///< line-to-line volts of the site
};

/// Reads the records of one load behind its type, all of them, and sets them in a new load of that kind.
/// @return null for a type of no kind, of which nothing is read; nothing where a statement cannot be read:
/// the
///         reader knows where and why, and its further values are still unread.
/// @throws RaisedError of the first setter that refuses its value; the load is then lost.
[[nodiscard]] std::optional<std::unique_ptr<Load>> ReadLoad(std::int32_t loadType, ValueReader& reader,
                                                            const LoadContext& context);

}  // namespace genvara
