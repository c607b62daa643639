"""Small calculations that many formulas share."""

import math

from sizer.errors import Raised, finite, hresult

# Pi as the angle of a cosine of -1 is given, cut to 15 digits.
SHORT_PI = 3.14159265358979

# Least horsepower of a band and the kVA that a motor of it draws per horsepower at standstill.
LOCKED_ROTOR_BANDS = ((15, 5.3), (7.5, 5.95), (5, 6.7), (3, 7.55), (1.5, 8.5), (1, 9.5), (0, 10.6))


def square(x):
    return x * x


def root(x):
    """Square root; a negative argument is a ValueError."""
    return math.sqrt(finite(x))


def power(base, exponent):
    """base to the exponent; a negative base needs a whole exponent, a base of zero none below zero."""
    if base < 0 and exponent != math.floor(exponent):
        raise ValueError("negative base")
    if base == 0 and exponent < 0:
        raise ValueError("zero to a negative power")
    return finite(math.pow(base, exponent))


def arc_cos(cosine):
    """Angle of a cosine, in radians; a cosine above 1 is a ValueError."""
    if cosine == 1:
        return 0.0
    if cosine <= -1:
        return SHORT_PI
    return math.atan(-cosine / math.sqrt(-cosine * cosine + 1)) + 2 * math.atan(1)


def sine_for(power_factor):
    """Share of reactive power for a power factor."""
    return math.sin(arc_cos(power_factor))


def interpolate(x, xs, ys):
    """Piecewise linear over ascending xs, carried on beyond the ends with the slope of the outermost segments."""
    last = len(xs) - 1
    if last < 1:
        raise Raised(hresult(0x80040003), "InterpolateXY", "Value arrays have only one point.")
    if x in xs:
        return ys[xs.index(x)]
    if x > xs[last]:
        return ys[last] + slope(xs, ys, last) * (x - xs[last])
    if x < xs[0]:
        return ys[0] - slope(xs, ys, 1) * (xs[0] - x)
    right = next(i for i in range(1, last + 1) if x < xs[i])
    return ys[right - 1] + slope(xs, ys, right) * (x - xs[right - 1])


def slope(xs, ys, right):
    """Rise of the segment that ends at the point `right`."""
    return (ys[right] - ys[right - 1]) / (xs[right] - xs[right - 1])


def locked_rotor_kva_per_hp(hp):
    """kVA per horsepower at standstill; 0 below 0 hp."""
    return next((kva for least, kva in LOCKED_ROTOR_BANDS if hp >= least), 0.0)
