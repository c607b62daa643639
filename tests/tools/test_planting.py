"""The slips that tools/slips plants: what it changes, and what it leaves alone."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "slips"))

from planting import planted, slips_of  # noqa: E402
from workshop import folder_of, programs_for  # noqa: E402


def changes(text):
    """Kind and changed lines of every slip."""
    return [(slip.kind, *slip.after) for slip in slips_of("src/loads/CLoad.cpp", text)]


class Planting(unittest.TestCase):
    def test_comparisons_lose_or_gain_their_edge(self):
        self.assertEqual(changes("if (a < b) {"), [("comparison", "if (a <= b) {")])
        self.assertEqual(changes("if (a >= b) {"), [("comparison", "if (a > b) {")])
        self.assertEqual(changes("if (a == b) {"), [("comparison", "if (a != b) {")])

    def test_templates_are_no_comparisons(self):
        self.assertEqual(changes("std::vector<int> rows;"), [])

    def test_signs_and_logic_are_turned_round(self):
        self.assertEqual(changes("return a - b;"), [("sign", "return a + b;")])
        self.assertEqual(changes("return a && !b;"), [("logic", "return a || !b;"), ("logic", "return a && b;")])
        self.assertEqual(changes("bool is_true = true;"), [("logic", "bool is_true = false;")])

    def test_constants_are_a_little_off(self):
        self.assertEqual(changes("constexpr int kMost = 1'000;"), [("constant", "constexpr int kMost = 1001;")])
        self.assertEqual(changes("return 0.5;"), [("constant", "return 0.505;")])
        self.assertEqual(changes("return 0.0;"), [("constant", "return 1.0;")])
        self.assertEqual(changes("rect6P = Kilo(v2);"), [])

    def test_texts_are_misspelt_and_nothing_in_them_is_code(self):
        self.assertEqual(changes('return "a < 2";'), [("text", 'return "q < 2";')])
        self.assertEqual(changes('return ", ";'), [])
        self.assertEqual(changes("a = b;  // 2 < 3 \"x\""), [])

    def test_whole_statements_are_dropped(self):
        self.assertIn(("dropped", ""), changes("{\n    Count(steps);\n}"))
        self.assertIn(("dropped", ""), changes("{\n    m_steps = steps;\n}"))
        self.assertNotIn(("dropped", ""), changes("{\n    return Count(steps);\n}"))
        self.assertNotIn(("dropped", ""), changes("if (a)\n    Count(steps);"))

    def test_neighbours_exchange_what_they_hold(self):
        self.assertEqual(changes("{.a = one,\n .b = other,"), [("exchange", "{.a = other,", " .b = one,")])
        self.assertIn(("exchange", '    {"Two", 1},', '    {"One", 2},'), changes('    {"One", 1},\n    {"Two", 2},'))
        self.assertEqual(changes("Store(one, other)"), [("exchange", "Store(other, one)")])

    def test_a_slip_stands_in_its_line_alone(self):
        text = "a;\nreturn b < c;\nd;"
        slip = slips_of("src/loads/CLoad.cpp", text)[0]
        self.assertEqual(slip.line, 2)
        self.assertEqual(planted(text, slip), "a;\nreturn b <= c;\nd;")

    def test_a_slip_is_known_again_in_another_line(self):
        first = slips_of("src/loads/CLoad.cpp", "return b < c;")[0]
        moved = slips_of("src/loads/CLoad.cpp", "\nreturn b < c;")[0]
        self.assertEqual(first.key, moved.key)


class Nearness(unittest.TestCase):
    def test_the_folders_own_tests_come_first(self):
        self.assertEqual(folder_of("src/ui/forms/frmMotor.cpp"), "ui/forms")
        self.assertEqual(programs_for("ui/forms")[0], "forms_tests")
        self.assertEqual(programs_for("loads")[:2], ["loads_tests", "model_tests"])

    def test_lower_layers_and_windows_are_not_asked(self):
        programs = programs_for("sizing")
        self.assertNotIn("loads_tests", programs)
        self.assertNotIn("window_tests", programs)
        self.assertIn("document_tests", programs)


if __name__ == "__main__":
    unittest.main()
