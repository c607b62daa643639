"""Values as a project file may write them."""

from sizer.texts import plain

WORDS = ("Pumps", "Chiller, roof", "Größe 12 %", "Œuvre – neuf", "€ 500…", "", "O'Brien & Söhne", "a  b", " lead",
         "tail ", "Two\r\nlines", "back\\slash", "tab\there", "<Motor>", "#TRUE#", "12", "ÿ½µ", "x" * 300)


class ValueText:
    """Mostly the form that the program writes, now and then another that it reads."""

    def __init__(self, rng):
        self.rng = rng

    def text(self, value=None):
        value = self.rng.choice(WORDS) if value is None else value
        may_stand_bare = value and not value.startswith(" ") and not set(value) & set(',\r\n"')
        return value if may_stand_bare and self.rng.random() < 0.05 else f'"{value}"'

    def whole(self, value):
        return f"{value}.{self.rng.choice('04')}" if self.rng.random() < 0.02 else str(value)

    def real(self, value):
        """At most 15 digits; also with an exponent, with all digits, or without the zero before the point."""
        chance, usual = self.rng.random(), plain(value)
        if chance < 0.03:
            return repr(float(value))
        if chance < 0.05:
            return f"{float(value):.10E}"
        return usual[1:] if chance < 0.08 and usual.startswith("0.") else usual

    def reals(self, *values):
        return ",".join(self.real(value) for value in values)

    @staticmethod
    def flag(value):
        return "#TRUE#" if value else "#FALSE#"

    def moment(self):
        rng = self.rng
        day = f"{rng.randint(1899, 2099)}-{rng.randint(1, 12):02d}-{rng.randint(1, 28):02d}"
        if rng.random() < 0.1:
            return f"#{day}#"
        return f"#{day} {rng.randint(0, 23):02d}:{rng.randint(0, 59):02d}:{rng.randint(0, 59):02d}#"
