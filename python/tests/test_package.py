"""The tables, the version, and what describes the package to other tools."""

import ast
import importlib.metadata
import os
import pathlib
import re
import subprocess
import sys

import metrify
from metrify import _metrify


def test_all_units_are_listed():
    assert len(metrify.units()) == 375


def test_a_unit_has_its_factor_and_exponents():
    (unit,) = (unit for unit in metrify.units() if unit.name == "psi")
    assert unit == ("psi", 0.000145037739690094, 0.0, {"s": -2.0, "kg": 1.0, "m": -1.0})


def test_a_temperature_has_its_offset():
    offsets = {unit.name: unit.offset for unit in metrify.units() if unit.offset}
    assert offsets == {"degC": -273.15, "degF": -459.67}


def test_units_are_found_by_a_part_of_their_name():
    assert [unit.name for unit in metrify.units("fathom")] == ["fathom", "fathoms"]
    assert metrify.units("no such unit") == []


def test_all_functions_are_listed():
    assert len(metrify.functions()) == 89


def test_functions_are_found_by_name_and_description_in_any_case():
    assert [function.name for function in metrify.functions("ASINH")] == ["asinh"]
    assert "asinh" in [function.name for function in metrify.functions("the Inverse of")]
    assert metrify.functions("no such function") == []


def test_the_version_is_that_of_the_command_and_the_metadata():
    command = os.path.join(os.environ["METRIFY_BUILD"], "metrify")
    shown = subprocess.run([command, "--version"], capture_output=True, text=True, check=True).stdout
    assert re.search(r"\b" + re.escape(metrify.__version__) + r"\b", shown)
    assert importlib.metadata.version("metrify") == metrify.__version__


FOLDER = pathlib.Path(metrify.__file__).parent


def files_in(folder):
    # Programs that use the package meanwhile may store its byte code.
    files = (path.relative_to(folder) for path in folder.rglob("*") if path.is_file())
    return {str(path) for path in files if "__pycache__" not in path.parts}


def test_the_installed_package_is_complete(tmp_path):
    subprocess.run(
        ["cmake", "--install", os.environ["METRIFY_BUILD"], "--component", "python", "--prefix", tmp_path],
        check=True,
        stdout=subprocess.DEVNULL,
    )
    installed = tmp_path / "lib" / "python3" / "dist-packages"
    assert files_in(installed) == files_in(FOLDER.parent)
    program = "import metrify; print(metrify.__file__, metrify.cells(1, 'km', 'm')[0])"
    shown = subprocess.run(
        [sys.executable, "-c", program], env={"PYTHONPATH": str(installed)}, capture_output=True, text=True
    )
    assert (shown.stdout, shown.stderr) == (f"{installed}/metrify/__init__.py 1000.0\n", "")


def stub():
    return ast.parse((FOLDER / "_metrify.pyi").read_text(encoding="utf-8"))


def public_names(module):
    return {name for name in vars(module) if not name.startswith("_")}


def test_the_package_says_that_it_has_type_hints():
    assert (FOLDER / "py.typed").is_file()


def test_every_name_of_the_extension_has_type_hints():
    definitions = {node.name for node in stub().body if isinstance(node, (ast.ClassDef, ast.FunctionDef))}
    assert definitions == public_names(_metrify)


def test_every_method_has_type_hints():
    for node in stub().body:
        if isinstance(node, ast.ClassDef) and node.name != "Error":
            hinted = {item.name for item in node.body if isinstance(item, ast.FunctionDef)}
            methods = public_names(getattr(_metrify, node.name))
            assert hinted - {"__init__", "__call__"} == methods


def test_type_hints_have_the_arguments_of_the_functions():
    for node in stub().body:
        if isinstance(node, ast.FunctionDef):
            hinted = [argument.arg for argument in node.args.args + node.args.kwonlyargs]
            signature = getattr(_metrify, node.name).__doc__.splitlines()[0]
            assert re.findall(r"(\w+): ", signature) == hinted, node.name


def test_every_public_name_is_documented():
    for name in metrify.__all__:
        if name != "__version__":
            assert getattr(metrify, name).__doc__, name
