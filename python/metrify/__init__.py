"""A calculator with units.

>>> import metrify
>>> metrify.cells(3.5, "ft", "m")
(1.0668, 'm\\n\\n')

convert() and Plan convert numbers and arrays in full precision. run() and Calculator run programs of the language.
cells() gives the cells of the worksheet function. units() and functions() list the vocabulary. A text that the
language refuses raises Error.
"""

from metrify._metrify import Calculator, Error, Plan, __version__, cells, convert, run
from metrify.tables import Function, Unit, functions, units

__all__ = [
    "Calculator",
    "Error",
    "Function",
    "Plan",
    "Unit",
    "__version__",
    "cells",
    "convert",
    "functions",
    "run",
    "units",
]
