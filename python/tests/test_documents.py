"""The examples in docstrings and documents."""

import doctest
import os
import pathlib
import re
import subprocess
import sys

import metrify
import metrify.tables
import pytest
from metrify import _metrify

SOURCES = pathlib.Path(__file__).resolve().parents[2]


@pytest.mark.parametrize("module", [metrify, metrify.tables])
def test_examples_in_docstrings_give_what_they_show(module):
    names = {**vars(_metrify), **vars(module)}
    assert doctest.testmod(module, globs=names).failed == 0


@pytest.mark.parametrize("name", ["convert", "Plan", "run", "cells", "Calculator"])
def test_examples_in_docstrings_of_the_extension_give_what_they_show(name):
    examples = doctest.DocTestParser().get_doctest(
        getattr(_metrify, name).__doc__, dict(vars(_metrify)), name, None, None
    )
    result = doctest.DocTestRunner().run(examples)
    assert result.attempted > 0 and result.failed == 0


@pytest.mark.parametrize("document", ["python.md", "scaling.md"])
def test_examples_in_the_documents_give_what_they_show(document):
    result = doctest.testfile(str(SOURCES / "docs" / document), module_relative=False)
    assert result.attempted > 5 and result.failed == 0


def console_blocks(document):
    """Blocks of commands, each as a list of pairs of a command and its output."""
    text = (SOURCES / "docs" / document).read_text(encoding="utf-8")
    for block in re.findall(r"^```console\n(.*?)^```", text, re.M | re.S):
        examples = re.split(r"^\$ ", block, flags=re.M)[1:]
        yield [re.split(r"(?<!\\)\n", example, maxsplit=1) for example in examples]


def run_block(commands, folder):
    """Run the commands in one shell and return their outputs, without the warnings of a machine under load."""
    script = "\nprintf '\\0'\n".join(commands)
    path = os.path.dirname(sys.executable) + os.pathsep + os.environ["PATH"]
    result = subprocess.run(
        ["bash", "-c", script],
        cwd=folder,
        env={**os.environ, "PATH": path},
        stdout=subprocess.PIPE,
        text=True,
    )
    return result.stdout.split("\0")


@pytest.mark.parametrize("document", ["python.md", "scaling.md"])
def test_commands_in_the_documents_give_what_they_show(document, tmp_path):
    for name in ("docs", "examples", "python"):
        (tmp_path / name).symlink_to(SOURCES / name)
    (tmp_path / "build").mkdir()
    (tmp_path / "build" / "release").symlink_to(os.environ["METRIFY_BUILD"])
    blocks = list(console_blocks(document))
    assert blocks
    for block in blocks:
        outputs = run_block([command for command, _ in block], tmp_path)
        assert list(zip([command for command, _ in block], outputs)) == [tuple(example) for example in block]
