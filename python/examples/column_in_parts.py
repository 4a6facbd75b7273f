#!/usr/bin/env python3
"""Convert a column of numbers in parts, in several processes, and reduce it.

    column_in_parts.py FROM TO IN_UNITS OUT_UNITS [--processes N | --cluster FILE] [--part NUMBERS]

FROM and TO are .npy files with one column of float64. A part is read, converted, written to its place in TO and
reduced by one process; neither file is ever in memory as a whole. --processes starts processes on this machine.
--cluster uses the workers of a Dask cluster, whose scheduler has written FILE; they need the package and access to the
files. Otherwise, one process does it all. The bytes of TO and the results of the reduction do not depend on it.
"""

import argparse
import contextlib
import math
from typing import Iterable, List, Optional, Tuple

import metrify
import numpy as np

Part = Tuple[int, int]
"""The numbers from the first place to the second."""

Reduced = Tuple[int, float, float, float]
"""The count, the least, the greatest and the sum of some numbers."""


def make_parts(source: str, target: str, size: int) -> List[Part]:
    """Create the target file and divide the column into parts."""
    count = len(np.load(source, mmap_mode="r"))
    np.lib.format.open_memmap(target, mode="w+", dtype=np.float64, shape=(count,)).flush()
    return [(begin, min(begin + size, count)) for begin in range(0, count, size)]


def convert_part(part: Part, source: str, target: str, plan: metrify.Plan) -> Reduced:
    """Convert and reduce a part. If a process ends before it is done, another one can do the same again."""
    numbers = np.load(source, mmap_mode="r")[slice(*part)]
    result = np.load(target, mmap_mode="r+")
    converted = plan(numbers, out=result[slice(*part)])
    result.flush()
    return len(converted), float(converted.min()), float(converted.max()), math.fsum(converted)


def combine(reductions: Iterable[Reduced]) -> Reduced:
    """Reduce the parts to one. The sum depends on their order, which is that of the column."""
    counts, least, greatest, sums = zip(*reductions)
    return sum(counts), min(least), max(greatest), math.fsum(sums)


def convert_column(source: str, target: str, plan: metrify.Plan, size: int, client=None) -> Reduced:
    """Convert a column in this process, or in the workers of a Dask client."""
    parts = make_parts(source, target, size)
    if client is None:
        return combine(convert_part(part, source, target, plan) for part in parts)
    # Not pure: the file is written too, so that results of an earlier run are of no use.
    tasks = client.map(convert_part, parts, source=source, target=target, plan=plan, pure=False)
    return combine(client.gather(tasks))


def open_client(processes: Optional[int], scheduler_file: Optional[str]):
    """A context with a client of new processes or of a cluster, or with None."""
    if not processes and not scheduler_file:
        return contextlib.nullcontext()
    from dask.distributed import Client

    if scheduler_file:
        return Client(scheduler_file=scheduler_file)
    return Client(n_workers=processes, threads_per_worker=1, dashboard_address=None)


def main() -> None:
    parser = argparse.ArgumentParser(description="Convert a column of numbers in parts, and reduce it.")
    parser.add_argument("source", metavar="FROM", help="an .npy file with a column of float64")
    parser.add_argument("target", metavar="TO", help="the .npy file to write")
    parser.add_argument("in_units", metavar="IN_UNITS")
    parser.add_argument("out_units", metavar="OUT_UNITS")
    cluster = parser.add_mutually_exclusive_group()
    cluster.add_argument("--processes", type=int, metavar="N", help="work in N processes of this machine")
    cluster.add_argument("--cluster", metavar="FILE", help="work in the cluster of this scheduler file")
    parser.add_argument("--part", type=int, default=1_000_000, metavar="NUMBERS", help="the size of a part")
    arguments = parser.parse_args()

    plan = metrify.Plan(arguments.in_units, arguments.out_units)
    with open_client(arguments.processes, arguments.cluster) as client:
        result = convert_column(arguments.source, arguments.target, plan, arguments.part, client)
    print("{} numbers from {:g} to {:g}, sum {:.9g}".format(*result))


if __name__ == "__main__":
    main()
