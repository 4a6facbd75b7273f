"""Numbers, their types, and the messages of the language."""

import fractions
import decimal
import subprocess
import sys

import metrify
import numpy as np
import pytest


def test_a_number_is_converted_in_full_precision():
    assert metrify.convert(1234567.8, "m", "km") == pytest.approx(1234.5678, rel=1e-15)


def test_a_number_is_converted_between_units_of_different_systems():
    assert metrify.convert(3.5, "ft", "m") == pytest.approx(1.0668, rel=1e-14)


@pytest.mark.parametrize(
    "value, in_units, out_units, expected",
    [(100, "degC", "degF", 212), (-40, "degF", "degC", -40), (32, "degF", "degK", 273.15), (9, "degFdiff", "degCdiff", 5)],
)
def test_temperatures_have_an_offset_and_differences_have_none(value, in_units, out_units, expected):
    assert metrify.convert(value, in_units, out_units) == pytest.approx(expected, rel=1e-12)


def test_units_are_expressions():
    assert metrify.convert(36, "km/s^2", "m/s s") == pytest.approx(36000, rel=1e-14)
    assert metrify.convert(2, "m^2", "cm^2") == pytest.approx(20000, rel=1e-14)


def test_default_units_are_used_without_output_units():
    assert metrify.convert(3.5, "ft") == pytest.approx(1.0668, rel=1e-14)
    assert metrify.convert(3.5, "ft", "") == pytest.approx(1.0668, rel=1e-14)


def test_output_units_can_be_the_name_of_a_system():
    assert metrify.convert(1.5, "m", "cgs") == pytest.approx(150, rel=1e-14)


def test_arguments_can_be_named():
    assert metrify.convert(value=2, in_units="km", out_units="m") == pytest.approx(2000, rel=1e-15)


def test_numbers_that_are_none_stay_as_they_are():
    assert np.isnan(metrify.convert(float("nan"), "ft", "m"))
    assert metrify.convert(float("-inf"), "ft", "m") == float("-inf")


@pytest.mark.parametrize(
    "value",
    [
        2,
        2.0,
        np.float64(2),
        np.float32(2),
        np.int8(2),
        np.array(2),
        decimal.Decimal(2),
        fractions.Fraction(4, 2),
    ],
    ids=lambda value: type(value).__name__,
)
def test_any_real_number_gives_a_float(value):
    result = metrify.convert(value, "km", "m")
    assert type(result) is float
    assert result == pytest.approx(2000, rel=1e-15)


@pytest.mark.parametrize("value", ["3.5", b"3.5", 2j, None, object(), ["ft"], [1, None], {1: 2}], ids=repr)
def test_what_is_no_real_number_is_refused(value):
    with pytest.raises(TypeError, match="^real numbers are needed, not "):
        metrify.convert(value, "ft", "m")


@pytest.mark.parametrize("shape", [2, (1, 2)])
def test_an_array_of_objects_is_refused_by_the_name_of_its_dtype(shape):
    with pytest.raises(TypeError, match="^real numbers are needed, not an array of dtype object$"):
        metrify.convert(np.full(shape, 2, dtype=object), "ft", "m")


def test_a_number_beyond_the_range_of_a_float_is_refused():
    with pytest.raises(OverflowError):
        metrify.convert(10**400, "ft", "m")


def test_a_masked_array_is_refused():
    with pytest.raises(TypeError, match="masked array"):
        metrify.convert(np.ma.array([1.0, 2.0], mask=[True, False]), "ft", "m")


@pytest.mark.parametrize(
    "in_units, out_units, message",
    [
        ("xyz", "m", "ERROR: 'xyz' undefined."),
        ("ft", "kg", "ERROR IN REQUESTED OUTPUT: 'kg' is incompatible."),
        ("ft", "xyz", "ERROR IN REQUESTED OUTPUT: 'xyz' not recognized."),
        ("m^", "m", "ERROR: Bad units exponent."),
    ],
)
def test_a_refused_text_raises_the_message_of_the_language(in_units, out_units, message):
    with pytest.raises(metrify.Error) as caught:
        metrify.convert(1, in_units, out_units)
    assert str(caught.value) == message


def test_an_error_is_a_value_error():
    assert issubclass(metrify.Error, ValueError)


def test_a_refused_text_is_refused_again():
    for _ in range(2):
        with pytest.raises(metrify.Error, match="'xyz' undefined"):
            metrify.convert(1, "xyz", "m")


def test_a_text_with_a_zero_byte_is_a_bad_argument():
    with pytest.raises(ValueError) as caught:
        metrify.convert(1, "f\0t", "m")
    assert type(caught.value) is ValueError


def test_more_pairs_of_units_than_are_remembered_are_converted():
    names = [unit.name for unit in metrify.units() if unit.exponents == {"m": 1.0}]
    pairs = [(first, second) for first in names for second in names]
    assert len(pairs) > 300
    factors = {unit.name: unit.factor for unit in metrify.units()}
    for _ in range(2):
        for first, second in pairs:
            expected = factors[second] / factors[first]
            assert metrify.convert(1, first, second) == pytest.approx(expected, rel=1e-14)


def test_pairs_that_are_the_same_text_together_are_told_apart():
    assert metrify.convert(1, "mm", "m") == pytest.approx(0.001, rel=1e-14)
    assert metrify.convert(1, "m", "mm") == pytest.approx(1000, rel=1e-14)


def test_numbers_are_converted_without_numpy():
    program = (
        "import sys; sys.modules['numpy'] = None\n"
        "import metrify; print(round(metrify.convert(3.5, 'ft', 'm'), 6), metrify.convert(2, 'km', 'm'))"
    )
    result = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True)
    assert (result.stdout, result.stderr) == ("1.0668 2000.0\n", "")
