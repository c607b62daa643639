#include "Brand.h"

#include <fmt/format.h>

#include <array>
#include <cstddef>

#include "StringTable.h"

namespace genvara {
namespace {

/// Strings of a brand.
struct BrandStrings {
    std::int32_t brandWord;
    std::int32_t productName;
    std::int32_t webCaption;
};

/// By label.
constexpr std::array<BrandStrings, 2> kBrands{{{10, 11, 87}, {20, 21, 88}}};
constexpr std::int32_t kHelpFileString = 12;

bool IsBrand(std::int32_t label) noexcept {
    return label >= 0 && label < static_cast<std::int32_t>(kBrands.size());
}

}  // namespace

std::int32_t BuiltBrand() noexcept {
    return GENVARA_BRAND;
}

BrandWords WordsOf(std::int32_t label) noexcept {
    if (!IsBrand(label)) {
        return {};
    }
    const BrandStrings& strings = kBrands[static_cast<std::size_t>(label)];
    return {.brandWord = StringTable::Text(strings.brandWord),
            .productName = StringTable::Text(strings.productName),
            .webCaption = StringTable::Text(strings.webCaption)};
}

std::string_view HelpFileName() noexcept {
    return StringTable::Text(kHelpFileString);
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
