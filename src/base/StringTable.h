#pragma once

#include <cstdint>
#include <string_view>

namespace genvara {

/// Captions, tool tips and messages by id, in English.
class StringTable {
  public:
    /// The text of an id; empty for an id that has none.
    [[nodiscard]] static std::string_view Text(std::int32_t id) noexcept;
};

}  // namespace genvara
