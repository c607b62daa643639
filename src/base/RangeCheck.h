#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "RaisedError.h"

namespace genvara {

/// What a setter raises when it refuses a value.
struct Refusal {
    std::int32_t number;
    std::string_view description;
    std::string_view source;
};

/// @throws RaisedError of the refusal unless lowest <= value <= highest; a NaN is refused.
template <typename Value>
void RequireRange(Value value, Value lowest, Value highest, const Refusal& refusal) {
    if (!(value >= lowest && value <= highest)) {
        throw RaisedError(refusal.number, std::string(refusal.source), std::string(refusal.description));
    }
}

/// @throws RaisedError of the refusal unless 0 < value <= highest; a NaN is refused.
inline void RequirePositive(double value, double highest, const Refusal& refusal) {
    if (!(value > 0.0 && value <= highest)) {
        throw RaisedError(refusal.number, std::string(refusal.source), std::string(refusal.description));
    }
}

}  // namespace genvara
