#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "RaisedError.h"

namespace genvara {

/// The least and the greatest value of a range that holds both.
template <typename Value>
struct Range {
    Value least;
    Value greatest;
};

/// A range from above 0 to `greatest`, which it holds.
struct PositiveRange {
    double greatest;
};

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

template <typename Value>
void RequireRange(Value value, const Range<Value>& range, const Refusal& refusal) {
    RequireRange(value, range.least, range.greatest, refusal);
}

/// @throws RaisedError of the refusal unless 0 < value <= greatest; a NaN is refused.
inline void RequireRange(double value, const PositiveRange& range, const Refusal& refusal) {
    if (!(value > 0.0 && value <= range.greatest)) {
        throw RaisedError(refusal.number, std::string(refusal.source), std::string(refusal.description));
    }
}

}  // namespace genvara
