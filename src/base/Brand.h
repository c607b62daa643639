#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace genvara {

/// Labels of the brands; any other label has no words at all.
namespace brand {
inline constexpr std::int32_t kMorvane = 0;
inline constexpr std::int32_t kCaldrix = 1;
}  // namespace brand

/// Label of the brand that this build shows.
[[nodiscard]] std::int32_t BuiltBrand() noexcept;

/// What a brand calls itself.
struct BrandWords {
    std::string_view brandWord;
    std::string_view productName;
    std::string_view webCaption;
};

/// The words of a brand; empty ones for another label than those of `brand`.
[[nodiscard]] BrandWords WordsOf(std::int32_t label) noexcept;

/// Help file, relative to the program folder. Start-up takes it whatever the brand is.
[[nodiscard]] std::string_view HelpFileName() noexcept;

/// Caption of the main window: brand word, product name, and the project's name unless it is blank.
[[nodiscard]] std::string WindowCaption(std::int32_t label, std::string_view projectName);

}  // namespace genvara
