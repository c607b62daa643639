"""The sizing worked out a second time, from its formulas, to compare the program's answers with."""
