#!/usr/bin/python3
"""example_in_gnumeric_test.py BUILD-FOLDER: the example workbook in Gnumeric has the values of the test host.

Exits with 77 if Python has no openpyxl.
"""

import os
import subprocess
import sys
import tempfile
from pathlib import Path

try:
    import workbook
except ModuleNotFoundError as missing:
    print("skipped:", missing)
    sys.exit(77)


def calculated(folder, build):
    book = folder / "example.xlsx"
    workbook.make_example(book, "gnumeric")
    subprocess.run(["ssconvert", "--recalc", book, folder / "calculated.xlsx"], check=True, capture_output=True,
                   timeout=120, env=dict(os.environ, GNUMERIC_PLUGIN_PATH=str(build / "gnumeric")))
    return book, workbook.read_values(folder / "calculated.xlsx")


def main():
    build = Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory() as folder:
        book, value = calculated(Path(folder), build)
        different = 0
        for cell, expected in workbook.example_values(book, build / "metrify-sheet"):
            shown = workbook.shown_values(value, cell)
            if shown != expected:
                different += 1
                print(f"{cell.sheet}, row {cell.row}, column {cell.column}: {shown} instead of {expected}")
        sys.exit(1 if different else 0)


if __name__ == "__main__":
    main()
