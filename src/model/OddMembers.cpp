#include "OddMembers.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "CMtrLoad.h"
#include "Properties.h"

namespace genvara {
namespace {

/// What a member that its record takes with any value can mean.
struct Sense {
    std::string_view name;
    Bounds bounds;
};

constexpr Bounds kShare{0.0, 1.0};
constexpr Bounds kNotNegative{0.0, std::nullopt};

constexpr std::array<Sense, 5> kSenses{{{"StartingPF", kShare},
                                        {"BatteryVoltage", kNotNegative},
                                        {"ChargeCurrent", kNotNegative},
                                        {"RunningAmps", kNotNegative},
                                        {"StartingAmps", kNotNegative}}};

Bounds BoundsOf(const PropertyFacts& facts) {
    const auto* sense = std::ranges::find(kSenses, facts.name, &Sense::name);
    return sense == kSenses.end() ? facts.Enterable() : sense->bounds;
}

bool IsOdd(const PropertyFacts& facts, const PropertyValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return !BoundsOf(facts).Hold(*real);
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    // A code of no choice counts as one of those that are, and fails nothing.
    return whole != nullptr && facts.codes.empty() && !BoundsOf(facts).Hold(*whole);
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
