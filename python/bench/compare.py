#!/usr/bin/env python3
"""Compare the speed of conversions with pint and with the expression a * f + b of NumPy.

The candidates of a row take turns, and the fastest turn of each counts, so that other programs on the machine disturb
them alike. Every figure is compared with one of the same run. The exit status is 1 if single numbers are less than 10
times as fast as with pint, or arrays slower than with NumPy by more than the noise.
"""

import sys
import time

import metrify
import numpy as np

LEAST_GAIN_OVER_PINT = 10.0
LEAST_GAIN_OVER_NUMPY = 1.0
NOISE = 0.05


def fastest(candidates, seconds):
    """The time of one call of each candidate, by name."""
    repeats = {}
    for name, call in candidates.items():
        call()
        begin = time.perf_counter()
        call()
        repeats[name] = max(1, int(2e-3 / (time.perf_counter() - begin)))
    best = dict.fromkeys(candidates, float("inf"))
    end = time.perf_counter() + seconds
    while time.perf_counter() < end:
        for name, call in candidates.items():
            begin = time.perf_counter()
            for _ in range(repeats[name]):
                call()
            best[name] = min(best[name], (time.perf_counter() - begin) / repeats[name])
    return best


def show(what, our_time, peer, peer_time, least_gain):
    """Print a row and return whether the gain is large enough."""
    gain = peer_time / our_time
    print(f"{what:<30} {our_time * 1e6:>12.3f}   {peer:<24} {peer_time * 1e6:>12.3f} {gain:>8.2f}")
    return gain >= least_gain * (1 - NOISE)


def compare_numbers():
    import pint

    registry = pint.UnitRegistry()
    feet, meters = registry.ft, registry.m
    plan = metrify.Plan("ft", "m")
    peers = {
        "pint Quantity.to": lambda: registry.Quantity(3.5, feet).to(meters).magnitude,
        "pint convert": lambda: registry.convert(3.5, feet, meters),
    }
    ours = {"convert": lambda: metrify.convert(3.5, "ft", "m"), "plan": lambda: plan(3.5)}
    times = fastest({**peers, **ours}, 4.0)
    peer = min(peers, key=times.get)
    return all([show(f"one number, {name}", times[name], peer, times[peer], LEAST_GAIN_OVER_PINT) for name in ours])


def compare_arrays(count):
    column = np.linspace(-40, 100, count)
    strided = np.repeat(column, 2)[::2]
    out = np.empty_like(column)
    f, b = 1.8, 32.0
    plan = metrify.Plan("degC", "degF")

    def expression_with_out():
        np.multiply(column, f, out=out)
        np.add(out, b, out=out)

    results = []
    for how, ours, peer, theirs in [
        ("", lambda: plan(column), "a * f + b", lambda: column * f + b),
        (", strided", lambda: plan(strided), "a * f + b", lambda: strided * f + b),
        (", out given", lambda: plan(column, out=out), "multiply, add with out", expression_with_out),
    ]:
        times = fastest({"ours": ours, "theirs": theirs}, 1.5)
        results.append(
            show(f"{count} numbers{how}", times["ours"], peer, times["theirs"], LEAST_GAIN_OVER_NUMPY)
        )
    return all(results)


def main():
    print(f"{'':<30} {'microseconds':>12}   {'compared with':<24} {'microseconds':>12} {'gain':>8}")
    results = [compare_numbers()] + [compare_arrays(count) for count in (100, 10_000, 1_000_000, 10_000_000)]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
