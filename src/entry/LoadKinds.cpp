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
    {load_type::kAirConditioning, 600, "airconditioning", "frmAirCondLoad", "Air Conditioning Load",
     "<Air Conditioner>", kThreePhase, "The A/C rating must be numeric.", "The A/C rating must be numeric."},
    {load_type::kBatteryCharger, 601, "charger", "frmChargerLoad", "Battery Charger Load",
     "<Battery Charger>", kThreePhase, kBlank, kNoNumber},
    {load_type::kLighting, 602, "lighting", "frmLightLoad", "Lighting Load", "<Lighting>", kEvenlyDistributed,
     kBlank, kNoNumber},
    {load_type::kMedicalImaging, 603, "medical", "frmMedLoad", "Medical Imaging Load", "<Medical Imaging>",
     kThreePhase, kBlank, kNoNumber},
    {load_type::kMiscellaneous, 604, "misc", "frmMiscLoad", "Misc. Linear Load", "<Misc. Load>", kThreePhase,
     "A numeric value must be entered.", "A numeric value must be entered."},
    {load_type::kMotor, 605, "motor", "frmMtrLoad", "Motor Load", "<Motor>", kThreePhase,
     "Value can not be blank.", "Value can not be blank."},
    {load_type::kOffice, 608, "office", "frmOfficeLoad", "Office Equipment", "<Office Equip.>",
     kEvenlyDistributed, "Parameter must be numeric.", "Parameter must be numeric."},
    {load_type::kUPS, 606, "ups", "frmUPSLoad", "UPS Load", "<UPS>", kThreePhase, kBlank, kNoNumber},
    {load_type::kVFD, 607, "vfd", "frmVFDLoad", "VFD Load", "<VFD>", kThreePhase, kBlank, kNoNumber},
}};

constexpr bool StandInOrder() {
    std::int32_t code = 0;
    return std::ranges::all_of(kKinds, [&](const LoadKind& kind) { return kind.loadType == code++; });
}
static_assert(StandInOrder(), "a row for each kind");

}  // namespace

std::span<const LoadKind> LoadKinds() noexcept {
    return kKinds;
}

const LoadKind* FindLoadKind(std::int32_t loadType) noexcept {
    const auto* const found = std::ranges::find(kKinds, loadType, &LoadKind::loadType);
    return found == kKinds.end() ? nullptr : found;
}

}  // namespace genvara
