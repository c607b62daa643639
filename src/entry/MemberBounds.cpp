#include "MemberBounds.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>

#include "Kilo.h"
#include "Properties.h"

namespace genvara {
namespace {

/// A unit of the model, and what a form has in its place.
struct UnitRow {
    std::string_view unit;
    std::string_view entered;  ///< with its leading blank
    double perEntered = 1.0;   ///< units of the model in one
};
constexpr std::array<UnitRow, 9> kUnits{{{"W", " kW", kPerKilo},
                                         {"VA", " kVA", kPerKilo},
                                         {"hp", " HP"},
                                         {"BTU/hr", " BTU/hr"},
                                         {"tons", " tons"},
                                         {"A", " A"},
                                         {"A DC", " A"},
                                         {"V DC", " V"},
                                         {"%", "%"}}};

/// What forms do of themselves.
struct FormRow {
    std::int32_t loadType;
    std::string_view member;
    bool whole = false;
    int decimals = -1;
};
constexpr std::array<FormRow, 3> kForms{{{load_type::kLighting, "RunningPowerFactor", false, 2},
                                         {load_type::kMiscellaneous, "RunningPowerFactor", false, 2},
                                         {load_type::kUPS, "OutputRating", true}}};

NumberBounds BoundsOf(const PropertyFacts& facts) {
    const Bounds& enterable = facts.Enterable();
    const auto* const unit = std::ranges::find(kUnits, facts.unit, &UnitRow::unit);
    const double per = PerEntryUnit(facts.unit);
    const bool whole = facts.type == PropertyType::Whole;
    const double most =
        whole ? std::numeric_limits<std::int32_t>::max() : std::numeric_limits<double>::infinity();
    return {.least = enterable.least.value_or(0.0) / per,
            .most = enterable.greatest.value_or(most) / per,
            .above = enterable.aboveLeast,
            .whole = whole,
            .unit = unit == kUnits.end() ? std::string() : std::string(unit->entered)};
}

}  // namespace

double PerEntryUnit(std::string_view unit) noexcept {
    const auto* const found = std::ranges::find(kUnits, unit, &UnitRow::unit);
    return found == kUnits.end() ? 1.0 : found->perEntered;
}

NumberBounds LoadBounds(std::int32_t loadType, std::string_view member) {
    NumberBounds bounds = BoundsOf(FindProperty(LoadProperties(loadType), member)->facts);
    const auto* const form = std::ranges::find_if(
        kForms, [&](const FormRow& row) { return row.loadType == loadType && row.member == member; });
    if (form == kForms.end()) {
        return bounds;
    }
    bounds.decimals = form->decimals;
    if (form->whole) {
        // The least whole number above a bound that is refused itself.
        bounds.least += bounds.above ? 1.0 : 0.0;
        bounds.above = false;
        bounds.whole = true;
    }
    return bounds;
}

NumberBounds SiteBounds(std::string_view member) {
    return BoundsOf(FindProperty(PowerSystemProperties(), member)->facts);
}

NumberBounds StepDipBounds(std::int32_t siteDip) {
    NumberBounds bounds = BoundsOf(FindProperty(StepProperties(), "MaxVoltageDipOverride")->facts);
    bounds.most = static_cast<double>(siteDip);
    return bounds;
}

}  // namespace genvara
