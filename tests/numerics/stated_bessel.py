"""The Bessel functions of integer order in their published form with the required coefficients; see
make_stated.py."""
import math


def horner(y, coefficients):
    total = 0.0
    for c in reversed(coefficients):
        total = c + y * total
    return total


def asymptotic(x, shift, p, q):
    z = 8.0 / x
    y = z * z
    return math.sqrt(0.636619772 / x), x - shift, horner(y, p), z * horner(y, q)


P0 = [1.0, -0.1098628627e-2, 0.2734510407e-4, -0.2073370639e-5, 0.2093887211e-6]
Q0 = [-0.1562499995e-1, 0.1430488765e-3, -0.6911147651e-5, 0.7621095161e-6]
P1 = [1.0, 0.183105e-2, -0.3516396496e-4, 0.2457520174e-5, -0.240337019e-6]
Q1 = [0.04687499995, -0.2002690873e-3, 0.8449199096e-5, -0.88228987e-6, 0.105787412e-6]


def j0(x):
    x = abs(x)
    if x < 8.0:
        y = x * x
        return horner(y, [57568490574.0, -13362590354.0, 651619640.7, -11214424.18, 77392.33017, -184.9052456]) / \
            horner(y, [57568490411.0, 1029532985.0, 9494680.718, 59272.64853, 267.8532712, 1.0])
    size, phase, p, q = asymptotic(x, 0.785398164, P0, Q0 + [-9.34935152e-8])
    return size * (math.cos(phase) * p - math.sin(phase) * q)


def j1(x):
    if abs(x) < 8.0:
        y = x * x
        return x * horner(y, [72362614232.0, -7895059235.0, 242396853.1, -2972611.439, 15704.48260,
                              -30.16036606]) / \
            horner(y, [144725228442.0, 2300535178.0, 18583304.74, 99447.43394, 376.9991397, 1.0])
    size, phase, p, q = asymptotic(abs(x), 2.356194491, P1, Q1)
    return math.copysign(1.0, x) * size * (math.cos(phase) * p - math.sin(phase) * q)


def y0(x):
    if x < 8.0:
        y = x * x
        return horner(y, [-2957821389.0, 7062834065.0, -512359803.6, 10879881.29, -86327.92757, 228.4622733]) / \
            horner(y, [40076544269.0, 745249964.8, 7189466.438, 47447.26470, 226.1030244, 1.0]) + \
            0.636619772 * j0(x) * math.log(x)
    size, phase, p, q = asymptotic(x, 0.785398164, P0, Q0 + [-9.34945152e-8])
    return size * (math.sin(phase) * p + math.cos(phase) * q)


def y1(x):
    if x < 8.0:
        y = x * x
        return x * horner(y, [-0.4900604943e13, 0.1275274390e13, -0.5153438139e11, 0.7349264551e9,
                              -0.4237922726e7, 0.8511937935e4]) / \
            horner(y, [0.2499580570e14, 0.4244419664e12, 0.3733650367e10, 0.2245904002e8, 0.1020426050e6,
                       0.3549632885e3, 1.0]) + 0.636619772 * (j1(x) * math.log(x) - 1.0 / x)
    size, phase, p, q = asymptotic(x, 2.356194491, P1, Q1)
    return size * (math.sin(phase) * p + math.cos(phase) * q)


def i0(x):
    x = abs(x)
    if x < 3.75:
        return horner((x / 3.75) ** 2, [1.0, 3.5156229, 3.0899424, 1.2067492, 0.2659732, 0.360768e-1, 0.45813e-2])
    return math.exp(x) / math.sqrt(x) * horner(3.75 / x, [
        0.39894228, 0.1328592e-1, 0.225319e-2, -0.157565e-2, 0.916281e-2, -0.2057706e-1, 0.2635537e-1,
        -0.1647633e-1, 0.392377e-2])


def i1(x):
    ax = abs(x)
    if ax < 3.75:
        value = ax * horner((x / 3.75) ** 2, [0.5, 0.87890594, 0.51498869, 0.15084934, 0.2658733e-1, 0.301532e-2,
                                              0.32411e-3])
    else:
        value = math.exp(ax) / math.sqrt(ax) * horner(3.75 / ax, [
            0.39894228, -0.03988024, -0.00362018, 0.0016381, -0.01031555, 0.02282967, -0.02895312, 0.01787654,
            -0.00420059])
    return -value if x < 0.0 else value


def k0(x):
    if x <= 2.0:
        return -math.log(x / 2.0) * i0(x) + horner(x * x / 4.0, [
            -0.57721566, 0.42278420, 0.23069756, 0.3488590e-1, 0.262698e-2, 0.10750e-3, 0.74e-5])
    return math.exp(-x) / math.sqrt(x) * horner(2.0 / x, [
        1.25331414, -0.7832358e-1, 0.2189568e-1, -0.1062446e-1, 0.587872e-2, -0.251540e-2, 0.53208e-3])


def k1(x):
    if x <= 2.0:
        return math.log(x / 2.0) * i1(x) + 1.0 / x * horner(x * x / 4.0, [
            1.0, 0.15443144, -0.67278579, -0.18156897, -0.1919402e-1, -0.110404e-2, -0.4686e-4])
    return math.exp(-x) / math.sqrt(x) * horner(2.0 / x, [
        1.25331414, 0.23498619, -0.3655620e-1, 0.1504268e-1, -0.780353e-2, 0.325614e-2, -0.68245e-3])


def upward(n, x, sign, f0, f1):
    for j in range(1, n):
        f0, f1 = f1, j * (2.0 / x) * f1 + sign * f0
    return f1


def downward(n, ax, start, sign):
    """The order n of a recurrence from far above it down to 0, the last term, and the sum of those between."""
    above, at, value, total, adds = 0.0, 1.0, 0.0, 0.0, False
    for j in range(start, 0, -1):
        above, at = at, j * (2.0 / ax) * at + sign * above
        if abs(at) > 1e10:
            above, at, value, total = above * 1e-10, at * 1e-10, value * 1e-10, total * 1e-10
        if adds:
            total += at
        adds = not adds
        if j == n:
            value = above
    return value, at, total


def odd_sign(n, x):
    return -1.0 if x < 0.0 and n % 2 else 1.0


def j(n, x):
    n = int(n)
    if n < 0:
        angle = -n * math.pi
        return math.cos(angle) * j(-n, x) - math.sin(angle) * y(-n, x)
    if n < 2:
        return (j0, j1)[n](x)
    ax = abs(x)
    if ax == 0.0:
        return 0.0
    if ax > n:
        return odd_sign(n, x) * upward(n, ax, -1.0, j0(ax), j1(ax))
    value, at, total = downward(n, ax, 2 * ((n + int(math.sqrt(40.0 * n))) // 2), -1.0)
    return odd_sign(n, x) * value / (2.0 * total - at)


def y(n, x):
    n = int(n)
    if n < 0:
        angle = -n * math.pi
        return math.sin(angle) * j(-n, x) + math.cos(angle) * y(-n, x)
    return (y0, y1)[n](x) if n < 2 else upward(n, x, -1.0, y0(x), y1(x))


def i(n, x):
    n = int(n)
    if n < 0:
        return i(-n, x) + 0.6366197723675814 * math.sin(-n * math.pi) * k(-n, x)
    if n < 2:
        return (i0, i1)[n](x)
    if x == 0.0:
        return 0.0
    value, at, _ = downward(n, abs(x), 2 * (n + int(math.sqrt(40.0 * n))), 1.0)
    return odd_sign(n, x) * (value * (i0(x) / at))


def k(n, x):
    n = abs(int(n))
    return (k0, k1)[n](x) if n < 2 else upward(n, x, 1.0, k0(x), k1(x))


BESSEL = {
    "bessj0": (j0, [(0.0,)]),
    "bessj1": (j1, [(0.0,)]),
    "bessy0": (y0, []),
    "bessy1": (y1, []),
    "bessi0": (i0, [(0.0,)]),
    "bessi1": (i1, [(0.0,)]),
    "bessk0": (k0, []),
    "bessk1": (k1, []),
    "bessj": (j, []),
    "bessy": (y, []),
    "bessi": (i, []),
    "bessk": (k, []),
}
