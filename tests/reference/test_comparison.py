"""The comparison must see what differs: a second computation that agrees with everything would be worth nothing."""

import unittest

from comparison import Comparison
from coverage import DEMANDED, Coverage
from sizer.errors import ANYTHING, Close

ANSWER = {"Rating": 100.0, "Quantity": 2, "Loaded": True, "Name": "Pumps", "Dips": [1.5, 0.0]}


def differences(changes, expected=ANSWER):
    comparison = Comparison()
    comparison.walk(expected, {**expected, **changes})
    return comparison.differences


class ComparisonTest(unittest.TestCase):
    def test_equal_answers_agree(self):
        self.assertEqual(differences({}), [])

    def test_the_last_digits_of_a_figure_may_differ(self):
        self.assertEqual(differences({"Rating": 100.0 * (1 + 5e-10)}), [])
        self.assertEqual(len(differences({"Rating": 100.0 * (1 + 5e-9)})), 1)

    def test_a_whole_figure_may_be_written_without_point(self):
        self.assertEqual(differences({"Rating": 100}), [])

    def test_nothing_stands_in_for_a_figure(self):
        for other in (None, "100", True, [100.0], float("nan")):
            self.assertEqual(len(differences({"Rating": other})), 1, other)

    def test_what_may_have_cancelled_is_as_exact_as_what_it_came_from(self):
        self.assertEqual(differences({"Margin": 4e-10}, {"Margin": Close(0.0)}), [])
        self.assertEqual(len(differences({"Margin": 4e-9}, {"Margin": Close(0.0)})), 1)
        self.assertEqual(len(differences({"Margin": None}, {"Margin": Close(0.0)})), 1)

    def test_zero_is_not_almost_zero(self):
        self.assertEqual(len(differences({"Dips": [1.5, 1e-300]})), 1)

    def test_codes_flags_and_texts_are_exact(self):
        for change in ({"Quantity": 2.0}, {"Quantity": 3}, {"Loaded": 1}, {"Name": "pumps"}):
            self.assertEqual(len(differences(change)), 1, change)

    def test_lists_have_their_length_and_order(self):
        self.assertEqual(differences({"Dips": [1.5]}), ["/Dips (length): expected 2, got 1"])
        self.assertEqual(len(differences({"Dips": [1.5, 0.0, 0.0]})), 1)
        self.assertEqual(len(differences({"Dips": [0.0, 1.5]})), 2)

    def test_names_have_their_order_too(self):
        self.assertEqual(len(differences({"Further": 1})), 1)
        comparison = Comparison()
        comparison.walk(ANSWER, dict(reversed(ANSWER.items())))
        self.assertEqual(len(comparison.differences), 1)

    def test_only_what_the_layer_below_chooses_is_left_open(self):
        self.assertEqual(differences({"Number": -2147467259}, {"Number": ANYTHING}), [])
        self.assertEqual(len(differences({"Number": 11}, {"Number": 6})), 1)


class CoverageTest(unittest.TestCase):
    def test_a_run_without_answers_met_nothing(self):
        coverage = Coverage()
        coverage.add({"Error": {}})
        coverage.add_explanation({"Error": {}})
        self.assertEqual(coverage.missing(), list(DEMANDED))


if __name__ == "__main__":
    unittest.main()
