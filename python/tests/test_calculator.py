"""Programs, calculators, and the cells of the worksheet function."""

import threading

import metrify
import pytest


def test_a_program_gives_its_listing():
    assert metrify.run("x = 3 ft\nx; in\n") == (
        "[  1 ] x = 3 ft\n       x = 0.9144 m\n\n[  2 ] x; in\n        = 36 in\n\n"
    )


def test_a_refused_line_has_its_message_in_the_listing():
    assert metrify.run("3 xyz\n") == "[  1 ] 3 xyz\n       ERROR: 'xyz' undefined.\n\n"


def test_programs_know_nothing_of_each_other():
    metrify.run("x = 3 ft")
    assert "ERROR: 'x' undefined." in metrify.run("x")


def test_bytes_that_are_no_utf_8_are_kept():
    program = b"# \xe9 \xc3\xa9\n".decode("utf-8", "surrogateescape")
    assert program in metrify.run(program)


def test_a_program_with_a_zero_byte_is_a_bad_argument():
    with pytest.raises(ValueError) as caught:
        metrify.run("1\0 2")
    assert type(caught.value) is ValueError


def test_a_calculator_keeps_variables_and_counts_statements():
    calculator = metrify.Calculator()
    calculator.enter("x = 3 ft")
    assert calculator.enter("x; in") == "[  2 ] x; in\n        = 36 in\n\n"


def test_calculators_know_nothing_of_each_other():
    first, second = metrify.Calculator(), metrify.Calculator()
    first.enter("x = 3 ft")
    assert "ERROR: 'x' undefined." in second.enter("x")


def test_a_calculator_that_is_reset_is_like_a_new_one():
    calculator = metrify.Calculator()
    calculator.enter("x = 3 ft")
    calculator.reset()
    assert calculator.enter("x") == "[  1 ] x\n       ERROR: 'x' undefined.\n\n"


def test_threads_that_share_a_calculator_wait_for_each_other():
    calculator = metrify.Calculator()
    lines = "\n".join(["1"] * 2500)
    together = threading.Barrier(4)

    def enter():
        together.wait()
        calculator.enter(lines)

    threads = [threading.Thread(target=enter) for _ in range(4)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert calculator.enter("1").startswith("[  10001 ] 1\n")


def test_the_cells_are_those_of_the_worksheet_function():
    assert metrify.cells(3.5, "ft", "m") == (1.0668, "m\n\n")
    assert metrify.cells(1234567.8, "m", "km") == (1234.57, "km\n\n")
    assert metrify.cells(3.5, "ft") == (1.0668, "m\n\n")


def test_an_error_is_in_the_first_cell():
    assert metrify.cells(3.5, "xyz", "m") == ("ERROR: 'xyz' undefined.\n\n", "")
    assert metrify.cells(3.5, "ft", "kg") == ("ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.\n", "")


def test_a_calculator_without_its_constructor_is_refused():
    with pytest.raises(TypeError, match="without its constructor"):
        metrify.Calculator.__new__(metrify.Calculator).enter("1 m")
