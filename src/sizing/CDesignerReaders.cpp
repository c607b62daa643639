#include <cstddef>

#include "CDesigner.h"
#include "LanguageErrors.h"

namespace genvara {
namespace {

template <typename Record>
const Record& At(const std::vector<Record>& list, std::int32_t index, std::string_view reader) {
    if (index < 0 || static_cast<std::size_t>(index) >= list.size()) {
        RaiseSubscriptOutOfRange(reader);
    }
    return list[static_cast<std::size_t>(index)];
}

}  // namespace

const ChosenSet& CDesigner::Chosen(std::int32_t index, std::string_view reader) const {
    return At(m_chosen, index, reader);
}

const RejectedSet& CDesigner::Rejected(std::int32_t index, std::string_view reader) const {
    return At(m_rejected, index, reader);
}

const std::string& CDesigner::SetModelNum(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetModelNum").ModelNum;
}

const std::string& CDesigner::SetEngineNum(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetEngineNum").EngineNum;
}

const std::string& CDesigner::SetAltNum(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetAltNum").AltNum;
}

std::int32_t CDesigner::SetFuelType(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetFuelType").FuelType;
}

double CDesigner::SetNominalRating(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetNominalRating").NominalRating;
}

double CDesigner::SetDeratedRating(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetDeratedRating").DeratedRating;
}

double CDesigner::SetStartKVA35(std::int32_t index) const {
    return Chosen(index, "CDesigner::SetStartKVA35").StartKVA35;
}

double CDesigner::MaxStepVoltDip(std::int32_t index) const {
    return Chosen(index, "CDesigner::MaxStepVoltDip").MaxStepVoltDip;
}

double CDesigner::MaxStepFreqDip(std::int32_t index) const {
    return Chosen(index, "CDesigner::MaxStepFreqDip").MaxStepFreqDip;
}

double CDesigner::MaxStepVTHD(std::int32_t index) const {
    return Chosen(index, "CDesigner::MaxStepVTHD").MaxStepVTHD;
}

std::vector<double> CDesigner::VoltageDips(std::int32_t index) const {
    return Chosen(index, "CDesigner::VoltageDips").VoltageDips;
}

std::vector<double> CDesigner::FreqDips(std::int32_t index) const {
    return Chosen(index, "CDesigner::FreqDips").FreqDips;
}

bool CDesigner::FreqDipAvail(std::int32_t index) const {
    return Chosen(index, "CDesigner::FreqDipAvail").FreqDipAvail;
}

std::vector<double> CDesigner::StepVTHD_A(std::int32_t index) const {
    return Chosen(index, "CDesigner::StepVTHD_A").StepVTHD_A;
}

std::vector<double> CDesigner::StepVTHD_B(std::int32_t index) const {
    return Chosen(index, "CDesigner::StepVTHD_B").StepVTHD_B;
}

std::vector<double> CDesigner::StepVTHD_C(std::int32_t index) const {
    return Chosen(index, "CDesigner::StepVTHD_C").StepVTHD_C;
}

const std::string& CDesigner::SetModelNumRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetModelNumRej").ModelNum;
}

const std::string& CDesigner::SetEngineNumRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetEngineNumRej").EngineNum;
}

const std::string& CDesigner::SetAltNumRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetAltNumRej").AltNum;
}

std::int32_t CDesigner::SetFuelTypeRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetFuelTypeRej").FuelType;
}

double CDesigner::SetNominalRatingRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetNominalRatingRej").NominalRating;
}

double CDesigner::SetDeratedRatingRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetDeratedRatingRej").DeratedRating;
}

double CDesigner::SetStartKVA35Rej(std::int32_t index) const {
    return Rejected(index, "CDesigner::SetStartKVA35Rej").StartKVA35;
}

double CDesigner::MaxStepVoltDipRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::MaxStepVoltDipRej").MaxStepVoltDip;
}

double CDesigner::MaxStepFreqDipRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::MaxStepFreqDipRej").MaxStepFreqDip;
}

double CDesigner::MaxStepVTHDRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::MaxStepVTHDRej").MaxStepVTHD;
}

std::vector<double> CDesigner::VoltageDipsRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::VoltageDipsRej").VoltageDips;
}

std::vector<double> CDesigner::FreqDipsRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::FreqDipsRej").FreqDips;
}

bool CDesigner::FreqDipAvailRej(std::int32_t index) const {
    return Rejected(index, "CDesigner::FreqDipAvailRej").FreqDipAvail;
}

std::vector<double> CDesigner::StepVTHD_A_Rej(std::int32_t index) const {
    return Rejected(index, "CDesigner::StepVTHD_A_Rej").StepVTHD_A;
}

std::vector<double> CDesigner::StepVTHD_B_Rej(std::int32_t index) const {
    return Rejected(index, "CDesigner::StepVTHD_B_Rej").StepVTHD_B;
}

std::vector<double> CDesigner::StepVTHD_C_Rej(std::int32_t index) const {
    return Rejected(index, "CDesigner::StepVTHD_C_Rej").StepVTHD_C;
}

std::int32_t CDesigner::RejectionReason(std::int32_t index) const {
    return Rejected(index, "CDesigner::RejectionReason").RejectionReason;
}

std::vector<StepVerdicts> CDesigner::Verdicts(std::int32_t index) const {
    return VerdictsOf(Chosen(index, "CDesigner::Verdicts"), m_figures, m_requirements);
}

std::vector<StepVerdicts> CDesigner::VerdictsRej(std::int32_t index) const {
    return VerdictsOf(Rejected(index, "CDesigner::VerdictsRej"), m_figures, m_requirements);
}

}  // namespace genvara
