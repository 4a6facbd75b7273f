"""The class Plan."""

import copy
import pickle
import threading

import metrify
import numpy as np
import pytest


def test_a_plan_converts_numbers_and_arrays():
    plan = metrify.Plan("degF", "degC")
    assert plan(212) == pytest.approx(100, rel=1e-13)
    np.testing.assert_allclose(plan(np.array([-40.0, 32.0])), [-40, 0], rtol=1e-13, atol=1e-12)


def test_a_plan_has_its_units():
    plan = metrify.Plan("ft", "m")
    assert (plan.in_units, plan.out_units) == ("ft", "m")
    assert repr(plan) == "Plan('ft', 'm')"


def test_a_plan_has_default_units_without_output_units():
    plan = metrify.Plan("km")
    assert plan.out_units == ""
    assert plan(2) == pytest.approx(2000, rel=1e-15)


def test_a_plan_with_refused_units_raises_the_message():
    with pytest.raises(metrify.Error, match="^ERROR IN REQUESTED OUTPUT: 'kg' is incompatible.$"):
        metrify.Plan("ft", "kg")


class NamedPlan(metrify.Plan):
    """A subclass that another process can import, as a pickle needs."""


@pytest.mark.parametrize("made", [metrify.Plan, NamedPlan])
@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy])
def test_a_plan_can_be_copied(copied, made):
    plan = copied(made("km", "m"))
    assert type(plan) is made
    assert repr(plan) == "Plan('km', 'm')"
    assert plan(2) == pytest.approx(2000, rel=1e-15)


@pytest.mark.parametrize("made", [metrify.Plan, NamedPlan])
@pytest.mark.parametrize("protocol", range(pickle.HIGHEST_PROTOCOL + 1))
def test_a_plan_can_be_pickled_in_every_protocol(protocol, made):
    plan = pickle.loads(pickle.dumps(made("km", "m"), protocol))
    assert type(plan) is made
    assert repr(plan) == "Plan('km', 'm')"
    assert plan(2) == pytest.approx(2000, rel=1e-15)


def test_a_plan_is_used_by_several_threads_at_the_same_time():
    plan = metrify.Plan("ft", "m")
    array = np.arange(300_000.0)
    results = [None] * 4

    def convert(place):
        for _ in range(20):
            results[place] = plan(array)

    threads = [threading.Thread(target=convert, args=(place,)) for place in range(len(results))]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for result in results:
        np.testing.assert_array_equal(result, results[0])


def test_a_plan_without_its_constructor_is_refused():
    with pytest.raises(TypeError, match="without its constructor"):
        metrify.Plan.__new__(metrify.Plan)(1)
