"""Carlson's forms, Legendre's integrals and the Jacobian functions in their published form with the required
constants and differences; see make_stated.py."""
import math


def rc(x, y):
    if not y > 0.0:
        return math.nan  # the root of a negative y
    mean, s = 0.0, math.inf
    while abs(s) > 0.0012:
        step = 2.0 * math.sqrt(x) * math.sqrt(y) + y
        x, y = 0.25 * (x + step), 0.25 * (y + step)
        mean = (1.0 / 3.0) * (x + y + y)
        s = (y - mean) / mean
    return (12.0 + s * s * (0.3 + s * (1.0 / 7.0 + s * (0.375 + s * (9.0 / 22.0))))) / math.sqrt(mean)


def halved(x, y, z):
    """A duplication: the new arguments and the increment."""
    a, b, c = math.sqrt(x), math.sqrt(y), math.sqrt(z)
    step = a * (b + c) + b * c
    return 0.25 * (x + step), 0.25 * (y + step), 0.25 * (z + step), step


def rd(x, y, z):
    c1, c2, c3, c4 = 3.0 / 14.0, 1.0 / 6.0, 9.0 / 22.0, 3.0 / 26.0
    c5, c6 = 0.25 * c3, 1.5 * c4
    total, fac, largest = 0.0, 1.0, math.inf
    while largest > 0.0015:
        z_before = z
        x, y, z, step = halved(x, y, z)
        total += fac / (math.sqrt(z_before) * (z_before + step))
        fac = 0.25 * fac
        mean = 0.2 * (x + y + 3.0 * z)
        dx, dy, dz = (mean - x) / mean, (mean - y) / mean, (mean - z) / mean
        largest = max(abs(dx), abs(dy), abs(dz))
    ea = dx * dy
    eb = dz * dz
    ec = ea - eb
    ed = ea - 6.0 * eb
    ee = ed + ec + ec
    return 3.0 * total + fac * (1.0 + ed * (-c1 + c5 * ed - c6 * dz * ee) +
                                dz * (c2 * ee + dz * (-c3 * ec + dz * c4 * ea))) / (mean * math.sqrt(mean))


def rf(x, y, z):
    c1, c2, c3, c4 = 1.0 / 24.0, 0.1, 3.0 / 44.0, 1.0 / 14.0
    largest = math.inf
    while largest > 0.0025:
        x, y, z, _ = halved(x, y, z)
        mean = (1.0 / 3.0) * (x + y + z)
        dx, dy, dz = (mean - x) / mean, (mean - y) / mean, (mean - z) / mean
        largest = max(abs(dx), abs(dy), abs(dz))
    e2 = dx * dy - dz * dz
    e3 = dx * dy * dz
    return (1.0 + (c1 * e2 - c2 - c3 * e3) * e2 + c4 * e3) / math.sqrt(mean)


def rj(x, y, z, p):
    if not p > 0.0:
        return math.nan  # the reduction takes RC of a negative number
    c1, c2, c3, c4 = 3.0 / 14.0, 1.0 / 3.0, 3.0 / 22.0, 3.0 / 26.0
    c5, c6, c7, c8 = 0.75 * c3, 1.5 * c4, 1.0 / 6.0, 3.0 / 11.0
    total, fac, largest = 0.0, 1.0, math.inf
    while largest > 0.0015:
        a, b, c = math.sqrt(x), math.sqrt(y), math.sqrt(z)
        x, y, z, step = halved(x, y, z)
        alpha = (p * (a + b + c) + a * b * c)
        beta = p + step
        total += fac * rc(alpha * alpha, p * (beta * beta))
        fac = 0.25 * fac
        p = 0.25 * (p + step)
        mean = 0.2 * (x + y + z + p + p)
        dx, dy, dz, dp = (mean - x) / mean, (mean - y) / mean, (mean - z) / mean, (mean - p) / mean
        largest = max(abs(dx), abs(dy), abs(dz), abs(dp))
    ea = dx * (dy + dz) + dy * dz
    eb = dx * dy * dz
    ec = dp * dp
    ed = ea - 3.0 * ec
    ee = eb + 2.0 * dp * (ea - ec)
    return 3.0 * total + fac * (1.0 + ed * (-c1 + c5 * ed - c6 * ee) + eb * (c7 + dp * (-c8 + dp * c4)) +
                                dp * ea * (c2 - dp * c3) - c2 * dp * ec) / (mean * math.sqrt(mean))


def amplitude(phi, k):
    s = math.sin(phi)
    sk = s * k
    cosine = math.cos(phi)
    return s, sk, cosine * cosine, (1.0 - sk) * (1.0 + sk)


def elliptic_f(phi, k):
    s, _, cc, q = amplitude(phi, k)
    return s * rf(cc, q, 1.0)


def elliptic_e(phi, k):
    s, sk, cc, q = amplitude(phi, k)
    return s * (rf(cc, q, 1.0) - sk * sk * rd(cc, q, 1.0) / 3.0)


def elliptic_pi(phi, n, k):
    s, _, cc, q = amplitude(phi, k)
    e = n * s * s
    return s * (rf(cc, q, 1.0) - e * rj(cc, q, 1.0, 1.0 + e) / 3.0)


def sncndn_steps(u, emmc, most=13):
    """sn, cn, dn, and how many of Gauss's transformations there were, at most so many."""
    emc = emmc
    if emc == 0.0:
        return (math.tanh(u), 1.0 / math.cosh(u), 1.0 / math.cosh(u)), 0
    below_0 = emc < 0.0
    if below_0:
        d = 1.0 - emc
        emc /= -1.0 / d
        d = math.sqrt(d)
        u *= d
    a, dn = 1.0, 1.0
    em, en = [], []
    for _ in range(most):
        em.append(a)
        emc = math.sqrt(emc)
        en.append(emc)
        c = 0.5 * (a + emc)
        if abs(a - emc) <= 0.0003 * a:
            break
        emc *= a
        a = c
    u *= c
    sn, cn = math.sin(u), math.cos(u)
    if sn != 0.0:
        a = cn / sn
        c *= a
        for b, e in zip(reversed(em), reversed(en)):
            a *= c
            c *= dn
            dn = (e + a) / (b + a)
            a = c / b
        a = 1.0 / math.sqrt(c * c + 1.0)
        sn = a if sn >= 0.0 else -a
        cn = c * sn
    if below_0:
        a, dn, cn = dn, cn, dn
        sn /= d
    return (sn, cn, dn), len(em)


def sncndn(u, emmc):
    return sncndn_steps(u, emmc)[0]


def at_limit(tolerance, distance):
    """Two numbers, of which only the second is just within a tolerance."""
    return [distance(tolerance * factor) for factor in (1.003, 0.997)]


# One duplication takes x = 1, y = 1 + d to a distance s = d/12 or so; the ends of the iterations are found from
# there. The first of Gauss's transformations ends where the root of emmc is near enough to 1.
NEAR_1 = [1.0 + 0.0005 * i for i in range(1, 120)]
# With these a distance is between 97 and 103 hundredths of a tolerance.
NEAR_1 += [1.0 + d * (1.0 + 0.002 * i) for d in (0.0075, 0.01, 0.015, 0.0187) for i in range(-15, 16)]
ELLIPTIC = {
    "carlsons_rc": (rc, [(1.0, y) for y in NEAR_1] + [(y, 1.0) for y in NEAR_1]),
    "carlsons_rd": (rd, [(1.0, 1.0, y) for y in NEAR_1] + [(1.0, y, 1.0) for y in NEAR_1]),
    "carlsons_rf": (rf, [(1.0, 1.0, y) for y in NEAR_1] + [(1.0, y, 2.0 - y) for y in NEAR_1]),
    "carlsons_rj": (rj, [(1.0, 1.0, 1.0, y) for y in NEAR_1] + [(1.0, 1.0, y, 1.0) for y in NEAR_1]),
    "elliptic_f": (elliptic_f, []),
    "elliptic_e": (elliptic_e, []),
    "elliptic_pi": (elliptic_pi, []),
    "sncndn": (sncndn, [(u, (1.0 - d) ** 2) for u in (0.7, 2.5) for d in at_limit(0.0003, float)] +
               [(u, (1.0 - d) ** 2) for u in (0.7, 2.5) for d in at_limit(0.0489, float)] +
               [(u, emmc) for u in (0.7, 20.0, -3.0) for emmc in (5e-324, 1e-300, 1e-100, 1e100, 1e300)]),
}
