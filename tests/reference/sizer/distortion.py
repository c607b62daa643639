"""Voltage distortion in percent: a regression over the shares of non-linear load, and corrections for filters.

Powers are in kW, impedances per unit; lists of three stand for the phases A, B and C.
"""

from types import SimpleNamespace

from sizer.arithmetic import square
from sizer.errors import Raised, failing_as, finite, hresult

# A row for each term of the regression, a column each for the harmonic impedances 0.005, 0.01, 0.05 and 0.1.
LOW_TWELVE_PULSE = (
    (7.98, 7.66, -2.861, -6.396), (10.83, 13.42, 12.356, 28.836), (14.99, 17.98, 13.866, 34.207),
    (5.27, 6.68, 4.439, 13.311), (14.11, 16.35, 14.392, 32.234), (-1.49, -0.02, -1.651, 1.635),
    (13.15, 13.93, 10.223, 25.212), (9.91, 11.82, 11.04, 21.74), (11.59, 14.33, 14.347, 32.279),
    (8.66, 10.19, 1.614, 10.708), (6.76, 8.79, 8.503, 17.58), (14.44, 16.94, 13.565, 31.819),
    (-18.18, -21.02, -12.441, -35.332), (17.31, 20.38, 3.229, 21.416), (2.16, 2.55, 0.404, 2.677))
HIGH_TWELVE_PULSE = (
    (0.461, 0.658, -1.646, -2.478), (0.443, 1.947, -0.955, 1.928), (-0.236, 0.678, 3.501, 8.249),
    (-0.306, -2.605, -0.953, -5.814), (0.362, 0.678, -0.053, 1.885), (-0.000121, -1.27, -2.576, -3.937),
    (-1.365, -2.228, -2.607, -9.91), (1.693, 2.98, 3.96, 7.49), (0.09, 0.16, 2.244, 1.892),
    (-0.981, -0.57, 2.521, 3.721), (2.287, 1.761, 2.331, 5.434), (0.384, 0.911, 1.29, 1.173),
    (0.932, 1.524, 3.843, 5.518), (0.095, -0.224, 0.361, 0.567), (0.616, 0.958, 2.063, 3.261))

# The twelve-pulse share from which the second table holds, and the kW below which a phase has no shares.
HIGH_TWELVE_PULSE_SHARE = 0.125
LEAST_POWER = 0.01

# Connections for which the figures are valid; the second has its windings' voltages fixed.
DELTA = 2
CONNECTIONS = (1, DELTA)


def connection_factor(volts):
    return 1 if volts > 240 else 2


def site_reactance(alternator, site):
    """The subtransient reactance on the site's voltage."""
    with failing_as("CDesigner::ScaleReactance"):
        if site.ConnectCode == DELTA:
            return alternator.SubtransReact * square(240 / 208)
        factor = connection_factor(alternator.BaseVolts) / connection_factor(site.Voltage)
        return finite(alternator.SubtransReact * square(factor) * square(alternator.BaseVolts / site.Voltage))


def checked_input(alternator, site, profile, step):
    """What the regression starts from; a power or an impedance that makes no sense raises its error."""
    source = SimpleNamespace(
        GenPower=site.GensetsInParallel * alternator.BasekW, GenImpedance=site_reactance(alternator, site),
        RectifierPwr6P=profile.six_pulse[step], RectifierPwr12P=profile.twelve_pulse[step],
        PhaseCtrlPwr6P=profile.controlled[step], SinglePhaseRectPwr=profile.rectifier[step],
        SinglePhaseElecBallastPwr=profile.electronic[step], SinglePhaseMagBallastPwr=profile.magnetic[step])
    for fails, name, words in (
            (source.GenImpedance <= 0, "GenImpedance", "generator impedance"),
            (source.RectifierPwr6P < 0, "RectifierPwr6P", "6 pulse rectifier power"),
            (source.RectifierPwr12P < 0, "RectifierPwr12P", "12 pulse rectifier power"),
            (min(source.SinglePhaseRectPwr) < 0, "SinglePhaseRectPwr", "single phase rectifier power")):
        if fails:
            raise Raised(hresult(0x80040001), f"CVTHD::{name}", f"Invalid {words} input.")
    return source


def terms(a, b, c, d):
    """Of the regression, from the shares of ballasts, twelve-pulse, six-pulse and single-phase rectifiers."""
    return a * b, a * c, a * d, a * a, a, d * b, d * c, d * d, d, c * b, c * c, c, 1.0, b, b * b


def regression(a, b, c, d):
    """Percent at the impedance of each column."""
    table = LOW_TWELVE_PULSE if b < HIGH_TWELVE_PULSE_SHARE else HIGH_TWELVE_PULSE
    values = []
    for column in range(4):
        value = 0.0
        for row, term in zip(table, terms(a, b, c, d)):
            value += row[column] * term
        values.append(value)
    return values


def at_impedance(values, z):
    """Percent at the harmonic impedance z: a line through the origin, lines between the columns and beyond them."""
    if z < 0:
        raise Raised(hresult(0x80040002), "CVTHD::VTHD", "Negative harmonic impedance calculated.")
    if z <= 0.005:
        return values[0] * z / 0.005
    if z <= 0.01:
        return (values[1] - values[0]) * (z - 0.005) / 0.005 + values[0]
    if z <= 0.05:
        return (values[2] - values[1]) * (z - 0.01) / 0.04 + values[1]
    if z <= 0.1:
        return (values[3] - values[2]) * (z - 0.05) / 0.05 + values[2]
    return (values[3] - values[2]) * (z - 0.1) / 0.05 + values[3]


def uncorrected(source, phase):
    """Percent and harmonic impedance of one phase."""
    six = source.PhaseCtrlPwr6P + source.RectifierPwr6P
    ballast = source.SinglePhaseMagBallastPwr[phase] + source.SinglePhaseElecBallastPwr[phase]
    rectifier, twelve = source.SinglePhaseRectPwr[phase], source.RectifierPwr12P
    power = ballast + rectifier + (six + twelve) / 3
    z = finite(power * source.GenImpedance / (source.GenPower / 3))
    shares = (0.0, 0.0, 0.0, 0.0)
    if power > LEAST_POWER:
        shares = (ballast / power, (twelve / 3) / power, (six / 3) / power, rectifier / power)
    return finite(at_impedance(regression(*shares), z)), z


def less_twelve_filtered(value, ballast_share, filtered_share, z):
    if ballast_share > 0.5 and z < 0.08:
        return 10.4 - (1 - ballast_share) * 8
    if ballast_share <= 0.5 and filtered_share > 0.5:
        return value - (filtered_share - 0.5) / 0.5
    return value


def few_twelve_pulse(value, ballast_share, twelve_share, z):
    """A little twelve-pulse load among ballasts behind a weak alternator."""
    if 0.03 < twelve_share < 0.5 and ballast_share > 0.5 and z > 0.08 and value < 10.4:
        return 8.5 - (1 - ballast_share) * 4
    return value


def corrected(value, z, profile, step, phase):
    """The value in percent after the rules for filters, each of which reads what those before it left.

    They go by parts of the phase's non-linear load: where there is none, none of them applies.
    """
    six, twelve = profile.six_filtered[step], profile.twelve_filtered[step]
    load, ballast = profile.non_linear(step, phase), profile.ballast(step, phase)
    if load > 0:
        if six > 0 and twelve == 0:
            value -= (six / 3 + six / 3) / load
        if six == 0 and twelve > 0:
            value = less_twelve_filtered(value, ballast / load, (twelve / 3) / load, z)
        value = few_twelve_pulse(value, ballast / load, (profile.twelve_pulse[step] / 3) / load, z)
        if six > 0 and twelve > 0:
            value = value - (six / 3 + six / 3) / load - (twelve / 3) / load
    return max(0.0, finite(value))


def distortion(alternator, site, profile, step):
    """Percent on each phase after a step; None where alternator or connection give no figures."""
    if alternator.BasekW <= 0 or alternator.BaseVolts <= 0 or site.ConnectCode not in CONNECTIONS:
        return None
    source = checked_input(alternator, site, profile, step)
    with failing_as("CVTHD::VTHD"):
        found = [uncorrected(source, phase) for phase in range(3)]
    return [corrected(value, z, profile, step, phase) for phase, (value, z) in enumerate(found)]
