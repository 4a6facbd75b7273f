#!/usr/bin/python3
"""calc_test.py SHEET_PROGRAM METRIFY EXTENSION: tests of the extension in LibreOffice Calc.

Exits with 77 if there is no extension, since it is made from packages that not every machine has.
"""

import csv
import os
import re
import subprocess
import sys
import tempfile
import time
import unittest
import zipfile
from pathlib import Path
from xml.etree import ElementTree

HERE = Path(__file__).resolve().parent
SOURCES = HERE.parents[2]
sys.path[:0] = [str(HERE), str(HERE.parent)]

import uno  # noqa: E402, F401: makes the names of the office known to Python
import workbook  # noqa: E402
from calc import CSV, Calc, Office  # noqa: E402
from com.sun.star.beans import PropertyValue  # noqa: E402
from openpyxl import Workbook  # noqa: E402

METRIFY = "ORG.METRIFY.SHEET.METRIFY"
LISTING = "ORG.METRIFY.SHEET.METRIFYLISTING"

FORMULA_FILES = (SOURCES / "tests/sheet/formulas.txt", HERE.parent / "gnumeric/formulas.txt", HERE / "formulas.txt")

# Formulas that Calc calculates differently, with the value in one cell and the values of the array.
OTHER_IN_CALC = {
    # It does not accept that the number is left out.
    '=Metrify(,"ft","m")': ("#VALUE!", ["#VALUE!", "#VALUE!"]),
    '=Metrify(,"","")': ("#VALUE!", ["#VALUE!", "#VALUE!"]),
    "=Metrify(,,)": ("#VALUE!", ["#VALUE!", "#VALUE!"]),
    "=Metrify()": ("#VALUE!", ["#VALUE!", "#VALUE!"]),
    # In an array formula it takes the first number of a range.
    '=Metrify(AB1:AB2,"ft","m")': ("#VALUE!", [0.0, "m\n\n"]),
    # It passes numbers and truth values, and an empty cell as 0.
    "=Metrify(1,2,3)": ("ERROR: InUnits is not a text.\n", ["ERROR: InUnits is not a text.\n", ""]),
    '=Metrify(1,TRUE,"m")': ("ERROR: InUnits is not a text.\n", ["ERROR: InUnits is not a text.\n", ""]),
    '=Metrify(1,"m",FALSE)': (1.0, [1.0, "m\n\n"]),
    # Texts have no code page.
    '=Metrify(1,"\u03a9","ohm")': (
        "ERROR: Syntax error or undefined variable near or in '\u03a9'.\n\n",
        ["ERROR: Syntax error or undefined variable near or in '\u03a9'.\n\n", ""]),
    '=Metrify(1,"\u65e5\u672c","m")': (
        "ERROR: Syntax error or undefined variable near or in '\u65e5\u672c'.\n\n",
        ["ERROR: Syntax error or undefined variable near or in '\u65e5\u672c'.\n\n", ""]),
    # Its sums have another last digit.
    '=SUM(Metrify(3.5,"ft","m"),1)': (2.0668, [2.0668, 2.0668]),
}

# Unit arguments that are no texts of one cell. D1 is empty, D2 and D3 hold texts.
UNIT_KINDS = [
    (f'={METRIFY}(1,D1,"")', [1.0, "\n\n"]),
    (f'={METRIFY}(1,"ft",D1)', [0.3048, "m\n\n"]),
    (f"={METRIFY}(1,D2,D3)", [12.0, "in\n\n"]),
    (f'={METRIFY}(1,5,"m")', ["ERROR: InUnits is not a text.\n", ""]),
    (f'={METRIFY}(1,"ft",5)', ["ERROR: OutUnits is not a text.\n", ""]),
    (f'={METRIFY}(1,TRUE,"m")', ["ERROR: InUnits is not a text.\n", ""]),
    (f'={METRIFY}(1,"ft",TRUE)', ["ERROR: OutUnits is not a text.\n", ""]),
    (f'={METRIFY}(1,D2:D3,"m")', ["#VALUE!", "#VALUE!"]),
    (f'={METRIFY}(1,"ft",{{"m";"in"}})', ["#VALUE!", "#VALUE!"]),
    (f'={METRIFY}(1,"ft"&CHAR(0),"m")', ["#VALUE!", "#VALUE!"]),
    (f'={METRIFY}(1,"ft","\u65e5")', ["ERROR IN REQUESTED OUTPUT: '\u65e5' not recognized.\n", ""]),
]
UNIT_CELLS = {"D2": "ft", "D3": "in"}

# A program in D1:E4: a line in two cells, an empty row, a line and a number.
PROGRAM_CELLS = {"D1": "x =", "E1": "3 ft", "D3": "x; in", "D4": 7}
LISTINGS = [
    (f'={LISTING}("x = 3 ft"&CHAR(10)&"x; in")',
     ["[  1 ] x = 3 ft", "       x = 0.9144 m", "", "[  2 ] x; in", "        = 36 in", ""]),
    (f"={LISTING}(D1:E4)",
     ["[  1 ] x = 3 ft", "       x = 0.9144 m", "", "[  2 ] x; in", "        = 36 in", "",
      "[  3 ] 7", "        = 7 ", ""]),
    (f'={LISTING}("3 xyz")', ["[  1 ] 3 xyz", "       ERROR: 'xyz' undefined.", ""]),
    (f'={LISTING}("")', [""]),
    (f"={LISTING}(D2)", [""]),
]


def write_cases(file, formulas):
    """All cases in one workbook, since a start of Calc takes longer than the calculation."""
    book = Workbook()
    book.remove(book.active)
    workbook.add_formulas(book, formulas, METRIFY)
    sheet = book.create_sheet("kinds")
    for cell, value in UNIT_CELLS.items():
        sheet[cell] = value
    for row, (formula, _) in enumerate(UNIT_KINDS, 1):
        workbook.add_formula(sheet, row, 1, formula, columns=2)
    for number, (formula, lines) in enumerate(LISTINGS, 1):
        sheet = book.create_sheet(f"listing {number}")
        for cell, value in PROGRAM_CELLS.items():
            sheet[cell] = value
        workbook.add_formula(sheet, 1, 1, formula, rows=len(lines) + 1)
    book.save(file)


class InCalc(unittest.TestCase):
    """Files that are opened by LibreOffice."""

    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.calc = Calc(EXTENSION)
        cls.addClassCleanup(cls.calc.close)
        cls.formulas = workbook.read_formulas(*FORMULA_FILES)
        cls.cases = cls.calc.folder / "cases.xlsx"
        write_cases(cls.cases, cls.formulas)
        cls.value = staticmethod(workbook.read_values(cls.calc.convert(cls.cases, "xlsx")))

    def assert_expected(self, value):
        host_values = workbook.host_values(SHEET_PROGRAM, self.formulas)
        for row, (formula, cells) in enumerate(zip(self.formulas, host_values), 1):
            # A single value fills both cells of an array.
            single, array = OTHER_IN_CALC.get(formula, (cells[0], (cells * 2)[:2]))
            with self.subTest(formula):
                self.assertEqual(value("single", row, 1), single)
                self.assertEqual([value("array", row, 1), value("array", row, 2)], array)

    def test_formulas_have_the_values_of_the_test_host(self):
        self.assertGreater(len(self.formulas), 240)
        self.assert_expected(self.value)

    def test_a_unit_is_a_text_or_an_empty_cell(self):
        for row, (formula, cells) in enumerate(UNIT_KINDS, 1):
            with self.subTest(formula):
                self.assertEqual([self.value("kinds", row, 1), self.value("kinds", row, 2)], cells)

    def test_a_listing_has_one_line_per_cell(self):
        for number, (formula, lines) in enumerate(LISTINGS, 1):
            with self.subTest(formula):
                column = [self.value(f"listing {number}", row, 1) for row in range(1, len(lines) + 2)]
                # A result of one cell fills a whole column.
                self.assertEqual(column, lines + ["#N/A" if len(lines) > 1 else lines[0]])

    def test_a_saved_document_keeps_its_functions(self):
        document = self.calc.convert(self.cases, "fods")
        text = document.read_text(encoding="utf-8")
        self.assertIn(f"of:={METRIFY}(3.5;&quot;ft&quot;;&quot;m&quot;)", text)
        self.assertIn(f"of:={LISTING}([.D1:.E4])", text)
        # Values that are stored in the document do not count.
        document.write_text(re.sub(r' (office|calcext):(string-)?value(-type)?="[^"]*"', "", text), encoding="utf-8")
        self.assert_expected(workbook.read_values(self.calc.convert(document, "xlsx")))

    def test_typed_formulas_have_short_names(self):
        source = self.calc.folder / "typed.csv"
        with open(source, "w", newline="", encoding="utf-8") as file:
            csv.writer(file).writerow(['=METRIFY(3.5;"ft";"m")', '=metrify(3.5;"ft")', '=METRIFYLISTING("2 ft; in")'])
        with open(self.calc.convert(source, CSV), newline="", encoding="utf-8") as file:
            self.assertEqual(list(csv.reader(file)), [["1.0668", "1.0668", "[  1 ] 2 ft; in"]])

    def test_the_example_workbook_has_the_values_of_the_test_host(self):
        book = self.calc.folder / "example.xlsx"
        workbook.make_example(book, "calc")
        value = workbook.read_values(self.calc.convert(book, "xlsx"))
        for cell, expected in workbook.example_values(book, SHEET_PROGRAM):
            with self.subTest(sheet=cell.sheet, row=cell.row, column=cell.column):
                self.assertEqual(workbook.shown_values(value, cell), expected)


class InOffice(unittest.TestCase):
    """What the office knows of the extension."""

    @classmethod
    def setUpClass(cls):
        cls.calc = calc = Calc(EXTENSION)
        cls.addClassCleanup(calc.close)
        # The browser writes down what it is to show.
        programs = calc.folder / "programs"
        programs.mkdir()
        cls.shown = calc.folder / "shown"
        browser = programs / "xdg-open"
        browser.write_text(f'#!/bin/sh\nprintf %s "$1" >{cls.shown}.new && mv {cls.shown}.new {cls.shown}\n')
        browser.chmod(0o755)
        cls.office = Office(calc, programs)
        cls.addClassCleanup(cls.office.close)

    def menu(self, name):
        path = PropertyValue(Name="nodepath", Value="/org.openoffice.Office.Addons/AddonUI/" + name)
        return self.office.new("com.sun.star.configuration.ConfigurationProvider").createInstanceWithArguments(
            "com.sun.star.configuration.ConfigurationAccess", (path,))

    def test_the_function_wizard_describes_the_functions_and_their_arguments(self):
        functions = self.office.new("com.sun.star.sheet.FunctionDescriptions")
        described = [{item.Name: item.Value for item in functions.getByIndex(i)} for i in range(functions.Count)]
        ours = {function["Name"]: function for function in described if function["Name"].startswith("METRIFY")}
        self.assertEqual(sorted(ours), ["METRIFY", "METRIFYLISTING"])
        self.assertTrue(ours["METRIFY"]["Description"].startswith("Converts Val from InUnits to OutUnits."))
        self.assertTrue(ours["METRIFYLISTING"]["Description"].startswith("Runs a program of the calculator"))
        self.assertEqual(
            [(argument.Name, argument.Description, argument.IsOptional) for argument in ours["METRIFY"]["Arguments"]],
            [("Val", "Input value expressed in InUnits to be converted to OutUnits (number)", False),
             ("InUnits", "Units of the input value (text)", True),
             ("OutUnits", "Units to convert input value to (text)", True)])
        self.assertEqual([argument.Name for argument in ours["METRIFYLISTING"]["Arguments"]], ["Program"])

    def test_the_help_menu_shows_the_page_of_the_units(self):
        menu = self.menu("OfficeHelp")
        self.assertEqual(menu.getByName("org.metrify.Units").URL, "service:org.metrify.MenuItems?units")
        self.office.new("org.metrify.MenuItems").trigger("units")
        for _ in range(720):
            if self.shown.exists():
                break
            time.sleep(0.25)
        self.assertTrue(self.shown.read_text().endswith("/metrify.oxt/units.html"))

    def test_a_menu_item_recognises_the_formulas_of_workbooks_from_other_programs(self):
        self.assertEqual(self.menu("AddonMenu").getByName("org.metrify.Formulas").URL,
                         "service:org.metrify.MenuItems?formulas")
        for program in ("excel", "gnumeric"):
            with self.subTest(program):
                book = self.calc.folder / (program + ".xlsx")
                workbook.make_example(book, program)
                desktop = self.office.new("com.sun.star.frame.Desktop")
                document = desktop.loadComponentFromURL(book.as_uri(), "_blank", 0, ())
                places = (("Converter", "E5"), ("Converter", "F5"), ("Pump", "D5"), ("Errors", "B14"))
                cells = [document.Sheets.getByName(sheet).getCellRangeByName(cell) for sheet, cell in places]
                self.assertEqual([cell.String for cell in cells], ["#NAME?", "#NAME?", "#NAME?", "#DIV/0!"])
                self.office.new("org.metrify.MenuItems").trigger("formulas")
                self.assertEqual([cell.String for cell in cells], ["179.832", "cm\n\n", "5.68", "#DIV/0!"])
                document.close(True)


class Package(unittest.TestCase):
    """The file of the extension."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        with zipfile.ZipFile(EXTENSION) as archive:
            archive.extractall(cls.folder)

    def test_it_has_the_files_of_its_manifest(self):
        name = "{http://openoffice.org/2001/manifest}"
        entries = ElementTree.parse(self.folder / "META-INF/manifest.xml").getroot().findall(name + "file-entry")
        self.assertEqual(len(entries), 4)
        for entry in entries:
            self.assertTrue((self.folder / entry.get(name + "full-path")).is_file())

    def test_the_component_contains_the_calculator(self):
        dynamic = subprocess.run(["readelf", "-d", self.folder / "metrify.so"], capture_output=True, text=True,
                                 check=True).stdout
        self.assertNotIn("libmetrify", dynamic)
        self.assertNotIn("RPATH", dynamic)
        self.assertNotIn("RUNPATH", dynamic)

    def test_the_component_shows_its_entry_and_types_of_exceptions_only(self):
        symbols = subprocess.run(["nm", "-D", "--defined-only", self.folder / "metrify.so"], capture_output=True,
                                 text=True, check=True).stdout
        functions = [line.split()[2] for line in symbols.splitlines() if line.split()[1] in "TtWw"]
        self.assertEqual(functions, ["component_getFactory"])

    def test_the_page_of_the_units_has_all_units(self):
        page = (self.folder / "units.html").read_text(encoding="utf-8")
        rows = re.findall(r"<tr><td>(.*?)</td><td>(.*?)</td></tr>", page)
        shown = {name: value.strip() for names, value in rows for name in re.findall("<code>(.*?)</code>", names)}
        # The first line is the heading.
        listed = subprocess.run([METRIFY_PROGRAM, "units"], capture_output=True, text=True, check=True).stdout
        self.assertEqual(sorted(shown), sorted(line.split()[0] for line in listed.splitlines()[1:]))
        self.assertEqual([shown[name] for name in ("ft", "psi", "degC", "%")],
                         ["0.3048 m", "6894.76 kg / m s^2", "274.15 degK", "0.01"])

    def test_a_user_installs_it(self):
        # The program refuses to work for root.
        user = ["runuser", "-u", "nobody", "--"] if os.getuid() == 0 else []
        home = self.folder / "home"
        home.mkdir()
        (home / "metrify.oxt").write_bytes(Path(EXTENSION).read_bytes())
        if user:
            subprocess.run(["chown", "-R", "nobody", home], check=True)
            self.folder.chmod(0o755)
        profile = "-env:UserInstallation=" + (home / "profile").as_uri()
        for arguments, expected in ((["add", home / "metrify.oxt"], ""), (["list"], "Identifier: org.metrify")):
            command = [*user, "env", f"HOME={home}", "timeout", "-k", "5", "240", "unopkg", *arguments, profile]
            # The user may not be allowed to enter the folder of the build.
            run = subprocess.run(command, capture_output=True, text=True, check=False, cwd=home)
            self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
            self.assertIn(expected, run.stdout)


if __name__ == "__main__":
    SHEET_PROGRAM, METRIFY_PROGRAM, EXTENSION = sys.argv[1:4]
    if not Path(EXTENSION).exists():
        print("skipped: no", EXTENSION)
        sys.exit(77)
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
