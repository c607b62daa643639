#pragma once

#include <QIcon>
#include <string_view>

namespace genvara {

/// The icon drawn from the picture of that name ("new" is `:/pictures/new.svg`), sharp at every size and
/// device pixel ratio. Disabled it is grey; selected it takes the palette's colour of highlighted text. A
/// name that no picture has gives a null icon.
[[nodiscard]] QIcon Picture(std::string_view name);

}  // namespace genvara
