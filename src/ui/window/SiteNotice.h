#pragma once

#include <QString>
#include <vector>

#include "SiteChoice.h"

namespace genvara {

class panPwrSys;

/// Where a project's choices come from.
enum class ChoicesFrom : std::uint8_t { File, Defaults };

/// Says of each choice that no list offers what the project came with and what the panel takes in its place;
/// a line a choice, empty for none.
[[nodiscard]] QString SiteNotice(const std::vector<UnofferedChoice>& choices, ChoicesFrom from,
                                 const panPwrSys& panel);

}  // namespace genvara
