#!/usr/bin/env python3
"""Writes tests/numerics/stated/searches.txt: how many evaluations each method takes on a function, where the last
one is to the last bit, and with which text it ends. The methods are written down once more, from their published
form and the required constants, in stated_searches.py and stated_systems.py.

A line is the function, its parameter and the method, the start, the number of evaluations, the last point and the
text. Many parameters are chosen so that a required constant decides, and the line says which: with the constant a
twentieth larger or smaller, or one more or less where it is a count, the line would be another.
"""
import math
import pathlib

import stated_searches
import stated_systems
from stated_searches import Failed, Function


def power_64(x):
    for _ in range(6):
        x = x * x
    return x


def first_value_apart(c):
    count = [0]

    def value(_):
        count[0] += 1
        return [1.0 + c if count[0] == 1 else 1.0]
    return value


def bump_at_origin(c):
    """Linear with exact differences at the start 1, 1; around the origin the first value is larger by c."""
    return lambda x: [1024.0 * x[0] + (c if abs(x[0]) < 0.5 and abs(x[1]) < 0.5 else 0.0), 1024.0 * x[1]]


# A function of the parameter gives the function itself. Only + - * are used, whose results are exact everywhere.
FORMULAS = {
    "constant": lambda c: lambda x: [c],
    "line": lambda c: lambda x: [c * x[0]],
    "cubic": lambda c: lambda x: [x[0] * x[0] * x[0] - c],
    "bent": lambda c: lambda x: [(x[0] - c) * (x[0] - c) * (1.0 + 0.1 * x[0]) + 1.0],
    "bent_twice": lambda c: lambda x: [(x[0] - c) * (x[0] - c) * (1.0 + 0.1 * x[0] * x[0]) +
                                       (x[1] - x[0]) * (x[1] - x[0]) * (1.0 + x[1] * x[1]) + 1.0],
    "valley": lambda c: lambda x: [c * (x[1] - x[0] * x[0]) * (x[1] - x[0] * x[0]) + (1.0 - x[0]) * (1.0 - x[0])],
    "first_value_apart": first_value_apart,
    "power_64": lambda c: lambda x: [c * power_64(v) for v in x],
    "squares": lambda c: lambda x: [c * v * v for v in x],
    "bump_at_origin": bump_at_origin,
    "circle_and_parabola": lambda c: lambda x: [x[0] * x[0] + x[1] * x[1] - c, x[1] - x[0] * x[0] + 1.0],
    "valley_system": lambda c: lambda x: [c * (x[1] - x[0] * x[0]), 1.0 - x[0]],
    "three": lambda c: lambda x: [x[0] * x[1] * x[2] - 6.0, x[0] + x[1] + x[2] - 6.0, x[0] * x[0] + x[1] * x[2] - c],
}

METHODS = {
    "root": stated_searches.solve_one,
    "minimum": stated_searches.minimise,
    "newt": stated_systems.newt,
    "broydn": stated_systems.broydn,
}

CASES = [
    # function, parameter, method, start, what decides
    ("constant", 1.0, "root", [0], "the 600 steps of the walk"),
    ("cubic", 3.082, "root", [1], "the tolerance 1e-8, from above"),
    ("cubic", 2.06, "root", [1], "the tolerance 1e-8, from below"),
    ("cubic", 1e4, "root", [1], ""),
    ("cubic", -50.0, "root", [0.5], ""),
    ("cubic", 300.0, "root", [20], ""),
    ("line", -1.0, "minimum", [0], "the 100 passes of the bracketing"),
    ("constant", math.nan, "minimum", [1], ""),
    ("constant", 7.0, "minimum", [5], ""),
    ("bent", 3.09, "minimum", [2], "the relative tolerance 1e-8, from below"),
    ("bent", 3.13, "minimum", [2], "the relative tolerance 1e-8, from above"),
    ("bent", 0.00012, "minimum", [0], "the least tolerance 1e-10, from above"),
    ("bent", 0.00016, "minimum", [0], "the least tolerance 1e-10, from below"),
    ("bent", 100.0, "minimum", [2], ""),
    ("bent", -3.0, "minimum", [-0.2], ""),
    ("bent", 50.0, "minimum", [60], ""),
    ("bent_twice", 1.0, "minimum", [2, 1], "the tolerance 0.0002 of a line search"),
    ("bent_twice", 1.87, "minimum", [2, 1], "the tolerance 1e-8 of the rounds"),
    ("valley", 100.0, "minimum", [-1.2, 1], ""),
    ("valley", 3.0, "minimum", [2, 5], ""),
    ("first_value_apart", 0.999e-8, "minimum", [1, 1], "the tolerance 1e-8 of the rounds, from above"),
    ("first_value_apart", 1.001e-8, "minimum", [1, 1], "the tolerance 1e-8 of the rounds, from below"),
    ("constant", math.nan, "minimum", [1, 1], "the 4000 rounds"),
    ("power_64", 1e130, "newt", [1, 1], "the 200 passes"),
    ("power_64", 1e130, "broydn", [1, 1.5], "the 200 passes"),
    ("squares", 1e30, "newt", [1.68106, 1.68106], "the least change 1e-7 of the numbers, from below"),
    ("squares", 1e30, "newt", [1.67435, 1.67435], "the least change 1e-7 of the numbers, from above"),
    ("squares", 1e30, "broydn", [1.49602, 1.34642], "the least change 1e-7 of the numbers, from below"),
    ("squares", 1e30, "broydn", [1.49005, 1.34104], "the least change 1e-7 of the numbers, from above"),
    ("bump_at_origin", 1.02e-4, "broydn", [1, 1], "the noise 1e-7 that an update passes over, from above"),
    ("bump_at_origin", 1.03e-4, "broydn", [1, 1], "the noise 1e-7 that an update passes over, from below"),
    ("circle_and_parabola", 4.0, "newt", [1, 1], ""),
    ("circle_and_parabola", 4.0, "broydn", [1, 1], ""),
    ("circle_and_parabola", 1e4, "newt", [1, 3], ""),
    ("circle_and_parabola", 1e4, "broydn", [1, 3], ""),
    ("circle_and_parabola", 0.1, "broydn", [1, 3], "an end in a minimum of the squares"),
    ("valley_system", 10.0, "newt", [-1.2, 1], ""),
    ("valley_system", 10.0, "broydn", [-1.2, 1], ""),
    ("valley_system", 1e6, "broydn", [-1.2, 1], ""),
    ("three", 8.0, "newt", [2, 3, 4], ""),
    ("three", 8.0, "broydn", [2, 3, 4], ""),
    ("three", 11.0, "broydn", [-2, 5, 0], ""),
    ("three", 11.0, "newt", [-2, 5, 0], ""),
]


def shortest(x):
    text = repr(float(x))
    return text[:-2] if text.endswith(".0") else text


def line_of(name, parameter, method, start, decided):
    f = Function(FORMULAS[name](parameter), start)
    text = ""
    try:
        good = METHODS[method](f)
        if good is not None:
            text = "good" if good else "bad"
    except Failed as failure:
        text = str(failure)
    return " | ".join([f"{name} {shortest(parameter)} {method}", " ".join(map(shortest, start)),
                       str(len(f.points)), " ".join(map(shortest, f.points[-1])), text, decided]).rstrip()


def main():
    lines = ["# function parameter method | start | evaluations | last point | text | what decides; "
             "made by make_searches.py"]
    lines += [line_of(*case) for case in CASES]
    path = pathlib.Path(__file__).parent / "stated" / "searches.txt"
    with open(path, "w", newline="\n", encoding="ascii") as out:
        out.write("\n".join(lines) + "\n")
    print(len(lines) - 1, "searches")


if __name__ == "__main__":
    main()
