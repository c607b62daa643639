#include "LoadKinds.h"

#include <algorithm>

namespace genvara {
namespace {

using form_strings::kEvenlyDistributed;
using form_strings::kThreePhase;

constexpr std::string_view kBlank = "Parameter can not be blank.";
constexpr std::string_view kNoNumber = "Parameter must numeric.";

/// In the order of the codes.
constexpr std::array<LoadKind, load_type::kCount> kKinds{{
    {load_type::kAirConditioning, "frmAirCondLoad", "Air Conditioning Load", "<Air Conditioner>", kThreePhase,
     "The A/C rating must be numeric.", "The A/C rating must be numeric."},
    {load_type::kBatteryCharger, "frmChargerLoad", "Battery Charger Load", "<Battery Charger>", kThreePhase,
     kBlank, kNoNumber},
    {load_type::kLighting, "frmLightLoad", "Lighting Load", "<Lighting>", kEvenlyDistributed, kBlank,
     kNoNumber},
    {load_type::kMedicalImaging, "frmMedLoad", "Medical Imaging Load", "<Medical Imaging>", kThreePhase,
     kBlank, kNoNumber},
    {load_type::kMiscellaneous, "frmMiscLoad", "Misc. Linear Load", "<Misc. Load>", kThreePhase,
     "A numeric value must be entered.", "A numeric value must be entered."},
    {load_type::kMotor, "frmMtrLoad", "Motor Load", "<Motor>", kThreePhase, "Value can not be blank.",
     "Value can not be blank."},
    {load_type::kOffice, "frmOfficeLoad", "Office Equipment", "<Office Equip.>", kEvenlyDistributed,
     "Parameter must be numeric.", "Parameter must be numeric."},
    {load_type::kUPS, "frmUPSLoad", "UPS Load", "<UPS>", kThreePhase, kBlank, kNoNumber},
    {load_type::kVFD, "frmVFDLoad", "VFD Load", "<VFD>", kThreePhase, kBlank, kNoNumber},
}};
static_assert(!kKinds.back().form.empty(), "a row for each kind");

}  // namespace

const LoadKind* FindLoadKind(std::int32_t loadType) noexcept {
    const auto* const found = std::ranges::find(kKinds, loadType, &LoadKind::loadType);
    return found == kKinds.end() ? nullptr : found;
}

}  // namespace genvara
