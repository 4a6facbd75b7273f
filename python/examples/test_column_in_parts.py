"""The example on a local cluster of two processes."""

import math
import os
import pathlib
import signal
import time

import metrify
import numpy as np
import pytest
from column_in_parts import combine, convert_column, convert_part, make_parts
from dask.distributed import Client, as_completed

PART = 5_000
COUNT = 24 * PART + 17
PLAN = metrify.Plan("degC", "degF")


@pytest.fixture(scope="module")
def column(tmp_path_factory):
    path = str(tmp_path_factory.mktemp("column") / "column.npy")
    np.save(path, np.random.default_rng(1).normal(20, 5, COUNT))
    return path


@pytest.fixture(scope="module")
def in_one_process(column):
    """The bytes of the converted column and its reduction."""
    target = column + ".converted"
    reduced = convert_column(column, target, PLAN, PART)
    return pathlib.Path(target).read_bytes(), reduced


@pytest.fixture(scope="module")
def client():
    with Client(n_workers=2, threads_per_worker=1, dashboard_address=None) as client:
        client.wait_for_workers(2)
        yield client


def slowly_convert_part(part, source, target, plan):
    time.sleep(0.05)
    return convert_part(part, source, target, plan), os.getpid()


def test_one_process_converts_and_reduces_the_column(column, in_one_process):
    expected = np.load(column) * 1.8 + 32
    content, (count, least, greatest, total) = in_one_process
    np.testing.assert_allclose(np.frombuffer(content[-8 * COUNT :]), expected, rtol=1e-13)
    assert count == COUNT
    assert (least, greatest) == pytest.approx((expected.min(), expected.max()), rel=1e-13)
    assert total == pytest.approx(math.fsum(expected), rel=1e-13)


def test_two_processes_give_the_same_bytes(column, in_one_process, client, tmp_path):
    target = tmp_path / "column.npy"
    reduced = convert_column(column, str(target), PLAN, PART, client)
    assert (target.read_bytes(), reduced) == in_one_process


def test_both_processes_work(column, client, tmp_path):
    target = str(tmp_path / "column.npy")
    parts = make_parts(column, target, PART)
    tasks = client.map(slowly_convert_part, parts, source=column, target=target, plan=PLAN, pure=False)
    assert {process for _, process in client.gather(tasks)} == set(client.run(os.getpid).values())


def test_nothing_is_lost_when_a_worker_is_killed(column, in_one_process, client, tmp_path):
    target = str(tmp_path / "column.npy")
    parts = make_parts(column, target, PART)
    victim = next(iter(client.run(os.getpid).values()))
    tasks = client.map(slowly_convert_part, parts, source=column, target=target, plan=PLAN, pure=False)
    for finished, _ in enumerate(as_completed(tasks), start=1):
        if finished == 6:
            os.kill(victim, signal.SIGKILL)
            break
    assert not all(task.done() for task in tasks)
    reductions, processes = zip(*client.gather(tasks))
    assert (pathlib.Path(target).read_bytes(), combine(reductions)) == in_one_process
    # What only the killed process knew was converted again by another one.
    assert victim not in processes
