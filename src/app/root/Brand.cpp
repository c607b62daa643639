#include "Brand.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>

namespace genvara {
namespace {

/// By label.
constexpr std::array<BrandWords, 2> kBrands{
    {{"Morvane", "Genvara", "Morvane on the &Web"}, {"Caldrix", "Ohmvane", "Caldrix on the &Web"}}};

bool IsBrand(std::int32_t label) noexcept {
    return label >= 0 && label < static_cast<std::int32_t>(kBrands.size());
}

}  // namespace

std::int32_t BuiltBrand() noexcept {
    return GENVARA_BRAND;
}

BrandWords WordsOf(std::int32_t label) noexcept {
    return IsBrand(label) ? kBrands[static_cast<std::size_t>(label)] : BrandWords{};
}

std::string WindowCaption(std::int32_t label, std::string_view projectName) {
    const BrandWords words = WordsOf(label);
    const std::string product =
        IsBrand(label) ? fmt::format("{} {}", words.brandWord, words.productName) : "";
    const std::size_t first = projectName.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return product;
    }
    const std::string_view name = projectName.substr(first, projectName.find_last_not_of(' ') - first + 1);
    return fmt::format("{} - {}", product, name);
}

}  // namespace genvara
