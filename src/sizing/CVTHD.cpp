#include "CVTHD.h"

#include "ErrorNumbers.h"
#include "LanguageErrors.h"
#include "RaisedError.h"

namespace genvara {
namespace {

constexpr std::size_t kTerms = 15;
using Coefficients = std::array<std::array<double, CVTHD::kImpedances>, kTerms>;

// Fitted coefficients, a row a term of the regression, a column a harmonic impedance of 0.005, 0.01, 0.05
// and 0.1 per unit. Terms, with a the ballast, b the twelve-pulse, c the six-pulse and d the single-phase
// rectifier share of a phase: ab, ac, ad, aa, a, db, dc, dd, d, cb, cc, c, 1, b, bb.

/// For a phase whose twelve-pulse share is at least `kTwelvePulseThreshold`.
constexpr Coefficients HighTwelvePulseCoefficients{{{0.461, 0.658, -1.646, -2.478},
                                                    {0.443, 1.947, -0.955, 1.928},
                                                    {-0.236, 0.678, 3.501, 8.249},
                                                    {-0.306, -2.605, -0.953, -5.814},
                                                    {0.362, 0.678, -0.053, 1.885},
                                                    {-0.000121, -1.27, -2.576, -3.937},
                                                    {-1.365, -2.228, -2.607, -9.91},
                                                    {1.693, 2.98, 3.96, 7.49},
                                                    {0.09, 0.16, 2.244, 1.892},
                                                    {-0.981, -0.57, 2.521, 3.721},
                                                    {2.287, 1.761, 2.331, 5.434},
                                                    {0.384, 0.911, 1.29, 1.173},
                                                    {0.932, 1.524, 3.843, 5.518},
                                                    {0.095, -0.224, 0.361, 0.567},
                                                    {0.616, 0.958, 2.063, 3.261}}};

/// For a phase whose twelve-pulse share is below it.
constexpr Coefficients LowTwelvePulseCoefficients{{{7.98, 7.66, -2.861, -6.396},
                                                   {10.83, 13.42, 12.356, 28.836},
                                                   {14.99, 17.98, 13.866, 34.207},
                                                   {5.27, 6.68, 4.439, 13.311},
                                                   {14.11, 16.35, 14.392, 32.234},
                                                   {-1.49, -0.02, -1.651, 1.635},
                                                   {13.15, 13.93, 10.223, 25.212},
                                                   {9.91, 11.82, 11.04, 21.74},
                                                   {11.59, 14.33, 14.347, 32.279},
                                                   {8.66, 10.19, 1.614, 10.708},
                                                   {6.76, 8.79, 8.503, 17.58},
                                                   {14.44, 16.94, 13.565, 31.819},
                                                   {-18.18, -21.02, -12.441, -35.332},
                                                   {17.31, 20.38, 3.229, 21.416},
                                                   {2.16, 2.55, 0.404, 2.677}}};

constexpr double kTwelvePulseThreshold = 0.125;
/// Non-linear load of a phase [kW] up to which its shares count as 0.
constexpr double kNegligibleLoad = 0.01;

constexpr std::int32_t kInputError = errors::FromBase(1);
constexpr std::int32_t kNegativeImpedanceError = errors::FromBase(2);

/// Shares of the non-linear load of one phase.
struct Shares {
    double a = 0.0;  ///< ballasts
    double b = 0.0;  ///< twelve-pulse rectifiers
    double c = 0.0;  ///< six-pulse rectifiers, controlled or not
    double d = 0.0;  ///< single-phase rectifiers
};

std::array<double, kTerms> Terms(const Shares& s) {
    return {s.a * s.b, s.a * s.c, s.a * s.d, s.a * s.a, s.a, s.d * s.b, s.d * s.c, s.d * s.d,
            s.d,       s.c * s.b, s.c * s.c, s.c,       1.0, s.b,       s.b * s.b};
}

/// Distortion [percent] between the columns; beyond the last one its slope is carried on.
double Interpolate(double z, const std::array<double, CVTHD::kImpedances>& V) {
    if (0.0 <= z && z <= 0.005) {
        return V[0] * z / 0.005;
    }
    if (0.005 <= z && z <= 0.01) {
        return (V[1] - V[0]) * (z - 0.005) / 0.005 + V[0];
    }
    if (0.01 <= z && z <= 0.05) {
        return (V[2] - V[1]) * (z - 0.01) / 0.04 + V[1];
    }
    if (0.05 <= z && z <= 0.1) {
        return (V[3] - V[2]) * (z - 0.05) / 0.05 + V[2];
    }
    if (z > 0.1) {
        return (V[3] - V[2]) * (z - 0.1) / 0.05 + V[3];
    }
    throw RaisedError(kNegativeImpedanceError, "CVTHD::VTHD", "Negative harmonic impedance calculated.");
}

std::size_t PhaseIndex(std::int32_t phase, const char* source) {
    if (phase < 0 || phase >= static_cast<std::int32_t>(CVTHD::kPhases)) {
        RaiseSubscriptOutOfRange(source);
    }
    return static_cast<std::size_t>(phase);
}

}  // namespace

void CVTHD::GenPower(double kilowatts) {
    if (!(kilowatts > 0.0)) {
        throw RaisedError(kInputError, "CVTHD::GenPower", "Invalid generator power input.");
    }
    m_genPower = kilowatts;
}

void CVTHD::GenImpedance(double perUnit) {
    if (!(perUnit > 0.0)) {
        throw RaisedError(kInputError, "CVTHD::GenImpedance", "Invalid generator impedance input.");
    }
    m_genImpedance = perUnit;
}

void CVTHD::RectifierPwr12P(double kilowatts) {
    SetPower(m_rectifier12P, kilowatts, "Invalid 12 pulse rectifier power input.", "CVTHD::RectifierPwr12P");
}

void CVTHD::RectifierPwr6P(double kilowatts) {
    SetPower(m_rectifier6P, kilowatts, "Invalid 6 pulse rectifier power input.", "CVTHD::RectifierPwr6P");
}

void CVTHD::PhaseCtrlPwr6P(double kilowatts) {
    SetPower(m_phaseCtrl6P, kilowatts, "Invalid 6 pulse phase controlled power input.",
             "CVTHD::PhaseCtrlPwr6P");
}

void CVTHD::SinglePhaseRectPwr(std::int32_t phase, double kilowatts) {
    SetPhasePower(m_singlePhaseRect, phase, kilowatts, "Invalid single phase rectifier power input.",
                  "CVTHD::SinglePhaseRectPwr");
}

double CVTHD::SinglePhaseRectPwr(std::int32_t phase) const {
    return m_singlePhaseRect[PhaseIndex(phase, "CVTHD::SinglePhaseRectPwr")];
}

void CVTHD::SinglePhaseElecBallastPwr(std::int32_t phase, double kilowatts) {
    SetPhasePower(m_elecBallast, phase, kilowatts, "Invalid single phase electric ballast power input.",
                  "CVTHD::SinglePhaseElecBallastPwr");
}

double CVTHD::SinglePhaseElecBallastPwr(std::int32_t phase) const {
    return m_elecBallast[PhaseIndex(phase, "CVTHD::SinglePhaseElecBallastPwr")];
}

void CVTHD::SinglePhaseMagBallastPwr(std::int32_t phase, double kilowatts) {
    SetPhasePower(m_magBallast, phase, kilowatts, "Invalid single phase magnetic ballast power input.",
                  "CVTHD::SinglePhaseMagBallastPwr");
}

double CVTHD::SinglePhaseMagBallastPwr(std::int32_t phase) const {
    return m_magBallast[PhaseIndex(phase, "CVTHD::SinglePhaseMagBallastPwr")];
}

double CVTHD::HarmonicImpedance(std::int32_t phase) const {
    return m_harmonicImpedance[PhaseIndex(phase, "CVTHD::HarmonicImpedance")];
}

void CVTHD::VTHD(PerPhase& results) {
    if (!m_regressionValid) {
        UpdateRegression();
    }
    for (std::size_t i = 0; i < kPhases; ++i) {
        const PhaseRegression& phase = m_regression[i];
        m_harmonicImpedance[i] = Quotient(phase.total * m_genImpedance, m_genPower / 3.0, "CVTHD::VTHD");
        results[i] = Finite(Interpolate(m_harmonicImpedance[i], phase.columns), "CVTHD::VTHD");
    }
}

void CVTHD::SetPower(double& target, double kilowatts, const char* description, const char* source) {
    if (!(kilowatts >= 0.0)) {
        throw RaisedError(kInputError, source, description);
    }
    target = kilowatts;
    m_regressionValid = false;
}

void CVTHD::SetPhasePower(PerPhase& target, std::int32_t phase, double kilowatts, const char* description,
                          const char* source) {
    SetPower(target[PhaseIndex(phase, source)], kilowatts, description, source);
}

void CVTHD::UpdateRegression() {
    const double six = m_phaseCtrl6P + m_rectifier6P;
    const double balanced = (six + m_rectifier12P) / 3.0;
    for (std::size_t i = 0; i < kPhases; ++i) {
        PhaseRegression& phase = m_regression[i];
        const double ballast = m_magBallast[i] + m_elecBallast[i];
        phase.total = ballast + m_singlePhaseRect[i] + balanced;
        Shares shares;
        if (phase.total > kNegligibleLoad) {
            shares = {.a = ballast / phase.total,
                      .b = (m_rectifier12P / 3.0) / phase.total,
                      .c = (six / 3.0) / phase.total,
                      .d = m_singlePhaseRect[i] / phase.total};
        }
        const Coefficients& coefficients =
            shares.b < kTwelvePulseThreshold ? LowTwelvePulseCoefficients : HighTwelvePulseCoefficients;
        const std::array<double, kTerms> terms = Terms(shares);
        phase.columns.fill(0.0);
        for (std::size_t t = 0; t < kTerms; ++t) {
            for (std::size_t j = 0; j < kImpedances; ++j) {
                phase.columns[j] += coefficients[t][j] * terms[t];
            }
        }
    }
    m_regressionValid = true;
}

}  // namespace genvara
