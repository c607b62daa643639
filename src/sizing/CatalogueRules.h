#pragma once

#include <span>
#include <string_view>

namespace genvara {

/// Something that must not be true of any row of a table, however well each field can be read.
struct CatalogueRule {
    std::string_view table;
    std::string_view column;  ///< that is shown, and that the condition is about
    std::string_view
        condition;  ///< in SQL, {0} the column of the row `one`; of values of the column's kind alone
    std::string_view sentence;  ///< behind the value, as in "is not above 0"
};

/// What of a readable row would end or falsify a run. Bounds are those of the model and of physics, far
/// beyond any maker's sets; a set that is merely odd breaks none.
[[nodiscard]] std::span<const CatalogueRule> CatalogueRules() noexcept;

}  // namespace genvara
