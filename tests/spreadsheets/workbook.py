"""Workbooks with formulas, their values, and the values that the test host gives."""

import ast
import re
import subprocess
from dataclasses import dataclass
from pathlib import Path

from openpyxl import load_workbook

EXAMPLE = Path(__file__).resolve().parents[2] / "examples/workbook/make_workbook"
FUNCTION = re.compile(r"\b(org\.metrify\.sheet\.)?metrify\(", re.IGNORECASE)


def read_formulas(*files):
    """The lines of the files that the test host takes for formulas with the worksheet function."""
    lines = []
    for name in files:
        with open(name, encoding="utf-8") as file:
            lines += [line.rstrip("\n") for line in file]
    return [line for line in lines if FUNCTION.search(line)]


def host_values(sheet_program, formulas):
    """For each formula the cells of its result: numbers, texts, truth values as numbers, and errors as `#NAME?`."""
    run = subprocess.run([sheet_program, "-"], input="\n".join(formulas) + "\n", text=True, capture_output=True,
                         check=False)
    rows = [[cell_value(cell) for cell in line.split("\t")] for line in run.stdout.splitlines()]
    if len(rows) != len(formulas):
        raise AssertionError(f"{len(rows)} rows for {len(formulas)} formulas: {run.stderr}")
    return rows


def cell_value(text):
    if text.startswith('"'):
        return ast.literal_eval(text)
    if text.startswith("#"):
        return text
    return 1.0 if text == "TRUE" else 0.0 if text == "FALSE" else float(text)


def add_formula(sheet, row, column, formula, rows=1, columns=1):
    """Enters a formula, as an array formula if it fills several cells."""
    first = sheet.cell(row, column, formula)
    if rows * columns > 1:
        last = sheet.cell(row + rows - 1, column + columns - 1)
        sheet.formula_attributes[first.coordinate] = {"t": "array", "ref": f"{first.coordinate}:{last.coordinate}"}


def with_function(formula, name):
    """The formula with another name of the worksheet function."""
    return FUNCTION.sub(lambda _: name + "(", formula)


def add_formulas(book, formulas, name):
    """A sheet `single` with a formula per row, and a sheet `array` with the same over two cells."""
    for title, columns in (("single", 1), ("array", 2)):
        sheet = book.create_sheet(title)
        for row, formula in enumerate(formulas, 1):
            add_formula(sheet, row, 1, with_function(formula, name), columns=columns)


def read_values(file):
    """The values of a workbook: a function of the sheet's title, the row and the column. An empty cell is ""."""
    book = load_workbook(file, data_only=True)

    def value(title, row, column):
        value = book[title].cell(row, column).value
        if value is None:
            return ""
        return float(value) if isinstance(value, (int, bool)) else value

    return value


@dataclass
class FormulaCell:
    sheet: str
    row: int
    column: int
    columns: int  # 2 for an array formula
    formula: str


def formulas_of(file):
    """The formulas of a workbook with the worksheet function, by its short name. References are replaced by the
    values of their cells."""
    found = []
    for sheet in load_workbook(file):
        for cell in (cell for row in sheet.iter_rows() for cell in row):
            if cell.data_type == "f" and FUNCTION.search(cell.value):
                columns = 2 if cell.coordinate in sheet.formula_attributes else 1
                formula = with_function(with_values(cell.value, sheet), "Metrify")
                found.append(FormulaCell(sheet.title, cell.row, cell.column, columns, formula))
    return found


REFERENCE = re.compile(r'("[^"]*")|\$?([A-Z]{1,2})\$?([0-9]+)\b')


def with_values(formula, sheet):
    def literal(match):
        if match[1]:
            return match[1]
        value = sheet[match[2] + match[3]].value
        if value is None:
            return '""'
        return '"' + value.replace('"', '""') + '"' if isinstance(value, str) else repr(value)

    return REFERENCE.sub(literal, formula)


def make_example(file, program):
    """Writes the example workbook for a program."""
    subprocess.run([EXAMPLE, "--for", program, file], check=True)


def example_values(file, sheet_program):
    """The cells of the example workbook with the function, and the values that the test host gives for them."""
    cells = formulas_of(file)
    if len(cells) < 80:
        raise AssertionError(f"{len(cells)} cells with the function")
    results = host_values(sheet_program, [cell.formula for cell in cells])
    return [(cell, (result * 2)[:cell.columns]) for cell, result in zip(cells, results)]


def shown_values(value, cell):
    """The values of a formula's cells in a calculated workbook."""
    return [value(cell.sheet, cell.row, cell.column + i) for i in range(cell.columns)]
