#include "PrjTexts.h"

#include <span>
#include <string>
#include <variant>

#include "Properties.h"
#include "TypographicQuotes.h"

namespace genvara {
namespace {

template <typename Record>
std::size_t ReplaceIn(std::span<const Property<Record>> table, Record& record) {
    std::size_t changed = 0;
    for (const Property<Record>& row : table) {
        const PropertyValue value = row.get(record);
        const auto* text = std::get_if<std::string>(&value);
        if (text != nullptr && text->find('"') != std::string::npos) {
            row.set(record, TypographicQuotes(*text));
            ++changed;
        }
    }
    return changed;
}

}  // namespace

std::size_t ReplaceDoubleQuotes(CProject& project, CLoadProfile& profile) {
    std::size_t changed = ReplaceIn(ProjectProperties(), project);
    for (CLoadStep& step : profile) {
        changed += ReplaceIn(StepProperties(), step);
        for (Load& load : step) {
            changed += ReplaceIn(LoadProperties(load.LoadType()), load);
        }
    }
    return changed;
}

}  // namespace genvara
