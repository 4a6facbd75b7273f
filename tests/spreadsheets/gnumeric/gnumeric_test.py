#!/usr/bin/env python3
"""gnumeric_test.py BUILD-FOLDER [TEST...]: runs the add-in in Gnumeric and compares every cell with metrify-sheet."""

import collections
import os
import re
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
import zipfile
from pathlib import Path
from xml.sax.saxutils import escape

TESTS = Path(__file__).resolve().parents[2]
BUILD = Path(sys.argv.pop(1)).resolve()
FAMILIES = ("narrow", "wide")
MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
# An export of the add-in to which the host returns results, by the family of the function.
AUTO_FREE = {"narrow": "xlAutoFree", "wide": "xlAutoFree12"}

Entry = collections.namedtuple("Entry", "row column formula columns")  # columns: 0, or those of an array formula


def formulas_of_files():
    lines = []
    for path in (TESTS / "sheet" / "formulas.txt", TESTS / "spreadsheets" / "gnumeric" / "formulas.txt"):
        lines += path.read_text(encoding="utf-8").splitlines()
    lines.remove("=1+")  # not a formula
    return lines


def column_name(column):
    return (column_name(column // 26 - 1) if column >= 26 else "") + chr(ord("A") + column % 26)


def workbook_of(entries):
    def cell(entry):
        size = f' Rows="1" Cols="{entry.columns}"' if entry.columns else ""
        return f'<gnm:Cell Row="{entry.row}" Col="{entry.column}"{size}>{escape(entry.formula)}</gnm:Cell>'

    return (
        '<?xml version="1.0" encoding="UTF-8"?>'
        '<gnm:Workbook xmlns:gnm="http://www.gnumeric.org/v10.dtd">'
        "<gnm:SheetNameIndex><gnm:SheetName>Sheet</gnm:SheetName></gnm:SheetNameIndex>"
        '<gnm:Sheets><gnm:Sheet><gnm:Name>Sheet</gnm:Name><gnm:MaxCol>255</gnm:MaxCol><gnm:MaxRow>65535</gnm:MaxRow>'
        "<gnm:Cells>" + "\n".join(map(cell, entries)) + "</gnm:Cells></gnm:Sheet></gnm:Sheets></gnm:Workbook>"
    )


def c_text(text):
    """A text as metrify-sheet prints it."""
    escapes = {"\\": "\\\\", '"': '\\"', "\n": "\\n", "\t": "\\t", "\r": "\\r"}
    return '"' + "".join(escapes.get(c, c) for c in text) + '"'


def number_text(text):
    """One text for each number, however it was written."""
    return repr(float(text))


def comparable(cell):
    """A cell as metrify-sheet prints it, with numbers as number_text writes them."""
    return number_text(cell) if re.match("[-0-9]", cell) else cell


def cells_of_workbook(path):
    """The cells of an .xlsx file by their names, comparable with those of metrify-sheet."""
    with zipfile.ZipFile(path) as archive:
        sheet = ElementTree.fromstring(archive.read("xl/worksheets/sheet1.xml"))
        strings = []
        if "xl/sharedStrings.xml" in archive.namelist():
            table = ElementTree.fromstring(archive.read("xl/sharedStrings.xml"))
            strings = ["".join(part.text or "" for part in item.iter(MAIN + "t")) for item in table]
    cells = {}
    for cell in sheet.iter(MAIN + "c"):
        value = cell.find(MAIN + "v")
        text = (value.text or "") if value is not None else ""
        kind = cell.get("t", "n")
        if kind == "s":
            cells[cell.get("r")] = c_text(strings[int(text)])
        elif kind == "str":
            cells[cell.get("r")] = c_text(text)
        elif kind == "b":
            cells[cell.get("r")] = "TRUE" if text == "1" else "FALSE"
        elif kind == "n":
            cells[cell.get("r")] = number_text(text)
        else:
            cells[cell.get("r")] = text
    return cells


def environment(family, **more):
    return {"PATH": os.environ["PATH"], "GNUMERIC_PLUGIN_PATH": str(BUILD / "gnumeric"),
            "METRIFY_GNUMERIC": family, **more}


class Calculation(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def calculate(self, family, entries, *tool, **variables):
        """The calculated cells, and what Gnumeric wrote to its standard error."""
        given, calculated = self.folder / "given.gnumeric", self.folder / "calculated.xlsx"
        given.write_text(workbook_of(entries), encoding="utf-8")
        run = subprocess.run([*tool, "ssconvert", "--recalc", given, calculated], env=environment(family, **variables),
                             stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=300)
        self.assertEqual(run.returncode, 0, run.stderr)
        return cells_of_workbook(calculated), run.stderr

    def expected(self, family, formulas):
        """The comparable cells of each formula in metrify-sheet."""
        run = subprocess.run([BUILD / "metrify-sheet", f"--{family}", "-"], input="\n".join(formulas) + "\n",
                             capture_output=True, encoding="utf-8", check=True, timeout=300)
        rows = [[comparable(cell) for cell in line.split("\t")] for line in run.stdout.split("\n")[:-1]]
        self.assertEqual(len(rows), len(formulas))
        return rows

    def compare(self, found, wanted):
        different = [f"{name}: {found.get(name)} instead of {value} for {formula}"
                     for name, (value, formula) in wanted.items() if found.get(name) != value]
        self.assertEqual(different, [])


class Gnumeric(Calculation):
    def test_formulas_in_single_cells(self):
        formulas = formulas_of_files()
        self.assertGreaterEqual(len(formulas), 121)
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, [Entry(i, 0, f, 0) for i, f in enumerate(formulas)])
                rows = self.expected(family, formulas)
                self.compare(cells, {f"A{i + 1}": (row[0], formulas[i]) for i, row in enumerate(rows)})

    def test_formulas_in_arrays_of_two_cells(self):
        formulas = formulas_of_files()
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, [Entry(i, 0, f, 2) for i, f in enumerate(formulas)])
                rows = self.expected(family, formulas)
                # A single value fills both cells.
                self.compare(cells, {f"{name}{i + 1}": (row[min(column, len(row) - 1)], formulas[i])
                                     for i, row in enumerate(rows) for column, name in enumerate("AB")})

    def test_errors_are_passed_to_other_cells_and_texts_stay_texts(self):
        entries = [Entry(0, 0, '=Metrify(1/0,"ft","m")', 0), Entry(0, 1, "=ERROR.TYPE(A1)", 0),
                   Entry(1, 0, '=Metrify("one","ft","m")', 0), Entry(1, 1, "=ERROR.TYPE(A2)", 0),
                   Entry(2, 0, '=Metrify(1,"xyz","m")', 0), Entry(2, 1, "=ISTEXT(A3)", 0),
                   Entry(3, 0, '=Metrify(1,"ft","m")', 0), Entry(3, 1, "=ISNUMBER(A4)", 0)]
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, entries)
                self.assertEqual([cells[f"B{row}"] for row in range(1, 5)], ["2.0", "3.0", "TRUE", "TRUE"])

    def test_a_result_beyond_the_largest_number_is_an_error(self):
        formula = '=Metrify(1e308,"km","mm")'
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, [Entry(0, 0, formula, 0)])
                self.assertEqual(cells["A1"], "#NUM!")
                self.assertEqual(self.expected(family, [formula])[0][0], "inf")

    def test_ten_thousand_cells(self):
        units = [("ft", "m"), ("degC", "degF"), ("lb", "kg"), ("mi/hr", "m/s"), ("psi", "Pa"), ("m", "kg"), ("xyz", "m")]
        formulas = ['=Metrify({},"{}","{}")'.format(i * 0.37, *units[i % len(units)]) for i in range(10000)]
        for family in FAMILIES:
            with self.subTest(family):
                entries = [Entry(i // 50, i % 50, f, 0) for i, f in enumerate(formulas)]
                cells, _ = self.calculate(family, entries)
                rows = self.expected(family, formulas)
                self.assertEqual(len(cells), 10000)
                self.compare(cells, {f"{column_name(i % 50)}{i // 50 + 1}": (row[0], formulas[i])
                                     for i, row in enumerate(rows)})

    def test_a_file_with_separators(self):
        (self.folder / "in.csv").write_text('1,"=Metrify(A1,""xyz"",""m"")","=INDEX(Metrify(3,""ft"",""in""),1)"\n')
        for family in FAMILIES:
            with self.subTest(family):
                subprocess.run(["ssconvert", "--recalc", "in.csv", "out.csv"], cwd=self.folder, env=environment(family),
                               capture_output=True, check=True, timeout=60)
                self.assertEqual((self.folder / "out.csv").read_text(), "1,\"ERROR: 'xyz' undefined.\n\n\",36\n")

    def test_texts_of_arguments_are_cut_at_255_bytes(self):
        # Gnumeric passes 254 blanks and the first letter of a unit that does not exist.
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, [Entry(0, 0, '=Metrify(1,REPT(" ",254)&"mq","m")', 0)])
                self.assertEqual(cells["A1"], "1.0")

    def test_texts_of_results_are_cut_at_255_bytes(self):
        for family in FAMILIES:
            with self.subTest(family):
                cells, _ = self.calculate(family, [Entry(0, 0, '=Metrify(1,REPT("x",250),"m")', 0)])
                self.assertEqual(cells["A1"], c_text("ERROR: '" + 247 * "x"))

    def test_gnumeric_opens_and_closes_the_add_in_and_gives_its_results_back(self):
        entries = [Entry(0, 0, '=Metrify(1,"m","ft")', 0), Entry(1, 0, '=Metrify("one","m","ft")', 0),
                   Entry(2, 0, '=Metrify(1,"m","kg")', 0)]
        for family in FAMILIES:
            with self.subTest(family):
                _, errors = self.calculate(family, entries, METRIFY_GNUMERIC_LOG="1")
                log = [line.removeprefix("Metrify: ") for line in errors.splitlines() if line.startswith("Metrify: ")]
                opening, closing = log.index("152 gives 0"), log.index("158 gives 0")  # the menu is added, deleted
                self.assertEqual(closing, len(log) - 1)
                calls = [line for line in log[opening:closing] if re.match("Metrify_|xlAutoFree", line)]
                # Gnumeric calculates the sheet once when it reads it, and once more for --recalc. The text "one" is no
                # number, so the add-in is not called for it.
                entry = {"narrow": "Metrify_4", "wide": "Metrify_12"}[family]
                self.assertEqual(calls, [entry, f"{AUTO_FREE[family]} leaves type 0"] * 4)
                # Gnumeric registers the function only, the bridge the commands.
                self.assertEqual(log.count("149 gives 0"), 4)
                self.assertIn("Loaded 1 function ", errors)


class Memory(Calculation):
    """Under valgrind, no error and no leak comes from our code."""

    def errors_of(self, report):
        """The errors in our code or in memory of ours."""
        ours = str(BUILD)
        system = re.compile(r"/(vgpreload\S*|libc|libstdc\+\+|libgcc_s|libm|ld-linux\S*)[-.]")
        found = []
        for error in ElementTree.parse(report).getroot().iter("error"):
            # A second stack tells where the memory was allocated that an access missed.
            for stack in error.findall("stack"):
                objects = [frame.findtext("obj", "") for frame in stack]
                first = next((name for name in objects if not system.search(name)), "")
                if first.startswith(ours):
                    found.append(ElementTree.tostring(error, "unicode"))
        return found

    def check(self, family):
        report = self.folder / "report.xml"
        entries = [Entry(i, 0, formula, 2) for i, formula in enumerate(formulas_of_files())]
        self.calculate(family, entries, "valgrind", "--quiet", "--leak-check=full", "--show-leak-kinds=definite",
                       "--keep-debuginfo=yes", "--xml=yes", f"--xml-file={report}")
        self.assertEqual(self.errors_of(report), [])

    def test_narrow(self):
        self.check("narrow")

    def test_wide(self):
        self.check("wide")


if __name__ == "__main__":
    unittest.main()
