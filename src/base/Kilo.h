#pragma once

namespace genvara {

/// W to kW, VA to kVA, var to kVAR.
inline constexpr double kPerKilo = 1000.0;

}  // namespace genvara
