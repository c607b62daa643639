"""The manual's formulas once more, as an engineer would work them on paper. Nothing of the program is used here.

Powers are in kW, kVA and kvar, shares per unit, dips and distortion in percent.
"""
import math


def on_a_line(x, points):
    """A value between two neighbouring points of a table."""
    for (x0, y0), (x1, y1) in zip(points, points[1:]):
        if x <= x1:
            break
    return y0 + (x - x0) * (y1 - y0) / (x1 - x0)


def reactive(real, apparent):
    return math.sqrt(max(0.0, apparent * apparent - real * real))


def loading_factor(site, base, slope, per):
    """Share of the rating left at a site value; nothing is lost up to the base."""
    return 1.0 if site <= base else (100.0 - (site - base) * slope / per) / 100.0


def lighting(kw, power_factor):
    return kw, reactive(kw, kw / power_factor)


def office(computers, printers, faxes, copiers):
    kw = 0.3 * computers + 0.6 * printers + 0.6 * faxes + 1.2 * copiers
    return kw, reactive(kw, kw / 0.8)


def on_line_ups(kva, loading, charging):
    """Of a three-phase double-conversion unit."""
    apparent = kva * loading / 100.0 / 0.95 * (1.0 + charging / 100.0)
    return 0.95 * apparent, reactive(0.95 * apparent, apparent)


def scaled_reactance(reactance, base_volts, site_volts):
    """Windings stand in series above 240 V and in parallel otherwise."""
    series = {False: 2.0, True: 1.0}
    factor = series[base_volts > 240] * base_volts / (series[site_volts > 240] * site_volts)
    return reactance * factor * factor


def terms(ballast, twelve, six, single):
    a, b, c, d = ballast, twelve, six, single
    return [a * b, a * c, a * d, a * a, a, d * b, d * c, d * d, d, c * b, c * c, c, 1.0, b, b * b]


IMPEDANCES = [0.005, 0.01, 0.05, 0.1]


def fitted(table, shares):
    """The fit's four values, one for each harmonic impedance of its table."""
    return [sum(row[j] * term for row, term in zip(table, terms(*shares))) for j in range(4)]


def at_impedance(values, z):
    """On the broken line through the origin and the four values, carried on beyond the last."""
    xs, ys = [0.0] + IMPEDANCES, [0.0] + values
    if z > xs[-1]:
        return ys[4] + (ys[4] - ys[3]) * (z - xs[4]) / (xs[4] - xs[3])
    return on_a_line(z, list(zip(xs, ys)))


def distortion(low, high, phase, gen_kw, reactance):
    """Distortion of one phase before corrections for filters, with its harmonic impedance.

    `phase` is that phase's ballast, twelve-pulse, six-pulse and single-phase rectifier power.
    """
    total = sum(phase)
    impedance = total * reactance / (gen_kw / 3.0)
    shares = [power / total for power in phase]
    values = fitted(high if shares[1] >= 0.125 else low, shares)
    return max(0.0, at_impedance(values, impedance)), impedance, shares, values
