#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "MotorConversions.h"

namespace genvara {

/// The motor tables as they stand in a catalogue, in ascending horsepower.
struct MotorRows {
    std::vector<std::int64_t> numbers;  ///< of the rows
    MotorConversions tables;
};

struct MotorFinding {
    std::int64_t row = 0;
    std::string_view column;
    std::string fault;
};

/// Looks for motors that the tables could not convert, or would convert to what a load refuses: figures that
/// do not ascend, and what comes out where the tables are carried on below and beyond their ends.
[[nodiscard]] std::vector<MotorFinding> CheckMotorTables(const MotorRows& motors);

}  // namespace genvara
