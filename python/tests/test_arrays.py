"""Arrays of every layout, results that are stored in a given array, memory and threads."""

import sys
import threading
import tracemalloc

import metrify
import numpy as np
import pytest

TO_METERS = metrify.Plan("km", "m")
SHAPE = (4, 6, 10)


def numbers(shape=SHAPE):
    return np.arange(np.prod(shape), dtype=float).reshape(shape)


def unaligned(array):
    held = np.zeros(array.shape, dtype=[("pad", "i1"), ("x", "f8")])
    held["x"] = array
    return held["x"]


LAYOUTS = {
    "contiguous": lambda a: a,
    "by columns": np.asfortranarray,
    "every second": lambda a: a[:, :, ::2],
    "backwards": lambda a: a[::-1, :, ::-1],
    "transposed": lambda a: a.transpose(1, 2, 0),
    "a part": lambda a: a[1:3, 2:5, 3:9],
    "one dimension": lambda a: a[2, :, 5],
    "repeated": lambda a: np.broadcast_to(a[0, 0], (3, 10)),
    "empty": lambda a: a[:0],
    "one number": lambda a: a[:1, :1, :1],
    "another byte order": lambda a: a.astype(">f8"),
    "unaligned": unaligned,
}


@pytest.mark.parametrize("layout", LAYOUTS.values(), ids=LAYOUTS.keys())
def test_an_array_of_any_layout_is_converted(layout):
    array = layout(numbers())
    before = array.copy()
    result = TO_METERS(array)
    assert result.dtype == np.float64 and result.shape == array.shape
    np.testing.assert_allclose(result, np.array(array) * 1000.0, rtol=1e-15)
    np.testing.assert_array_equal(array, before)


@pytest.mark.parametrize("layout", LAYOUTS.values(), ids=LAYOUTS.keys())
def test_each_number_of_an_array_is_converted_like_a_single_number(layout):
    array = layout(numbers()) / 7
    singles = [metrify.convert(x, "ft", "m") for x in array.ravel()]
    np.testing.assert_array_equal(metrify.convert(array, "ft", "m").ravel(), singles)


@pytest.mark.parametrize("dtype", ["f4", "f2", "i8", "i1", "u2", "?"])
def test_other_real_types_are_converted_to_float64(dtype):
    result = TO_METERS(np.array([0, 1, 1], dtype=dtype))
    assert result.dtype == np.float64
    np.testing.assert_allclose(result, [0, 1000, 1000], rtol=1e-15)


def test_a_sequence_gives_an_array():
    np.testing.assert_allclose(metrify.convert([1, 2.5, (3)], "km", "m"), [1000, 2500, 3000], rtol=1e-15)
    np.testing.assert_allclose(TO_METERS(((1, 2), (3, 4))), [[1000, 2000], [3000, 4000]], rtol=1e-15)
    assert TO_METERS([]).shape == (0,)


def test_the_result_is_laid_out_like_the_numbers():
    assert TO_METERS(np.asfortranarray(numbers())).flags.f_contiguous
    assert TO_METERS(numbers()).flags.c_contiguous


@pytest.mark.parametrize("layout", ["contiguous", "by columns", "every second", "backwards", "transposed"])
def test_the_result_is_stored_in_a_given_array(layout):
    array = LAYOUTS[layout](numbers())
    target = np.full((*array.shape[:-1], 3 * array.shape[-1]), -1.0)
    out = target[..., ::-3]
    assert TO_METERS(array, out=out) is out
    np.testing.assert_allclose(out, array * 1000.0, rtol=1e-15)
    assert np.count_nonzero(target == -1.0) == 2 * array.size


def test_the_result_can_replace_the_numbers():
    array = numbers()
    expected = array * 1000.0
    metrify.convert(array, "km", "m", out=array)
    np.testing.assert_allclose(array, expected, rtol=1e-15)


@pytest.mark.parametrize(
    "source, target",
    [
        (np.s_[:-1], np.s_[1:]),
        (np.s_[1:], np.s_[:-1]),
        (np.s_[1:], np.s_[:0:-1]),
        (np.s_[:500], np.s_[599:99:-1]),
    ],
)
def test_the_result_can_overlap_the_numbers(source, target):
    array = numbers((1000,))
    expected = array[source] * 1000.0
    TO_METERS(array[source], out=array[target])
    np.testing.assert_allclose(array[target], expected, rtol=1e-15)


def test_a_number_can_be_stored_in_an_array_without_dimensions():
    out = np.zeros(())
    assert TO_METERS(2, out=out) is out
    assert out == pytest.approx(2000)


def read_only(array):
    array.flags.writeable = False
    return array


@pytest.mark.parametrize(
    "out, error",
    [
        (np.zeros(3), ValueError),
        (np.zeros((2, 1)), ValueError),
        (np.zeros(2, dtype="f4"), TypeError),
        (np.zeros(2, dtype="i8"), TypeError),
        ([0.0, 0.0], TypeError),
        (read_only(np.zeros(2)), ValueError),
        (unaligned(np.zeros(2)), ValueError),
    ],
)
def test_an_array_that_cannot_hold_the_result_is_refused(out, error):
    with pytest.raises(error, match="^out must "):
        TO_METERS(np.array([1.0, 2.0]), out=out)


def peak_memory(call):
    tracemalloc.start()
    try:
        result = call()
        return tracemalloc.get_traced_memory()[1], result
    finally:
        tracemalloc.stop()


@pytest.mark.parametrize("layout", ["contiguous", "by columns", "every second", "backwards", "transposed"])
def test_an_array_of_float64_is_not_copied(layout):
    array = LAYOUTS[layout](numbers((100, 100, 10)))
    assert peak_memory(lambda: TO_METERS(array))[0] < 1.5 * array.nbytes
    assert peak_memory(lambda: TO_METERS(array, out=array))[0] < 0.5 * array.nbytes
    # The measurement detects a copy.
    assert peak_memory(lambda: TO_METERS(array.astype("i8")))[0] > 1.5 * array.nbytes


def test_other_threads_run_while_an_array_is_converted():
    array = numbers((2_000_000,))
    out = np.empty_like(array)
    gate = threading.Lock()
    gate.acquire()
    progress = []
    interval = sys.getswitchinterval()
    thread = threading.Thread(target=lambda: (gate.acquire(), progress.append(True)))
    thread.start()
    try:
        # From here on, the other thread can only run while this one has released the interpreter's lock.
        sys.setswitchinterval(1000)
        gate.release()
        for _ in range(200):
            TO_METERS(array, out=out)
            if progress:
                break
        ran_meanwhile = bool(progress)
    finally:
        sys.setswitchinterval(interval)
        thread.join()
    assert ran_meanwhile
