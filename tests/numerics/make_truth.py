#!/usr/bin/env python3
"""Writes the tables of exact values in tests/numerics/truth/, one for each routine of the special functions.

Needs python3-mpmath. A line is the arguments, as the shortest decimal numbers that read back as the same
doubles, a colon, and for each output of the routine two numbers: the value to 25 digits, computed with 40, and
the divisor of its error. That is the magnitude of the value, except near a zero of an oscillating
function (its amplitude there, or a tenth of it) and where a header says otherwise.
"""
import math
import pathlib
import sys

import mpmath as mp
from mpmath import mpf

mp.mp.dps = 40
FOLDER = pathlib.Path(__file__).parent / "truth"
LARGEST, LEAST = mpf("1e290"), mpf("1e-250")


# Grids of arguments

def around(x):
    """A point where a routine changes its method, and its neighbours."""
    return [x * 0.99, math.nextafter(x, -math.inf), x, math.nextafter(x, math.inf), x * 1.01]


def logarithmic(low, high, count):
    """count points from low to high, with digits that are not round."""
    start, step = math.log(low), (math.log(high) - math.log(low)) / (count - 1)
    return [math.exp(start + step * i) for i in range(count)]


def linear(low, high, count):
    return [low + (high - low) * i / (count - 1) for i in range(count)]


def both_signs(points):
    return [-x for x in points] + list(points)


def pairs(first, second):
    return [(a, b) for a in first for b in second]


# What an error is divided by

def own(value):
    return abs(value)


def at_least_one(value):
    return max(abs(value), mpf(1))


def one(_):
    return mpf(1)


# Bessel functions, which oscillate for x beyond the order. There the error of the fits of integer order is
# relative to the amplitude; that of a real order is relative to the value, or to a tenth of the amplitude if
# that is larger.

def oscillates(nu, x):
    return abs(x) > max(abs(nu), 0.5)


def against_amplitude(nu, x, value, other):
    amplitude = mp.sqrt(value ** 2 + other ** 2)
    return (value, amplitude if oscillates(nu, x) and not mp.isinf(amplitude) else abs(value))


def away_from_zeros(nu, x, value, other):
    scale = abs(value)
    if oscillates(nu, x):
        scale = max(scale, mp.sqrt(value ** 2 + other ** 2) / 10)
    return (value, scale)


def beside_first(x, value, first):
    """A modified function of the second kind. Below 2 the required constants of the gamma factors cause an error
    of 1e-14 of the first kind, a tenth of which is therefore the smallest divisor of an error there."""
    return (value, max(abs(value), abs(first) / 10) if x < 2 else abs(value))


def j_of(nu, x):
    return mp.besselj(nu, mpf(x))


def y_of(nu, x):
    return mp.bessely(nu, mpf(x))


def j_prime(nu, x):
    return (j_of(nu - 1, x) - j_of(nu + 1, x)) / 2


def y_prime(nu, x):
    return (y_of(nu - 1, x) - y_of(nu + 1, x)) / 2


def i_of(nu, x):
    return mp.besseli(nu, mpf(x))


def k_of(nu, x):
    return mp.besselk(nu, mpf(x))


def i_prime(nu, x):
    return (i_of(nu - 1, x) + i_of(nu + 1, x)) / 2


def k_prime(nu, x):
    return -(k_of(nu - 1, x) + k_of(nu + 1, x)) / 2


def first_kind(nu, x):
    return [against_amplitude(nu, x, j_of(nu, x), y_of(nu, abs(x)))]


def second_kind(nu, x):
    return [against_amplitude(nu, x, y_of(nu, x), j_of(nu, x))]


def reflected_angle(nu):
    """|nu| pi as rounded to a double: the required value of a negative order has its sine and cosine."""
    return mpf(-float(nu) * math.pi)


def both_kinds_any(nu, x):
    nu = mpf(nu)
    j, y = j_of(abs(nu), x), y_of(abs(nu), abs(x))
    if nu >= 0:
        return j, y
    a = reflected_angle(nu)
    return mp.cos(a) * j - mp.sin(a) * y, mp.sin(a) * j + mp.cos(a) * y


def first_kind_any(nu, x, scaled=against_amplitude):
    j, y = both_kinds_any(nu, x)
    return [scaled(nu, x, j, y)]


def second_kind_any(nu, x, scaled=against_amplitude):
    j, y = both_kinds_any(nu, x)
    return [scaled(nu, x, y, j)]


def first_modified_any(nu, x):
    nu = mpf(nu)
    value = i_of(abs(nu), x)
    if nu < 0:
        value += 2 / mp.pi * mp.sin(reflected_angle(nu)) * k_of(-nu, x)
    return [(value, abs(value))]


def first_modified_integer(n, x):
    """If the recurrence starts too low for x, its result is required instead of the function's value."""
    start = 2 * (abs(n) + int(math.sqrt(40 * abs(n))))
    if x * x == 0 or abs(n) < 2 or start ** 2 > 16 * abs(x):
        return first_modified_any(n, x)
    above, at, value = mpf(0), mpf(1), None
    for j in range(int(start), 0, -1):
        above, at = at, above + j * 2 / mpf(abs(x)) * at
        if j == abs(n):
            value = above
    value *= i_of(0, abs(x)) / at * (-1 if x < 0 and n % 2 else 1)
    if n < 0:
        value += 2 / mp.pi * mp.sin(reflected_angle(n)) * k_of(-n, x)
    return [(value, abs(value))]


def second_modified_any(nu, x):
    value = k_of(abs(mpf(nu)), x)
    return [(value, value)]


def second_modified_real(nu, x):
    nu = abs(mpf(nu))
    return [beside_first(x, k_of(nu, x), i_of(nu, x))]


REFLECTED = "A negative order has the required value: the sine and cosine of |order| pi are those of the double."
TENTH = "Beyond the order an error is relative to the value, but at least to a tenth of the amplitude."
BESIDE = "Below 2 an error of K is relative to K, but at least to a tenth of I."
FIT_POINTS = logarithmic(1e-8, 1e4, 120) + linear(0.1, 40, 120)
INTEGER_ORDERS = [2, 3, 4, 7, 10, 25, 60, -1, -2, -3, -8]
INTEGER_POINTS = logarithmic(1e-3, 2e3, 18) + around(8.0) + around(3.75) + around(2.0)
REAL_ORDERS = [0.005, 0.25, 1 / 3, 0.5, 2 / 3, 1.0157, 1.5, 2.75, 5.5, 10.1, 20.5, 45.852]
REAL_POINTS = (logarithmic(1e-3, 1e3, 18) + around(2.0) + around(5.5) + [19.0, 20.5, 22.0] +
               [1e-50, 1e-6, 3e-5, 1.5629, 1.8382, 600.3, 673.4, 744.61, 827.35, 935.12, 970.67])


def bessel_tables():
    plus = sorted(FIT_POINTS + around(8.0) + around(3.75) + around(2.0))
    signed = both_signs(plus)
    tame = [x for x in plus if x < 680]
    for n in (0, 1):
        yield f"bessj{n}", "", [(x,) for x in signed], lambda x, n=n: first_kind(n, x)
        yield f"bessy{n}", "", [(x,) for x in plus], lambda x, n=n: second_kind(n, x)
        yield f"bessi{n}", "", [(x,) for x in both_signs(tame)], lambda x, n=n: first_modified_any(n, x)
        yield f"bessk{n}", "", [(x,) for x in tame], lambda x, n=n: second_modified_any(n, x)
    tame = [x for x in INTEGER_POINTS if x < 680]
    at_orders = [(n, x) for n in INTEGER_ORDERS for x in around(float(abs(n)))]
    negative = [(n, -x) for n in (2, 3, 10) for x in INTEGER_POINTS[::2]]
    grid = pairs(INTEGER_ORDERS, INTEGER_POINTS) + at_orders
    tame_grid = pairs(INTEGER_ORDERS, tame) + at_orders
    yield "bessj", REFLECTED, grid + negative, first_kind_any
    yield "bessy", REFLECTED, grid, second_kind_any
    yield ("bessi", REFLECTED + " So does a large x, where the recurrence starts too low.",
           tame_grid + [(n, x) for n, x in negative if x > -680], first_modified_integer)
    yield "bessk", REFLECTED, tame_grid, second_modified_any
    real = pairs(REAL_ORDERS + [-nu for nu in REAL_ORDERS], REAL_POINTS)
    tame_real = [(nu, x) for nu, x in real if x < 680]
    yield ("bessj_frac", f"{REFLECTED} {TENTH}", real,
           lambda nu, x: first_kind_any(nu, x, away_from_zeros))
    yield ("bessy_frac", f"{REFLECTED} {TENTH}", real,
           lambda nu, x: second_kind_any(nu, x, away_from_zeros))
    yield "bessi_frac", REFLECTED, tame_real, first_modified_any
    yield "bessk_frac", BESIDE, tame_real, second_modified_real
    orders = [0.0, 1.0, 3.0] + REAL_ORDERS

    def jy(x, nu):
        nu = mpf(nu)
        j, y, jp, yp = j_of(nu, x), y_of(nu, x), j_prime(nu, x), y_prime(nu, x)
        return [away_from_zeros(nu, x, *two) for two in ((j, y), (y, j), (jp, yp), (yp, jp))]

    def ik(x, nu):
        nu = mpf(nu)
        i, k, ip, kp = i_of(nu, x), k_of(nu, x), i_prime(nu, x), k_prime(nu, x)
        return [(i, abs(i)), beside_first(x, k, i), (ip, abs(ip)), beside_first(x, kp, ip)]

    yield "bessjy", TENTH, [(x, nu) for x in REAL_POINTS for nu in orders], jy
    yield "bessik", BESIDE, [(x, nu) for x in REAL_POINTS if x < 680 for nu in orders], ik

    def airy(x):
        x = mpf(x)
        f = [mp.airyai(x), mp.airybi(x), mp.airyai(x, derivative=1), mp.airybi(x, derivative=1)]
        if x > -1:
            return [(value, abs(value)) for value in f]
        amplitude, amplitude_prime = mp.sqrt(f[0] ** 2 + f[1] ** 2), mp.sqrt(f[2] ** 2 + f[3] ** 2)
        least = [amplitude / 10] * 2 + [amplitude_prime / 10] * 2
        return [(value, max(abs(value), a)) for value, a in zip(f, least)]

    switch = (1.5 * 2.0) ** (2 / 3)  # the Bessel functions change their method at 2
    points = logarithmic(1e-6, 60, 60) + linear(0.05, 20, 60) + around(switch)
    points += [0.992796716761901, 1.7999394957846675, 75.25, 99.5]
    yield ("airy", "Ai, Bi, Ai', Bi'. Below -1 an error is relative to the value, but at least to a tenth of "
           "the amplitude.", [(x,) for x in both_signs(points)], airy)


# Gamma, beta, error functions, exponential integrals

def log_beta(a, b):
    return mp.loggamma(a) + mp.loggamma(b) - mp.loggamma(a + b)


def fraction_of_beta(a, b, x):
    """The continued fraction by itself: the integral without its factor."""
    a, b, x = mpf(a), mpf(b), mpf(x)
    return mp.betainc(a, b, 0, x) * a / (x ** a * (1 - x) ** b)


def exponential_integral(n, x):
    """By the continued fraction where the library's own formula cancels."""
    if n < 12 or x <= 1:
        return mp.expint(n, x)
    fraction = mpf(0)
    for i in range(1000, 0, -1):
        fraction = -i * (n - 1 + i) / (x + n + 2 * i + fraction)
    return mp.exp(-x) / (x + n + fraction)


def gamma_tables():
    def single(function, scale=own):
        def value(*x):
            f = function(*[mpf(v) for v in x])
            return [(f, scale(f))]
        return value

    yield ("gammln", "An error of the logarithm is one relative to gamma itself where the logarithm is small.",
           [(x,) for x in logarithmic(1e-300, 1e300, 120) + linear(0.05, 12, 120) + around(1.0) + around(2.0)],
           single(mp.loggamma, at_least_one))
    parts = [0.001, 0.03, 0.1, 0.2, 0.4, 0.6, 0.8, 0.95, 1.05, 1.2, 1.5, 2.0, 2.5, 3.0, 4.0, 5.5, 8.0, 11.0,
             15.0, 20.0]
    grid = []
    for a in [0.01, 0.1, 0.3, 0.5, 1.0, 1.7, 2.2, 3.0, 5.5, 10.0, 20.25, 40.0]:
        grid += [(a, x) for x in [part * (a + 1) for part in parts] + around(a + 1.0)]
        grid += [(a, x) for x in logarithmic(1e-6, 80, 10)]
    p = single(lambda a, x: mp.gammainc(a, 0, x, regularized=True))
    q = single(lambda a, x: mp.gammainc(a, x, mp.inf, regularized=True))
    log_gamma = single(mp.loggamma, at_least_one)
    yield "gammp", "", grid, p
    yield ("gammq", "Below a + 1 the error is absolute.", grid,
           lambda a, x: [(f, max(scale, mpf(x < a + 1))) for f, scale in q(a, x)])
    yield "gser", "", [(a, x) for a, x in grid if x < a + 1], lambda a, x: p(a, x) + log_gamma(a)
    yield "gcf", "", [(a, x) for a, x in grid if x >= a + 1], lambda a, x: q(a, x) + log_gamma(a)
    sizes = logarithmic(0.01, 90, 16)
    yield "beta", "", pairs(sizes, sizes), single(lambda z, w: mp.exp(log_beta(z, w)))
    grid = []
    for a in [0.1, 0.5, 1.0, 2.5, 8.0, 30.0]:
        for b in [0.2, 0.5, 1.0, 3.5, 12.0]:
            split = (a + 1.0) / (a + b + 2.0)
            grid += [(a, b, x) for x in [1e-6, 0.01, 0.05, 0.2, 0.3, 0.9, 0.999] + around(split)]
    yield "betai", "", grid, single(lambda a, b, x: mp.betainc(a, b, 0, x, regularized=True))
    yield ("betacf", "", [(a, b, x) for a, b, x in grid if x < (a + 1.0) / (a + b + 2.0)],
           single(fraction_of_beta))
    points = logarithmic(1e-9, 5.5, 80) + linear(0.02, 5, 60) + around(math.sqrt(1.5))
    yield "erf", "", [(x,) for x in both_signs(points)], single(mp.erf)
    yield "erfc", "", [(x,) for x in both_signs(points) + linear(5.6, 23, 40)], single(mp.erfc)
    yield ("expint", "", pairs([0, 1, 2, 3, 5, 12, 40, 99, 1000, 2000000000],
                               logarithmic(1e-10, 400, 24) + around(1.0)), single(exponential_integral))
    yield ("ei", "Near the zero at 0.3725 the error is absolute.",
           [(x,) for x in logarithmic(1e-40, 600, 140) + linear(0.05, 40, 80) + around(1e-30) + around(16.6)],
           lambda x: [(mp.ei(mpf(x)), max(abs(mp.ei(mpf(x))), mpf(1 if 0.1 < x < 1 else 0)))])

    def dawson(x):
        return mp.sqrt(mp.pi) / 2 * mp.exp(-x * x) * mp.erfi(x) if abs(x) < 1e3 else sum(
            mp.fac2(2 * k - 1) / (2 ** (k + 1) * x ** (2 * k + 1)) for k in range(12))

    yield ("dawson", "", [(x,) for x in both_signs(logarithmic(1e-8, 1e12, 90) + linear(0.05, 10, 60) +
                                                    around(0.2) + around(8e8))], single(dawson))
    points = linear(0.0, 7.0, 100) + around(1.87) + around(6.0)
    yield ("CumNormal", "The error is absolute.", [(x,) for x in both_signs(points)],
           single(lambda x: mp.erfc(-x / mp.sqrt(2)) / 2, one))
    tail = logarithmic(1e-16, 0.08, 90)

    def quantile(p):
        if p < 0.5:
            start = -mp.sqrt(-2 * mp.log(p)) if p < 0.1 else (p - 0.5) * 2.5
        else:
            start = mp.sqrt(-2 * mp.log(1 - p)) if p > 0.9 else (p - 0.5) * 2.5
        root = start
        for _ in range(60):
            excess = mp.erfc(-root / mp.sqrt(2)) / 2 - p
            slope = mp.exp(-root * root / 2) / mp.sqrt(2 * mp.pi)
            ratio = excess / slope
            step = ratio / (1 + root * ratio / 2)
            root -= step
            if abs(step) < mpf("1e-30"):
                break
        return root

    probabilities = tail + [1 - p for p in tail[30:]] + linear(0.01, 0.99, 70) + around(0.08) + around(0.92)
    yield ("CumNormalInv", "Below a magnitude of 1 the error is absolute.",
           [(p,) for p in probabilities if 1e-16 <= p <= 0.9999999999999999],
           single(quantile, at_least_one))


# Carlson, Legendre, Jacobi

RC_TOLERANCE, RJ_TOLERANCE = mpf(0.0012), mpf(0.0015)


def required_rc(x, y):
    """RC with 12 instead of the leading 1 of its series, for y > 0: 11/sqrt(mean) is added, with the mean
    at which the duplications end."""
    xt, yt = x, y
    while True:
        step = 2 * mp.sqrt(xt) * mp.sqrt(yt) + yt
        xt, yt = (xt + step) / 4, (yt + step) / 4
        mean = (xt + 2 * yt) / 3
        if not abs((yt - mean) / mean) > RC_TOLERANCE:
            return mp.elliprc(x, y) + 11 / mp.sqrt(mean)


def required_rj(x, y, z, p):
    """RJ with such values in its sum, for p > 0. The term after the sum is that of the integral."""
    total, factor = mpf(0), mpf(1)
    while True:
        a, b, c = mp.sqrt(x), mp.sqrt(y), mp.sqrt(z)
        step = a * (b + c) + b * c
        total += factor * required_rc((p * (a + b + c) + a * b * c) ** 2, p * (p + step) ** 2)
        factor /= 4
        x, y, z, p = (x + step) / 4, (y + step) / 4, (z + step) / 4, (p + step) / 4
        mean = (x + y + z + 2 * p) / 5
        if not max(abs((mean - v) / mean) for v in (x, y, z, p)) > RJ_TOLERANCE:
            return 3 * total + factor * mp.elliprj(x, y, z, p)


def elliptic_tables():
    def single(function, scale=own):
        def value(*x):
            f = function(*[mpf(v) for v in x])
            return [(f, scale(f))]
        return value

    sizes = [0.0, 1e-30, 1e-6, 0.3, 1.0, 1.001, 2.0, 7.5, 1e5, 1e30]
    triples = [(x, y, z) for x in sizes for y in sizes for z in sizes]
    yield ("carlsons_rf", "", [t for i, t in enumerate(triples) if t.count(0.0) < 2 and i % 3 == 0],
           single(mp.elliprf))
    sizes = [0.0, 1e-20, 1e-6, 0.3, 1.0, 1.001, 2.0, 7.5, 1e5, 1e15]
    triples = [(x, y, z) for x in sizes for y in sizes for z in sizes]
    yield ("carlsons_rd", "", [t for i, t in enumerate(triples) if t[0] + t[1] > 0 and t[2] > 0 and i % 3 == 0],
           single(mp.elliprd))
    yield ("carlsons_rc", "The required values: 12 leads the series, not 1.",
           pairs([0.0] + logarithmic(1e-30, 1e30, 14), logarithmic(2e-30, 1.7e30, 16)), single(required_rc))
    sizes = [0.0, 1e-3, 0.4, 1.0, 3.0, 250.0]
    yield ("carlsons_rj", "The required values, with those of RC in the sum.",
           [(x, y, z, p) for x in sizes for y in sizes for z in sizes[1:] for p in (1e-3, 0.9, 2.0, 400.0)
            if x + y > 0 and x + z > 0 and (x <= y or p == 0.9)], single(required_rj))

    def carlson_arguments(phi, k):
        s = mp.sin(phi)
        return s, s * k, mp.cos(phi) ** 2, (1 - s * k) * (1 + s * k)

    angles = [-1.5, -0.7, 1e-6, 0.1, 0.5, 0.9, 1.2, 1.4, 1.5, 1.57, math.pi / 2, 2.0, 3.0]
    moduli = [-0.9, 0.0, 1e-8, 0.05, 0.2, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 0.95, 0.99, 0.999, 0.9999, 0.99999]

    def f(phi, k):
        s, _, cc, q = carlson_arguments(phi, k)
        return s * mp.elliprf(cc, q, 1)

    def e(phi, k):
        s, sk, cc, q = carlson_arguments(phi, k)
        return s * (mp.elliprf(cc, q, 1) - sk ** 2 * mp.elliprd(cc, q, 1) / 3)

    def pi(phi, n, k):
        s, _, cc, q = carlson_arguments(phi, k)
        return s * (mp.elliprf(cc, q, 1) - n * s * s * required_rj(cc, q, mpf(1), 1 + n * s * s) / 3)

    def pi_scale(phi, n, k):
        s, _, cc, q = (abs(v) for v in carlson_arguments(mpf(phi), mpf(k)))
        return max(abs(pi(mpf(phi), mpf(n), mpf(k))), s * mp.elliprf(cc, q, 1))

    yield "elliptic_f", "", pairs(angles, moduli), single(f)
    yield "elliptic_e", "", pairs(angles, moduli), single(e)
    yield ("elliptic_pi", "The required values, with those of RJ; the error is relative to the larger of the terms.",
           [(phi, n, k) for phi in angles[::2] for n in (-0.9, -0.5, 0.0, 0.3, 1.0, 4.0) for k in moduli[1::2]],
           lambda phi, n, k: [(pi(mpf(phi), mpf(n), mpf(k)), pi_scale(phi, n, k))])

    def of_kind(kind, u, m):
        return mp.re(mp.ellipfun(kind, u, m=m))

    def jacobi(u, emmc):
        if emmc == 0:
            return [(mp.tanh(u), mpf(1)), (1 / mp.cosh(u), mpf(1)), (1 / mp.cosh(u), mpf(1))]
        u, emmc = mpf(u), mpf(emmc)
        if emmc > 0:
            return [(of_kind(kind, u, 1 - emmc), mpf(1)) for kind in ("sn", "cn", "dn")]
        d = 1 - emmc
        sn, dn, cn = (of_kind(kind, mp.sqrt(d) * u, 1 + d * emmc) for kind in ("sn", "cn", "dn"))
        return [(sn / mp.sqrt(d), mpf(1)), (cn, mpf(1)), (dn, mpf(1))]

    yield ("sncndn", "sn, cn, dn; the error is absolute. Below 0 the required transformation, emmc times -(1 - emmc).",
           [(u, emmc) for u in both_signs([1e-3, 0.2, 0.5, 1.0, 1.6, 2.5, 4.0, 7.0, 12.0])
            for emmc in (0.0, 1e-6, 0.01, 0.1, 0.25, 0.5, 0.81, 0.999, 1.0, 1.5, 4.0, -0.5, -3.0)], jacobi)


def digits(value):
    return mp.nstr(value, 25, min_fixed=0, max_fixed=0, strip_zeros=False) if value != 0 else "0"


def shortest(x):
    text = repr(float(x))
    return text[:-2] if text.endswith(".0") else text


def within_range(outputs):
    return all(mp.isfinite(f) and (f == 0 or LEAST < abs(f) < LARGEST) and scale > 0 for f, scale in outputs)


def write(name, note, grid, value):
    lines = ["# math_func_" + name + ": arguments : value scale [value scale ...]; made by make_truth.py"]
    if note:
        lines.append("# " + note)
    for arguments in dict.fromkeys(tuple(float(x) for x in a) for a in grid):
        outputs = value(*arguments)
        if within_range(outputs):
            lines.append(" ".join(map(shortest, arguments)) + " : " +
                         " ".join(digits(f) + " " + mp.nstr(scale, 6) for f, scale in outputs))
    with open(FOLDER / f"math_func_{name}.txt", "w", newline="\n") as out:
        out.write("\n".join(lines) + "\n")
    print(name, len(lines) - 1 - bool(note), flush=True)


def main():
    FOLDER.mkdir(exist_ok=True)
    wanted = set(sys.argv[1:])
    for tables in (gamma_tables, elliptic_tables, bessel_tables):
        for table in tables():
            if not wanted or table[0] in wanted:
                write(*table)


if __name__ == "__main__":
    main()
