#pragma once

#include <cstdint>
#include <memory>

#include "LoadForm.h"

namespace genvara {

/// The entry form of a kind, open for a new load and not shown yet; null for a code of no kind.
[[nodiscard]] std::unique_ptr<LoadForm> MakeLoadForm(std::int32_t loadType, const LoadFormServices& services);

}  // namespace genvara
