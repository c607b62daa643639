"""Numbers as text."""

from decimal import ROUND_HALF_UP, Decimal

SIGNIFICANT_DIGITS = 15


def fixed(value, decimals):
    """The value with that many decimals, halves of its 15-digit form away from zero, no minus on a zero."""
    rounded = Decimal(f"{float(value):.14e}").quantize(Decimal(1).scaleb(-decimals), rounding=ROUND_HALF_UP)
    return f"{abs(rounded) if rounded == 0 else rounded:f}"


def plain(value):
    """The value with at most 15 digits and no trailing zeros; very large and very small ones with an exponent."""
    value = float(value)
    if value == 0:
        return "0"
    mantissa, exponent = f"{abs(value):.14e}".split("e")
    digits, exponent = mantissa.replace(".", "").rstrip("0"), int(exponent)
    decimals = len(digits) - 1 - exponent
    sign = "-" if value < 0 else ""
    if exponent >= SIGNIFICANT_DIGITS or decimals > SIGNIFICANT_DIGITS:
        return sign + scientific(digits, exponent)
    return sign + f"{Decimal(digits).scaleb(-decimals):f}"


def scientific(digits, exponent):
    """One digit before the point, the others behind it, and the exponent with its sign and two digits at least."""
    fraction = "." + digits[1:] if len(digits) > 1 else ""
    return f"{digits[0]}{fraction}E{'-' if exponent < 0 else '+'}{abs(exponent):02d}"


def yes_no(flag):
    return "YES" if flag else "NO"
