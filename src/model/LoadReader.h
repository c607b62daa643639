#pragma once

#include <cstdint>
#include <memory>

#include "Load.h"
#include "MotorConversions.h"
#include "RaisedError.h"
#include "ValueReader.h"

namespace genvara {

/// A statement of a load's record that could not be read; the reader knows where and why.
class UnreadStatement {};

/// What the loads of a file are rebuilt from besides their records.
struct LoadContext {
    const MotorConversions& motors;
    std::int32_t voltage = 0;  ///< line-to-line volts of the site
};

/// Reads the records of one load behind its type, all of them, and sets them in a new load of that kind.
/// @return null for a type of no kind, of which nothing is read.
/// @throws UnreadStatement at the first statement that cannot be read, RaisedError at the first setter that
///         refuses its value. The load is then lost; of a statement that cannot be read the further values
///         are still unread.
[[nodiscard]] std::unique_ptr<Load> ReadLoad(std::int32_t loadType, ValueReader& reader,
                                             const LoadContext& context);

}  // namespace genvara
