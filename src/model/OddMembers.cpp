#include "OddMembers.h"

#include "CMtrLoad.h"
#include "Properties.h"

namespace genvara {
namespace {

bool IsOdd(const PropertyFacts& facts, const PropertyValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return !facts.Enterable().Hold(*real);
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    // A code of no choice counts as one of those that are, and fails nothing.
    return whole != nullptr && facts.codes.empty() && !facts.Enterable().Hold(*whole);
}

/// A current limit plays a part for a starter that has one.
bool Matters(const PropertyFacts& facts, const Load& load) {
    const auto* motor = dynamic_cast<const CMtrLoad*>(&load);
    return motor == nullptr || facts.name != "SolidStateCurrentLimit" ||
           motor->StartingMethod() == starting_method::kSolidState;
}

}  // namespace

std::string OddMembers(const Load& load) {
    std::string words;
    for (const Property<Load>& property : LoadProperties(load.LoadType())) {
        const PropertyFacts& facts = property.facts;
        if (!Exists(property, load) || !Matters(facts, load)) {
            continue;
        }
        const PropertyValue value = property.get(load);
        if (IsGiven(facts, value) && IsOdd(facts, value)) {
            words += (words.empty() ? "" : " and ") + std::string(facts.words);
        }
    }
    return words;
}

}  // namespace genvara
