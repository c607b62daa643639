#include "ValueJson.h"

#include <optional>

#include "PropertyText.h"

namespace genvara {

void ValueMember(JsonText& json, std::string_view name, const PropertyFacts& facts,
                 const PropertyValue& value) {
    json.Key(name);
    if (const auto* real = std::get_if<double>(&value)) {
        json.Value(*real);
    } else if (const auto* truth = std::get_if<bool>(&value)) {
        json.Value(*truth);
    } else if (const auto* whole = std::get_if<std::int32_t>(&value); whole && !NameOfCode(facts, *whole)) {
        json.Value(*whole);
    } else {
        json.Value(ValueText(facts, value));
    }
}

}  // namespace genvara
