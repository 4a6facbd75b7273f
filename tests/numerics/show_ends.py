#!/usr/bin/env python3
"""Prints the end points of the searches that tests/problems/ records as not solved, and of those in the listings of
solve, fmin and fmax in tests/listings/. The numbers in those files come from this program: the methods are those of
stated_searches.py and stated_systems.py, and the attempts are made in the required order.

Values that a search with a message leaves are the start values. A solved system is printed with its exact solution
where it has a simple one, so that the six digits of a listing can be compared with either.
"""
import math

import stated_searches
import stated_systems
from stated_searches import Failed, Function


def logarithmic(formula, start):
    """The same function of the logarithms of the magnitudes; a start of 0 is kept."""
    signs = [math.copysign(1.0, x) if x != 0.0 else 0.0 for x in start]

    def back(x):
        return [s * math.exp(v) if s != 0.0 else v for s, v in zip(signs, x)]
    begin = [math.log(abs(x)) if x != 0.0 else 0.0 for x in start]
    return lambda x: formula(back(x)), begin, back


def one_try(method, formula, start):
    f = Function(formula, start)
    good = method(f)
    if good is False:
        raise Failed("not good")
    return f.points[-1], len(f.points)


def attempts(methods, formula, start):
    in_logarithms, begin, back = logarithmic(formula, start)
    tries = 0
    for method, logs in methods:
        tries += 1
        try:
            end, count = one_try(method, in_logarithms if logs else formula, begin if logs else list(map(float, start)))
            return f"attempt {tries}, {count} evaluations", back(end) if logs else end
        except Failed as failure:
            text = str(failure)
    return text, list(map(float, start))


S, T = stated_searches, stated_systems
SOLVE_ONE = [(S.solve_one, False), (S.solve_one, True)]
SOLVE = [(T.broydn, False), (T.newt, False), (T.broydn, True), (T.newt, True)]
FMIN_ONE = [(S.minimise, False), (S.minimise, True)]
FMIN = [(S.minimise, False)]


def no_division_by_0(a, b):
    if b == 0.0:
        raise Failed("division by zero")
    return a / b


def helical(x):
    a, b, c = x
    th = math.atan(no_division_by_0(b, a)) / (2.0 * math.pi) + (1.0 - (a > 0.0) + (a < 0.0)) / 4.0
    return [100.0 * ((c - 10.0 * th) ** 2 + (math.sqrt(a ** 2 + b ** 2) - 1.0) ** 2) + c ** 2]


def freudenstein_roth(x):
    a, b = x
    return [a - 13.0 + ((5.0 - b) * b - 2.0) * b, a - 29.0 + ((b + 1.0) * b - 14.0) * b]


def goldstein_price(x):
    a, b = x
    return [(1.0 + (a + b + 1.0) ** 2 * (19.0 - 14.0 * a + 3.0 * a ** 2 - 14.0 * b + 6.0 * a * b + 3.0 * b ** 2)) *
            (30.0 + (2.0 * a - 3.0 * b) ** 2 * (18.0 - 32.0 * a + 12.0 * a ** 2 + 48.0 * b - 36.0 * a * b +
                                               27.0 * b ** 2))]


def lennard_jones(x):
    s = no_division_by_0(3.4e-10, x[0])
    return [4.0 * 1.65e-21 * (s ** 12 - s ** 6)]


def flat(x):
    d = x[0] - 1.0
    return [d * math.exp(-1.0 / (d ** 2 + 1e-30))]


PROBLEMS = {
    "minimum_can": (FMIN_ONE, lambda x: [2.0 * math.pi * x[0] ** 2 + no_division_by_0(0.002, x[0])], [0.03]),
    "minimum_flat": (FMIN_ONE, lambda x: [(x[0] - 1.0) ** 4], [2]),
    "minimum_freudenstein_roth": (FMIN, lambda x: [sum(v * v for v in freudenstein_roth(x))], [0.5, -2]),
    "minimum_goldstein_price": (FMIN, goldstein_price, [0.5, -0.5]),
    "minimum_helical_valley": (FMIN, helical, [-1, 0, 0]),
    "minimum_lennard_jones": (FMIN_ONE, lennard_jones, [4e-10]),
    "root_double": (SOLVE_ONE, lambda x: [(x[0] - 1.0) ** 2], [3]),
    "root_flat": (SOLVE_ONE, flat, [3]),
    "root_none": (SOLVE_ONE, lambda x: [x[0] ** 2 + 1.0], [1]),
    "root_pole": (SOLVE_ONE, lambda x: [no_division_by_0(1.0, x[0])], [1]),
    "root_tangent": (SOLVE_ONE, lambda x: [math.tan(x[0])], [1.4]),
    "system_freudenstein_roth": (SOLVE, freudenstein_roth, [0.5, -2]),
}


def singular_update(x):
    u, v = x[0] - 1000000.0, x[1] - 1000000.0
    return [u + 3.0 * v - 256.0, 2.0 * v + u * v / 32.0 - 128.0]


def line_to(root):
    return lambda x: [x[0] - root]


def root_below_8(x):
    if x[0] < 8.0:
        raise Failed("root of a negative number")
    return [x[0] - 16.0]


# The maxima are the minima of the negated functions.
LISTINGS = {
    "solve/root_inside_the_bracket and the other lines to 16": (SOLVE_ONE, line_to(16.0), [10]),
    "solve/root_at_the_midpoint": (SOLVE_ONE, line_to(15.0), [10]),
    "solve/walker_on_the_root_leaves_the_midpoint": (SOLVE_ONE, line_to(13.0), [10]),
    "solve/low_walker_on_the_root_leaves_the_midpoint": (SOLVE_ONE, line_to(7.0), [10]),
    "solve/start_at_the_root": (SOLVE_ONE, line_to(10.0), [10]),
    "solve/walker_that_fails_leaves_the_other_one": (SOLVE_ONE, root_below_8, [10]),
    "solve/column_of_zeros_goes_on_with_a_tiny_pivot": (SOLVE, lambda x: [x[0] - 3.0, 2.0 * x[0] - 6.0], [10, 10]),
    "solve/pairs_of_different_units": (SOLVE, lambda x: [x[0] - 3.0, x[1] - 4.0], [10, 20]),
    "solve/several_pairs_at_the_root_take_one_evaluation": (SOLVE, lambda x: [x[0] - 3.0, x[1] - 4.0], [3, 4]),
    "solve/update_that_is_singular_leaves_it_to_the_next_method": (SOLVE, singular_update, [1e6, 1e6]),
    "minimum/of_one_variable": (FMIN_ONE, lambda x: [(x[0] - 3.0) ** 2 + 4.0], [2]),
    "minimum/maximum_of_one_variable": (FMIN_ONE, lambda x: [(x[0] - 3.0) ** 2 - 4.0], [2]),
    "minimum/of_two_variables": (FMIN, lambda x: [5.0 + (x[0] - 3.0) ** 2 + (x[1] + 2.0) ** 2], [1, 1]),
    "minimum/maximum_of_two_variables": (FMIN, lambda x: [(x[0] - 3.0) ** 2 + (x[1] + 2.0) ** 2 - 5.0], [1, 1]),
}


def main():
    for name, problem in {**PROBLEMS, **LISTINGS}.items():
        text, end = attempts(*problem)
        print(f"{name}: {text}: {end} with {problem[1](end)}")


if __name__ == "__main__":
    main()
