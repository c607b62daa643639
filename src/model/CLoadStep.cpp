#include "CLoadStep.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "CMedEquipLoad.h"
#include "CMtrLoad.h"
#include "ErrorNumbers.h"
#include "LanguageErrors.h"
#include "LinearPower.h"
#include "RaisedError.h"
#include "RangeCheck.h"

namespace genvara {
namespace {

constexpr std::int32_t kNoMedicalDip = 100;  // percent

/// One unit's share of a figure on a phase: a balanced load puts a third on each.
double Share(const Load& load, double figure, std::int32_t phase) {
    if (phase == 0) {
        return figure;
    }
    if (phase < 1 || phase > 3) {
        return 0.0;
    }
    if (load.Phases() == 0) {
        return figure / 3.0;
    }
    return load.Phases() == phase ? figure : 0.0;
}

/// Sum over the loads of quantity times the share of a member on a phase.
template <typename Member>
double TotalOf(const CLoadStep& step, std::int32_t phase, std::string_view source, Member member) {
    double total = 0.0;
    for (const Load& load : step) {
        total += load.Quantity() * Share(load, member(load), phase);
    }
    return Finite(total, source);
}

/// Sum over the loads of a harmonic member as it stands.
template <typename Member>
double HarmonicTotalOf(const CLoadStep& step, std::string_view source, Member member) {
    double total = 0.0;
    for (const Load& load : step) {
        total += member(load);
    }
    return Finite(total, source);
}

double RootOfSquares(double imaginary, double real, std::string_view source) {
    return SquareRoot(imaginary * imaginary + real * real, source);
}

/// The question whether a load has an ID.
auto HasID(std::int32_t id) {
    return [id](const Load& load) { return load.ID() == id; };
}

const CMtrLoad* AsMotor(const Load& load) {
    return load.LoadType() == load_type::kMotor ? dynamic_cast<const CMtrLoad*>(&load) : nullptr;
}

/// True if a motor of the step satisfies the question.
template <typename Question>
bool HasMotor(const CLoadStep& step, Question question) {
    return std::any_of(step.begin(), step.end(), [&](const Load& load) {
        const CMtrLoad* motor = AsMotor(load);
        return motor != nullptr && question(*motor);
    });
}

}  // namespace

std::int32_t CLoadStep::Room() const noexcept {
    return kMostLoadsOfStep - m_nextLoadId;
}

void CLoadStep::RequireRoom() const {
    if (!HasRoom()) {
        throw RaisedError(errors::FromBase(3), "CLoadStep::AddLoad",
                          "Maximum number of loads per step exceeded.");
    }
}

std::int32_t CLoadStep::AddLoad(std::unique_ptr<Load> load) {
    RequireRoom();
    load->ID(m_nextLoadId);
    m_loads.Insert(m_loads.Size(), std::move(load));
    return m_nextLoadId++;
}

std::unique_ptr<Load> CLoadStep::TakeLoad(std::int32_t id) {
    std::unique_ptr<Load> load = m_loads.Take(HasID(id));
    if (load == nullptr) {
        throw RaisedError(errors::FromBase(2), "CLoadStep::DeleteLoad",
                          "The load requested could not be found.");
    }
    return load;
}

std::unique_ptr<Load> CLoadStep::ExchangeLoad(std::int32_t position, std::unique_ptr<Load> load) {
    const auto index = static_cast<std::size_t>(position - 1);
    load->ID(m_loads[index].ID());
    return m_loads.Exchange(index, std::move(load));
}

void CLoadStep::DeleteLoad(std::int32_t id) {
    (void)TakeLoad(id);
}

Load* CLoadStep::LoadItem(std::int32_t id) {
    return m_loads.Find(HasID(id));
}

const Load* CLoadStep::LoadItem(std::int32_t id) const {
    return m_loads.Find(HasID(id));
}

void CLoadStep::Description(std::string text) {
    m_description = std::move(text);
}

void CLoadStep::MaxVoltageDipOverride(std::int32_t percent) {
    RequireRange(
        percent, kStepVoltageDip,
        {errors::FromBase(1), "Voltage dip override out of range.", "CLoadStep::MaxVoltageDipOverride"});
    m_maxVoltageDipOverride = percent;
}

bool CLoadStep::HoldsSame(const CLoadStep& other) const {
    return m_description == other.m_description && m_maxVoltageDipOverride == other.m_maxVoltageDipOverride &&
           std::equal(begin(), end(), other.begin(), other.end(),
                      [](const Load& left, const Load& right) { return left.HoldsSame(right); });
}

bool CLoadStep::IsSameMoment(const CLoadStep& other) const {
    return m_stepId == other.m_stepId && m_nextLoadId == other.m_nextLoadId &&
           std::equal(begin(), end(), other.begin(), other.end(),
                      [](const Load& left, const Load& right) { return left.ID() == right.ID(); }) &&
           HoldsSame(other);
}

std::vector<std::string> CLoadStep::GetProps() const {
    return {PropertyRow("Step ID", fmt::format("{}", m_stepId)),
            PropertyRow("Description", m_description),
            PropertyRow("Voltage Dip Override", fmt::format("{}", m_maxVoltageDipOverride)),
            PropertyRow("Running kW", KiloText(TotalRunningRealPower(0))),
            PropertyRow("Running kVA", KiloText(TotalRunningApparentPower(0))),
            PropertyRow("Starting kW", KiloText(TotalStartingRealPower(0))),
            PropertyRow("Starting kVA", KiloText(TotalStartingApparentPower(0)))};
}

double CLoadStep::TotalRunningRealPower(std::int32_t phase) const {
    return TotalOf(*this, phase, "CLoadStep::TotalRunningRealPower",
                   [](const Load& load) { return load.RunningRealPower(); });
}

double CLoadStep::TotalRunningImgPower(std::int32_t phase) const {
    return TotalOf(*this, phase, "CLoadStep::TotalRunningImgPower",
                   [](const Load& load) { return load.RunningImgPower(); });
}

double CLoadStep::TotalRunningApparentPower(std::int32_t phase) const {
    return RootOfSquares(TotalRunningImgPower(phase), TotalRunningRealPower(phase),
                         "CLoadStep::TotalRunningApparentPower");
}

double CLoadStep::TotalStartingRealPower(std::int32_t phase) const {
    return TotalOf(*this, phase, "CLoadStep::TotalStartingRealPower",
                   [](const Load& load) { return load.StartingRealPower(); });
}

double CLoadStep::TotalStartingImgPower(std::int32_t phase) const {
    return TotalOf(*this, phase, "CLoadStep::TotalStartingImgPower",
                   [](const Load& load) { return load.StartingImgPower(); });
}

double CLoadStep::TotalStartingApparentPower(std::int32_t phase) const {
    return RootOfSquares(TotalStartingImgPower(phase), TotalStartingRealPower(phase),
                         "CLoadStep::TotalStartingApparentPower");
}

double CLoadStep::TotalSixPulseRectPower() const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalSixPulseRectPower",
                           [](const Load& load) { return load.ThreePhaseSixPulseRectPower(); });
}

double CLoadStep::TotalTwelvePulseRectPower() const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalTwelvePulseRectPower",
                           [](const Load& load) { return load.ThreePhaseTwelvePulseRectPower(); });
}

double CLoadStep::TotalSixPulseRectFilteredPower() const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalSixPulseRectFilteredPower",
                           [](const Load& load) { return load.ThreePhaseSixPulseRectFilteredPower(); });
}

double CLoadStep::TotalTwelvePulseRectFilteredPower() const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalTwelvePulseRectFilteredPower",
                           [](const Load& load) { return load.ThreePhaseTwelvePulseRectFilteredPower(); });
}

double CLoadStep::TotalSixPulsePPCPower() const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalSixPulsePPCPower",
                           [](const Load& load) { return load.ThreePhaseSixPulsePPCRectPower(); });
}

double CLoadStep::TotalSinglePhaseRectPower(std::int32_t phase) const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalSinglePhaseRectPower",
                           [phase](const Load& load) { return load.SinglePhaseRectPower(phase); });
}

double CLoadStep::TotalElectBallastRealPower(std::int32_t phase) const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalElectBallastRealPower",
                           [phase](const Load& load) { return load.SinglePhaseElectBallastPower(phase); });
}

double CLoadStep::TotalMagBallastRealPower(std::int32_t phase) const {
    return HarmonicTotalOf(*this, "CLoadStep::TotalMagBallastRealPower",
                           [phase](const Load& load) { return load.SinglePhaseMagBallastPower(phase); });
}

bool CLoadStep::HasFirePump() const {
    return HasMotor(*this, [](const CMtrLoad& motor) { return motor.FirePump(); });
}

bool CLoadStep::HasLoadedMotor() const {
    return HasMotor(*this, [](const CMtrLoad& motor) { return motor.StartsLoaded(); });
}

bool CLoadStep::HasMedicalImageLoad() const {
    return m_loads.Find([](const Load& load) { return load.LoadType() == load_type::kMedicalImaging; }) !=
           nullptr;
}

bool CLoadStep::HasLoadedMotorWithTap65() const {
    return HasMotor(*this, [](const CMtrLoad& motor) {
        return motor.StartingMethod() == starting_method::kAutotransformer65 && motor.StartsLoaded();
    });
}

std::int32_t CLoadStep::GetSmallestMedicalDip() const {
    std::int32_t smallest = kNoMedicalDip;
    for (const Load& load : m_loads) {
        if (const auto* medical = dynamic_cast<const CMedEquipLoad*>(&load)) {
            smallest = std::min(smallest, medical->MaxPeakDemandVoltDip());
        }
    }
    return smallest;
}

}  // namespace genvara
