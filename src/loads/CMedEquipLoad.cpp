#include "CMedEquipLoad.h"

#include "LinearPower.h"

namespace genvara {

double CMedEquipLoad::RunningRealPower() const {
    return Finite(m_contVA * m_contPowerFactor, "CMedEquipLoad::RunningRealPower");
}

double CMedEquipLoad::StartingRealPower() const {
    return Finite(m_peakVA * m_peakPowerFactor, "CMedEquipLoad::StartingRealPower");
}

double CMedEquipLoad::RunningImgPower() const {
    return ImaginaryOfApparent(m_contVA, m_contPowerFactor, "CMedEquipLoad::RunningImgPower");
}

double CMedEquipLoad::StartingImgPower() const {
    return ImaginaryOfApparent(m_peakVA, m_peakPowerFactor, "CMedEquipLoad::StartingImgPower");
}

std::vector<std::string> CMedEquipLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps();
    rows.push_back(PropertyRow("Peak kVA", KiloText(m_peakVA)));
    rows.push_back(PropertyRow("Cont. kVA", KiloText(m_contVA)));
    rows.push_back(PropertyRow("Peak PF", RenderPlain(m_peakPowerFactor)));
    rows.push_back(PropertyRow("Cont. PF", RenderPlain(m_contPowerFactor)));
    rows.push_back(PropertyRow("Max. Peak Demand Vdip", PercentText(m_maxPeakDemandVoltDip)));
    return rows;
}

bool CMedEquipLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
