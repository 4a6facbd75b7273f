"""The units and the built-in functions of the language."""

from typing import Dict, List, NamedTuple

from metrify import _metrify

__all__ = ["Function", "Unit", "functions", "units"]


class Unit(NamedTuple):
    """A unit. A quantity that is y in the base system is y * factor + offset in this unit."""

    name: str
    factor: float
    offset: float
    exponents: Dict[str, float]
    """The exponents of the base units, for instance {"m": 1.0, "s": -1.0} for a speed."""


class Function(NamedTuple):
    """A built-in function."""

    name: str
    arguments: str
    """As written between the parentheses."""
    chapter: str
    help: str
    takes: str
    """The units of the arguments, or an empty text."""
    gives: str
    """The units of the result."""
    domain: str
    example: str
    """A line of the language, or a program."""
    answer: str
    """What the listing shows for the example."""


def units(text: str = "") -> List[Unit]:
    """Return the units whose name contains the text, grouped by dimension.

    >>> [unit.name for unit in units("fathom")]
    ['fathom', 'fathoms']
    """
    rows = (Unit(*row) for row in _metrify.unit_rows())
    return [unit for unit in rows if text in unit.name]


def functions(text: str = "") -> List[Function]:
    """Return the functions with the text in their name or description, in any case, chapter by chapter.

    >>> [function.name for function in functions("inverse of sinh")]
    ['asinh']
    """
    wanted = text.casefold()
    rows = (Function(*row) for row in _metrify.function_rows())
    return [row for row in rows if wanted in row.name.casefold() or wanted in row.help.casefold()]
