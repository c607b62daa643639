#include "LoadFactory.h"

#include <cstddef>
#include <type_traits>

#include "CAirCondLoad.h"
#include "CBatChrgLoad.h"
#include "CLightLoad.h"
#include "CMedEquipLoad.h"
#include "CMiscLoad.h"
#include "CMtrLoad.h"
#include "COfficeLoad.h"
#include "CUPSLoad.h"
#include "CVFDLoad.h"

namespace genvara {
namespace {

template <typename Kind>
std::unique_ptr<Load> Make(const MotorConversions& motors) {
    if constexpr (std::is_constructible_v<Kind, const MotorConversions&>) {
        return std::make_unique<Kind>(motors);
    } else {
        return std::make_unique<Kind>();
    }
}

constexpr std::array<LoadKindRow, load_type::kCount> kKinds{{
    {load_type::kAirConditioning, "AirConditioner", "CAirCondLoad", Make<CAirCondLoad>},
    {load_type::kBatteryCharger, "BatteryCharger", "CBatChrgLoad", Make<CBatChrgLoad>},
    {load_type::kLighting, "Lighting", "CLightLoad", Make<CLightLoad>},
    {load_type::kMedicalImaging, "MedicalImaging", "CMedEquipLoad", Make<CMedEquipLoad>},
    {load_type::kMiscellaneous, "Miscellaneous", "CMiscLoad", Make<CMiscLoad>},
    {load_type::kMotor, "Motor", "CMtrLoad", Make<CMtrLoad>},
    {load_type::kOffice, "Office", "COfficeLoad", Make<COfficeLoad>},
    {load_type::kUPS, "UPS", "CUPSLoad", Make<CUPSLoad>},
    {load_type::kVFD, "Drive", "CVFDLoad", Make<CVFDLoad>},
}};
static_assert(kKinds.back().make != nullptr, "a row for each kind");

}  // namespace

std::span<const LoadKindRow> LoadKindRows() noexcept {
    return kKinds;
}

const LoadKindRow* FindLoadKindRow(std::int32_t loadType) noexcept {
    const bool known = loadType >= 0 && loadType < static_cast<std::int32_t>(kKinds.size());
    return known ? &kKinds[static_cast<std::size_t>(loadType)] : nullptr;
}

std::unique_ptr<Load> MakeLoad(std::int32_t loadType, const MotorConversions& motors) {
    const LoadKindRow* kind = FindLoadKindRow(loadType);
    return kind != nullptr ? kind->make(motors) : nullptr;
}

}  // namespace genvara
