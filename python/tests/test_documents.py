"""The examples in docstrings and documents."""

import doctest
import os
import pathlib
import re
import subprocess

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


def test_examples_in_the_document_give_what_they_show():
    result = doctest.testfile(str(SOURCES / "docs" / "python.md"), module_relative=False)
    assert result.attempted > 10 and result.failed == 0


# Blocks of commands with their output, which run in a folder of their own, one after the other.
def console_examples(document):
    text = (SOURCES / "docs" / document).read_text(encoding="utf-8")
    for block in re.findall(r"^```console\n(.*?)^```", text, re.M | re.S):
        for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
            lines = re.split(r"(?<!\\)\n", part, maxsplit=1)
            yield lines[0], lines[1]


@pytest.mark.parametrize("document", ["python.md"])
def test_commands_in_the_documents_give_what_they_show(document, tmp_path):
    build = pathlib.Path(os.environ["METRIFY_BUILD"])
    for name in ("docs", "examples", "python"):
        (tmp_path / name).symlink_to(SOURCES / name)
    (tmp_path / "build").mkdir()
    (tmp_path / "build" / "release").symlink_to(build)
    examples = list(console_examples(document))
    assert examples
    for command, shown in examples:
        result = subprocess.run(
            command, shell=True, cwd=tmp_path, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True
        )
        assert result.stdout == shown, command
