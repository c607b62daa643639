#include "LoadForms.h"

#include <algorithm>
#include <array>
#include <memory>

#include "MakeLoadForm.h"
#include "PlatformServices.h"
#include "frmAirCondLoad.h"
#include "frmChargerLoad.h"
#include "frmLightLoad.h"
#include "frmMedLoad.h"
#include "frmMiscLoad.h"
#include "frmMtrLoad.h"
#include "frmOfficeLoad.h"
#include "frmUPSLoad.h"
#include "frmVFDLoad.h"

namespace genvara {
namespace {

template <typename Form>
std::unique_ptr<LoadForm> Make(const LoadFormServices& services) {
    return std::make_unique<Form>(services);
}

struct FormOfKind {
    std::int32_t loadType;
    std::unique_ptr<LoadForm> (*make)(const LoadFormServices& services);
};

constexpr std::array kForms{
    FormOfKind{load_type::kAirConditioning, Make<frmAirCondLoad>},
    FormOfKind{load_type::kBatteryCharger, Make<frmChargerLoad>},
    FormOfKind{load_type::kLighting, Make<frmLightLoad>},
    FormOfKind{load_type::kMedicalImaging, Make<frmMedLoad>},
    FormOfKind{load_type::kMiscellaneous, Make<frmMiscLoad>},
    FormOfKind{load_type::kMotor, Make<frmMtrLoad>},
    FormOfKind{load_type::kOffice, Make<frmOfficeLoad>},
    FormOfKind{load_type::kUPS, Make<frmUPSLoad>},
    FormOfKind{load_type::kVFD, Make<frmVFDLoad>},
};
static_assert(kForms.size() == load_type::kCount, "a form for each kind");

/// The form of a kind; null, behind a message, where there is none.
std::unique_ptr<LoadForm> RequireForm(std::int32_t loadType, const LoadFormServices& services) {
    std::unique_ptr<LoadForm> form = MakeLoadForm(loadType, services);
    if (!form) {
        services.platform.ShowMessage(
            services.owner,
            {.text = "Load not implemented.", .icon = MessageIcon::Information, .title = "DEBUG"});
    }
    return form;
}

}  // namespace

std::unique_ptr<LoadForm> MakeLoadForm(std::int32_t loadType, const LoadFormServices& services) {
    const auto* const form = std::ranges::find(kForms, loadType, &FormOfKind::loadType);
    return form == kForms.end() ? nullptr : form->make(services);
}

void DisplayNewLoadInputForm(std::int32_t loadType, const LoadFormServices& services) {
    if (const auto form = RequireForm(loadType, services)) {
        form->exec();
    }
}

void EditLoad(Load& load, std::int32_t stepNumber, const LoadFormServices& services) {
    if (const auto form = RequireForm(load.LoadType(), services)) {
        form->CurrentLoad(load, stepNumber);
        form->exec();
    }
}

}  // namespace genvara
