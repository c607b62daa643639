#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace genvara {

/// The row of [Gensets] at which a run stopped.
struct SetAtFault {
    std::string model;       ///< `GensetModel`; empty for a Null
    std::string alternator;  ///< its model number, its key where that cannot be read, or empty
    std::optional<std::int64_t>
        row;  ///< as a check of the catalogue counts; absent where the table has no numbers

    bool operator==(const SetAtFault&) const = default;
};

}  // namespace genvara
