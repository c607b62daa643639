#include "CMiscLoad.h"

#include "Kilo.h"
#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {

std::string CMiscLoad::Summary() const {
    return RenderFixed(m_runningRealPower / kPerKilo, 2) + " kW misc. load";
}

void CMiscLoad::RunningRealPower(double watts) {
    RequireRange(watts, linear_limits::kRealPower,
                 {17, "Running real power out of range", "CMiscLoad::RunningRealPower"});
    m_runningRealPower = watts;
}

void CMiscLoad::RunningPowerFactor(double perUnit) {
    RequireRange(perUnit, linear_limits::kPowerFactor,
                 {16, "Running power factor out of range", "CMiscLoad::RunningPowerFactor"});
    m_runningPowerFactor = perUnit;
}

double CMiscLoad::RunningAppPower() const {
    return ApparentPower(m_runningRealPower, m_runningPowerFactor, "CMiscLoad::RunningAppPower");
}

double CMiscLoad::RunningImgPower() const {
    return ImaginaryOfReal(m_runningRealPower, m_runningPowerFactor, "CMiscLoad::RunningImgPower");
}

std::vector<std::string> CMiscLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Running kW", KiloText(m_runningRealPower)));
    rows.push_back(PropertyRow("Running PF", RenderFixed(m_runningPowerFactor, 2)));
    return rows;
}

bool CMiscLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
