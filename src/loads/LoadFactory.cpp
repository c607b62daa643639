#include "LoadFactory.h"

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

std::unique_ptr<Load> MakeLoad(std::int32_t loadType, const MotorConversions& motors) {
    switch (loadType) {
        case load_type::kAirConditioning:
            return std::make_unique<CAirCondLoad>();
        case load_type::kBatteryCharger:
            return std::make_unique<CBatChrgLoad>();
        case load_type::kLighting:
            return std::make_unique<CLightLoad>();
        case load_type::kMedicalImaging:
            return std::make_unique<CMedEquipLoad>();
        case load_type::kMiscellaneous:
            return std::make_unique<CMiscLoad>();
        case load_type::kMotor:
            return std::make_unique<CMtrLoad>();
        case load_type::kOffice:
            return std::make_unique<COfficeLoad>();
        case load_type::kUPS:
            return std::make_unique<CUPSLoad>();
        case load_type::kVFD:
            return std::make_unique<CVFDLoad>(motors);
        default:
            return nullptr;
    }
}

}  // namespace genvara
