#include "StepDistortion.h"

#include <cstddef>

#include "LanguageErrors.h"

namespace genvara {
namespace {

constexpr std::int32_t kWyeConnection = 1;
/// Line-to-line volts up to which an alternator's windings are in parallel.
constexpr double kLowVoltage = 240.0;

// The fixed scaling: a winding wound for 208 V that delivers 240 V.
constexpr double kFixedToVolts = 208.0;
constexpr double kFixedFromVolts = 240.0;

// Bounds and figures of the empirical filter corrections: shares, impedances per unit, distortion in percent.
constexpr double kHalf = 0.5;
constexpr double kBallastImpedance = 0.08;
constexpr double kLowImpedanceBallastVTHD = 10.4;
constexpr double kLowImpedanceBallastSlope = 8.0;
constexpr double kLeastTwelvePulseShare = 0.03;
constexpr double kHighImpedanceBallastVTHD = 8.5;
constexpr double kHighImpedanceBallastSlope = 4.0;

double Square(double value) {
    return value * value;
}

}  // namespace

bool HasDistortionModel(std::int32_t connectCode) noexcept {
    return connectCode == kFixedScalingConnection || connectCode == kWyeConnection;
}

std::int32_t VoltageConnectionFactor(double volts) noexcept {
    return volts > kLowVoltage ? 1 : 2;
}

double ScaleReactance(double reactance, double fromVolts, double toVolts, bool fixed) {
    if (fixed) {
        return reactance * Square(kFixedFromVolts / kFixedToVolts);
    }
    const double from = VoltageConnectionFactor(fromVolts);
    const double to = VoltageConnectionFactor(toVolts);
    return reactance * Square(from / to) * Square(Quotient(fromVolts, toVolts, "CDesigner::ScaleReactance"));
}

void AdjustFilteredVTHD(double& vthd, double ballastShare, double filteredShare, double impedance) noexcept {
    if ((ballastShare <= kHalf || impedance < kBallastImpedance) && filteredShare > kHalf) {
        vthd -= (filteredShare - kHalf) / kHalf;
    }
    if (ballastShare > kHalf && impedance < kBallastImpedance) {
        vthd = kLowImpedanceBallastVTHD - (1.0 - ballastShare) * kLowImpedanceBallastSlope;
    }
}

StepDistortion::StepDistortion(const StepFigures& figures) {
    try {
        LoadPowers(figures);
    } catch (const RaisedError& refusal) {
        m_refusedPower = refusal;  // it strikes when a set is judged, not before
    }
    FindShares(figures);
}

std::array<double, 3> StepDistortion::On(double generatorPower, double generatorImpedance) {
    m_calculator.GenPower(generatorPower);
    m_calculator.GenImpedance(generatorImpedance);
    if (m_refusedPower) {
        throw RaisedError(*m_refusedPower);
    }
    std::array<double, 3> vthd{};
    m_calculator.VTHD(vthd);
    for (std::size_t p = 0; p < vthd.size(); ++p) {
        if (m_shares[p]) {
            Correct(vthd[p], *m_shares[p], m_calculator.HarmonicImpedance(static_cast<std::int32_t>(p)));
        }
        vthd[p] = vthd[p] > 0.0 ? vthd[p] : 0.0;
    }
    return vthd;
}

void StepDistortion::LoadPowers(const StepFigures& figures) {
    m_calculator.RectifierPwr6P(figures.rect6P);
    m_calculator.RectifierPwr12P(figures.rect12P);
    m_calculator.PhaseCtrlPwr6P(figures.phaseCtrl6P);
    for (std::int32_t i = 0; i < 3; ++i) {
        m_calculator.SinglePhaseRectPwr(i, figures.rect1P[static_cast<std::size_t>(i)]);
    }
    for (std::int32_t i = 0; i < 3; ++i) {
        m_calculator.SinglePhaseElecBallastPwr(i, figures.ballastElec[static_cast<std::size_t>(i)]);
    }
    for (std::int32_t i = 0; i < 3; ++i) {
        m_calculator.SinglePhaseMagBallastPwr(i, figures.ballastMag[static_cast<std::size_t>(i)]);
    }
}

void StepDistortion::FindShares(const StepFigures& figures) {
    const double six = figures.rect6PFiltered;
    const double twelve = figures.rect12PFiltered;
    if (six > 0.0) {
        m_filters = twelve > 0.0 ? Filters::Both : Filters::None;
        m_filters = twelve == 0.0 ? Filters::SixPulse : m_filters;
    } else if (six == 0.0 && twelve > 0.0) {
        m_filters = Filters::TwelvePulse;
    }
    for (std::size_t p = 0; p < m_shares.size(); ++p) {
        const double nonLinear = figures.nonLinear[p];
        if (nonLinear > 0.0) {
            m_shares[p] = {.ballast = figures.ballast[p] / nonLinear,
                           .twelvePulse = (figures.rect12P / 3.0) / nonLinear,
                           .sixFiltered = (six / 3.0 + six / 3.0) / nonLinear,
                           .twelveFiltered = (twelve / 3.0) / nonLinear};
        }
    }
}

void StepDistortion::Correct(double& vthd, const PhaseShares& phase, double impedance) const {
    if (m_filters == Filters::SixPulse || m_filters == Filters::TwelvePulse) {
        CorrectForFilters(vthd, phase, impedance);
    }
    CorrectForBallasts(vthd, phase, impedance);
    if (m_filters == Filters::Both) {
        CorrectForFilters(vthd, phase, impedance);
    }
}

void StepDistortion::CorrectForFilters(double& vthd, const PhaseShares& phase, double impedance) const {
    switch (m_filters) {
        case Filters::SixPulse:
            vthd -= phase.sixFiltered;
            break;
        case Filters::TwelvePulse:
            AdjustFilteredVTHD(vthd, phase.ballast, phase.twelveFiltered, impedance);
            break;
        case Filters::Both:
            vthd = vthd - phase.sixFiltered - phase.twelveFiltered;
            break;
        case Filters::None:
            break;
    }
}

void StepDistortion::CorrectForBallasts(double& vthd, const PhaseShares& phase, double impedance) noexcept {
    const bool mostlyBallasts =
        phase.ballast > kHalf && phase.twelvePulse < kHalf && phase.twelvePulse > kLeastTwelvePulseShare;
    if (mostlyBallasts && impedance > kBallastImpedance && vthd < kLowImpedanceBallastVTHD) {
        vthd = kHighImpedanceBallastVTHD - (1.0 - phase.ballast) * kHighImpedanceBallastSlope;
    }
}

}  // namespace genvara
