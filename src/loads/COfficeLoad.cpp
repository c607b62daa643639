#include "COfficeLoad.h"

#include "LinearPower.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

// Allowances of one machine [W], and the power factor of all of them.
constexpr double kPCPower = 300.0;
constexpr double kPrinterPower = 600.0;
constexpr double kFaxPower = 600.0;
constexpr double kCopierPower = 1200.0;
constexpr double kPowerFactor = 0.8;

void RequireCount(std::int32_t count, std::string_view description, std::string_view source) {
    if (count < 0) {
        throw RaisedError(28, std::string(source), std::string(description));
    }
}

}  // namespace

std::string COfficeLoad::Summary() const {
    return std::string(Phases() == 0 ? "Evenly Distributed, " : "1 phase, ") + "Office Equipment";
}

void COfficeLoad::NumPCs(std::int32_t count) {
    RequireCount(count, "Negative number of PCs", "COfficeLoad::NumPCs");
    m_numPCs = count;
}

void COfficeLoad::NumPrinters(std::int32_t count) {
    RequireCount(count, "Negative number of printers", "COfficeLoad::NumPrinters");
    m_numPrinters = count;
}

void COfficeLoad::NumFaxes(std::int32_t count) {
    RequireCount(count, "Negative number of fax machines", "COfficeLoad::NumFaxes");
    m_numFaxes = count;
}

void COfficeLoad::NumCopiers(std::int32_t count) {
    RequireCount(count, "Negative number of copiers", "COfficeLoad::NumCopiers");
    m_numCopiers = count;
}

double COfficeLoad::RunningRealPower() const {
    return kPrinterPower * m_numPrinters + kPCPower * m_numPCs + kFaxPower * m_numFaxes +
           kCopierPower * m_numCopiers;
}

double COfficeLoad::RunningAppPower() const {
    return RunningRealPower() / kPowerFactor;
}

double COfficeLoad::RunningImgPower() const {
    return ImaginaryOfReal(RunningRealPower(), kPowerFactor, "COfficeLoad::RunningImgPower");
}

double COfficeLoad::SinglePhaseRectPower(std::int32_t phase) const {
    if (phase == 0) {
        return 0.0;
    }
    if (Phases() == 0) {
        return RunningRealPower() / 3.0;
    }
    return Phases() == phase ? RunningRealPower() : 0.0;
}

std::vector<std::string> COfficeLoad::GetProps() const {
    std::vector<std::string> rows = CommonProps("Even");
    rows.push_back(PropertyRow("PCs", std::to_string(m_numPCs)));
    rows.push_back(PropertyRow("Printers", std::to_string(m_numPrinters)));
    rows.push_back(PropertyRow("Faxes", std::to_string(m_numFaxes)));
    rows.push_back(PropertyRow("Copiers", std::to_string(m_numCopiers)));
    return rows;
}

bool COfficeLoad::HoldsSame(const Load& other) const {
    return SameKind(*this, other);
}

}  // namespace genvara
