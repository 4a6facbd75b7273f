#!/usr/bin/env python3
"""Writes the tables of required values in tests/numerics/stated/, one for each routine of the special functions
of which a certain approximation is required, with certain coefficients and tolerances.

The tables in truth/ hold the values of the functions themselves, with which such a routine agrees to seven or eight
digits. These tables hold the values of the approximation itself: the routines are implemented again here, from
their published form and the required constants, in double precision. A change of a digit of a coefficient, or of
the number of steps, changes these values.

A line is the arguments, a colon, and for each output the value, in the shortest digits that read back equal,
and the divisor of its error. The arguments are those of the table in truth/, and some that
are next to a limit of an iteration.
"""
import math
import pathlib

from stated_bessel import BESSEL
from stated_elliptic import ELLIPTIC
from stated_gamma import GAMMA

FOLDER = pathlib.Path(__file__).parent


def points_of_truth(name):
    """Arguments and, for each output, the magnitude that its error is divided by."""
    for line in open(FOLDER / "truth" / f"{name}.txt", encoding="ascii"):
        if not line.startswith("#"):
            arguments, outputs = line.split(" : ")
            yield tuple(map(float, arguments.split())), [float(x) for x in outputs.split()[1::2]]


def scale_of(values):
    return [abs(value) if value != 0.0 else 1.0 for value in values]


def shortest(x):
    text = repr(float(x))
    return text[:-2] if text.endswith(".0") else text


def write(name, function, more_points):
    lines = [f"# {name}: arguments : value scale [value scale ...]; made by make_stated.py"]
    points = dict(points_of_truth(name))
    for arguments in more_points:
        points.setdefault(tuple(map(float, arguments)), None)
    for arguments, scales in points.items():
        values = function(*arguments)
        values = values if isinstance(values, tuple) else (values,)
        if all(math.isfinite(value) for value in values):
            lines.append(" ".join(map(shortest, arguments)) + " : " +
                         " ".join(f"{shortest(value)} {scale:.3g}"
                                  for value, scale in zip(values, scales or scale_of(values))))
    with open(FOLDER / "stated" / f"{name}.txt", "w", newline="\n", encoding="ascii") as out:
        out.write("\n".join(lines) + "\n")
    print(name, len(lines) - 1)


def main():
    for name, (function, more_points) in {**GAMMA, **ELLIPTIC, **BESSEL}.items():
        write("math_func_" + name, function, more_points)


if __name__ == "__main__":
    main()
