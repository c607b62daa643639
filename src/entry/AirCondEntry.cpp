#include "AirCondEntry.h"

#include <algorithm>

#include "ErrorNumbers.h"
#include "LoadKinds.h"
#include "LoadMessages.h"
#include "MemberBounds.h"
#include "StringTable.h"

namespace genvara {
namespace {

/// What becomes of a failure behind the quantity.
struct SizeFailure {
    std::int32_t number;
    std::string_view text;
};

constexpr std::string_view kOutOfRange = "The A/C rating is out of range.";
constexpr std::string_view kNoMessage;

constexpr std::array<SizeFailure, 6> kSizeFailures{
    {{errors::kTypeMismatch, "The A/C rating must be numeric."},
     {15, kOutOfRange},   // horsepower
     {20, kOutOfRange},   // BTU/hr
     {21, kOutOfRange},   // tons
     {17, kNoMessage},    // running real power
     {18, kNoMessage}}};  // running and starting apparent power

}  // namespace

const SizeMethod* FindSizeMethod(std::int32_t code) noexcept {
    const auto* const found = std::ranges::find(kSizeMethods, code, &SizeMethod::code);
    return found == kSizeMethods.end() ? nullptr : found;
}

NumberBounds SizeBounds(const SizeMethod& method) {
    NumberBounds bounds = LoadBounds(load_type::kAirConditioning, method.member);
    bounds.name = StringTable::Text(method.caption);
    return bounds;
}

double StoredSize(const CAirCondLoad& load, const SizeMethod& method) noexcept {
    switch (method.code) {
        case aircond_entry::kBTU:
            return load.BTU();
        case aircond_entry::kTonnage:
            return load.Tonnage();
        default:
            return load.HP();
    }
}

std::string AirCondFailureText(bool ofQuantity, const RaisedError& failure) {
    if (ofQuantity) {
        return "The quantity must be a positive integer.";
    }
    const auto* const known = std::ranges::find(kSizeFailures, failure.Number(), &SizeFailure::number);
    return known == kSizeFailures.end()
               ? StoreFailureText(*FindLoadKind(load_type::kAirConditioning), failure, {})
               : std::string(known->text);
}

}  // namespace genvara
