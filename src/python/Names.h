#pragma once

#include <string>
#include <string_view>

/// Names of the model as Python writes them.
namespace genvara::python {

/// "MaxFreqDip" as "max_freq_dip", "NumPCs" as "num_pcs", "StepVTHD_A" as "step_vthd_a".
[[nodiscard]] std::string SnakeCase(std::string_view name);

/// A caption as the name of a constant: "Wye-Delta" as "WYE_DELTA", ">12 pulse" as "ABOVE_12_PULSE". What
/// begins with a digit gets an "N": "N6_PULSE".
[[nodiscard]] std::string ConstantName(std::string_view caption);

}  // namespace genvara::python
