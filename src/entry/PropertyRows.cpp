#include "PropertyRows.h"

#include <algorithm>
#include <array>

namespace genvara {
namespace {

/// Labels of what the user writes, which may look like a figure.
constexpr std::array<std::string_view, 2> kOwnTexts{"Name", "Description"};

/// Whether a value is a figure, or two as in "60.5/11.0".
bool IsFigure(std::string_view value) {
    return value.find_first_not_of("0123456789.+-E/%") == std::string_view::npos;
}

}  // namespace

ShownProperty ShowProperty(std::string_view row, const EntryNumbers& numbers) {
    const std::size_t tab = std::min(row.find('\t'), row.size());
    ShownProperty shown{.label = std::string(row.substr(0, tab)),
                        .value = std::string(row.substr(std::min(tab + 1, row.size())))};
    if (std::ranges::find(kOwnTexts, shown.label) != kOwnTexts.end() || !IsFigure(shown.value)) {
        return shown;
    }
    const std::string& separator = numbers.Separator();
    for (std::size_t point = shown.value.find('.'); point != std::string::npos;
         point = shown.value.find('.', point + separator.size())) {
        shown.value.replace(point, 1, separator);
    }
    return shown;
}

}  // namespace genvara
