"""Newton's and Broyden's methods in their published form, with the required constants and differences; see
make_searches.py."""
import math

from stated_searches import Failed, sign

MAXITS, TOLF, TOLMIN, TOLX, STPMX, EPS, ALF, TINY = 200, 1e-6, 1e-8, 1e-7, 100.0, 1e-7, 1e-4, 1e-20


def summed(products):
    total = 0.0
    for product in products:
        total += product
    return total


def half_squares(values):
    return 0.5 * summed(value * value for value in values)


def largest(values):
    most = 0.0
    for value in values:
        if abs(value) > most:
            most = abs(value)
    return most


def fdjac(f, x, fvec):
    n = len(x)
    df = [[0.0] * n for _ in range(n)]
    for j in range(n):
        plain = x[j]
        h = 1e-6 * abs(plain)
        if h == 0.0:
            h = 1e-6
        x[j] = plain + h
        h = x[j] - plain
        moved = f(x)
        x[j] = plain
        for i in range(n):
            df[i][j] = (moved[i] - fvec[i]) / h
    return df


def lnsrch(f, xold, fold, g, p, stpmax):
    """The new point, its values, half their square sum, and whether the line search has succeeded."""
    n = len(xold)
    size = math.sqrt(summed(v * v for v in p))
    if size > stpmax:
        p = [v * (stpmax / size) for v in p]
    slope = summed(g[i] * p[i] for i in range(n))
    alamin = TOLX / largest([abs(p[i]) / max(abs(xold[i]), 1.0) for i in range(n)])
    alam, alam2, f2 = 1.0, None, None
    while True:
        x = [xold[i] + alam * p[i] for i in range(n)]
        fvec = f(x)
        half = half_squares(fvec)
        if alam < alamin or alam == 0.0:
            return list(xold), fvec, half, False
        if half <= fold + ALF * alam * slope:
            return x, fvec, half, True
        if alam2 is None:
            tmplam = -slope / (2.0 * (half - fold - slope))
        else:
            rhs1, rhs2 = half - fold - alam * slope, f2 - fold - alam2 * slope
            a = (rhs1 / (alam * alam) - rhs2 / (alam2 * alam2)) / (alam - alam2)
            b = (-alam2 * rhs1 / (alam * alam) + alam * rhs2 / (alam2 * alam2)) / (alam - alam2)
            if a == 0.0:
                tmplam = -slope / (2.0 * b)
            else:
                disc = b * b - 3.0 * a * slope
                if disc < 0.0:
                    raise Failed("ERROR:  Roundoff problem in lnsrch.")
                tmplam = (-b + math.sqrt(disc)) / (3.0 * a)
            tmplam = min(tmplam, 0.5 * alam)
        alam2, f2 = alam, half
        alam = tmplam if tmplam > 0.1 * alam else 0.1 * alam


def solve_lu(a, b):
    """Crout's method with implicit pivoting, in place."""
    n = len(b)
    scale = [largest(row) for row in a]
    if 0.0 in scale:
        raise Failed("ERROR:  Singular matrix in routine ludcmp.")
    scale = [1.0 / v for v in scale]
    index = []
    for j in range(n):
        for i in range(j):
            for k in range(i):
                a[i][j] -= a[i][k] * a[k][j]
        big, imax = 0.0, j
        for i in range(j, n):
            for k in range(j):
                a[i][j] -= a[i][k] * a[k][j]
            if scale[i] * abs(a[i][j]) >= big:
                big, imax = scale[i] * abs(a[i][j]), i
        if imax != j:
            a[imax], a[j] = a[j], a[imax]
            scale[imax] = scale[j]
        index.append(imax)
        if a[j][j] == 0.0:
            a[j][j] = TINY
        inverse = 1.0 / a[j][j]
        for i in range(j + 1, n):
            a[i][j] *= inverse
    for i in range(n):
        b[i], b[index[i]] = b[index[i]], b[i]
        for j in range(i):
            b[i] -= a[i][j] * b[j]
    for i in reversed(range(n)):
        for j in range(i + 1, n):
            b[i] -= a[i][j] * b[j]
        b[i] /= a[i][i]


def gradient_test(g, x, half):
    return largest([abs(g[i]) * max(abs(x[i]), 1.0) / max(half, 0.5 * len(x)) for i in range(len(x))])


def step_test(x, xold):
    return largest([abs(x[i] - xold[i]) / max(abs(x[i]), 1.0) for i in range(len(x))])


def longest(x):
    return STPMX * max(math.sqrt(summed(v * v for v in x)), float(len(x)))


def newt(f):
    """True for success."""
    x = list(f.start)
    n = len(x)
    fvec = f(x)
    if largest(fvec) < 1e-8:
        return True
    half, stpmax = half_squares(fvec), longest(x)
    for _ in range(MAXITS):
        jacobian = fdjac(f, x, fvec)
        g = [summed(jacobian[j][i] * fvec[j] for j in range(n)) for i in range(n)]
        xold = list(x)
        p = [-v for v in fvec]
        solve_lu(jacobian, p)
        x, fvec, half, check = lnsrch(f, xold, half, g, p, stpmax)
        if largest(fvec) < TOLF:
            return True
        if not check:
            return gradient_test(g, x, half) >= TOLMIN
        if step_test(x, xold) < TOLX:
            return True
    raise Failed("ERROR:  MAXITS exceeded in newt")


def qr(a):
    n = len(a)
    c, d, singular = [0.0] * n, [0.0] * n, False
    for k in range(n - 1):
        scale = largest([a[i][k] for i in range(k, n)])
        if scale == 0.0:
            singular = True
            continue
        for i in range(k, n):
            a[i][k] /= scale
        sigma = sign(math.sqrt(summed(a[i][k] * a[i][k] for i in range(k, n))), a[k][k])
        a[k][k] += sigma
        c[k] = sigma * a[k][k]
        d[k] = -scale * sigma
        for j in range(k + 1, n):
            tau = summed(a[i][k] * a[i][j] for i in range(k, n)) / c[k]
            for i in range(k, n):
                a[i][j] -= tau * a[i][k]
    d[n - 1] = a[n - 1][n - 1]
    return c, d, singular or d[n - 1] == 0.0


def rotate(r, qt, i, a, b):
    n = len(r)
    if a == 0.0:
        c, s = 0.0, 1.0 if b >= 0.0 else -1.0
    elif abs(a) > abs(b):
        ratio = b / a
        c = sign(1.0 / math.sqrt(1.0 + ratio * ratio), a)
        s = ratio * c
    else:
        ratio = a / b
        s = sign(1.0 / math.sqrt(1.0 + ratio * ratio), b)
        c = ratio * s
    for m, first in ((r, i), (qt, 0)):
        for j in range(first, n):
            y, w = m[i][j], m[i + 1][j]
            m[i][j], m[i + 1][j] = c * y - s * w, s * y + c * w


def update(r, qt, u, v):
    n = len(r)
    k = n - 1
    while k > 0 and u[k] == 0.0:
        k -= 1
    for i in reversed(range(k)):
        rotate(r, qt, i, u[i], -u[i + 1])
        a, b = abs(u[i]), abs(u[i + 1])
        if a == 0.0:
            u[i] = b
        elif a > b:
            u[i] = a * math.sqrt(1.0 + (b / a) * (b / a))
        else:
            u[i] = b * math.sqrt(1.0 + (a / b) * (a / b))
    for j in range(n):
        r[0][j] += u[0] * v[j]
    for i in range(k):
        rotate(r, qt, i, r[i][i], -r[i + 1][i])


def factors(f, x, fvec):
    n = len(x)
    r = fdjac(f, x, fvec)
    c, d, singular = qr(r)
    if singular:
        raise Failed("ERROR:  Singular Jacobian in brodyn.")
    qt = [[1.0 if i == j else 0.0 for j in range(n)] for i in range(n)]
    for k in range(n - 1):
        if c[k] != 0.0:
            for j in range(n):
                total = summed(r[i][k] * qt[i][j] for i in range(k, n)) / c[k]
                for i in range(k, n):
                    qt[i][j] -= total * r[i][k]
    for i in range(n):
        r[i][i] = d[i]
        for j in range(i):
            r[i][j] = 0.0
    return r, qt, d


def broydn(f):
    """True for success."""
    x = list(f.start)
    n = len(x)
    fvec = f(x)
    if largest(fvec) < 1e-8:
        return True
    half, stpmax, restart = half_squares(fvec), longest(x), True
    for _ in range(MAXITS):
        if restart:
            r, qt, d = factors(f, x, fvec)
        else:
            s = [x[i] - xold[i] for i in range(n)]
            t = [summed(r[i][j] * s[j] for j in range(i, n)) for i in range(n)]
            w = [fvec[i] - fvcold[i] - summed(qt[j][i] * t[j] for j in range(n)) for i in range(n)]
            w = [0.0 if abs(w[i]) < EPS * (abs(fvec[i]) + abs(fvcold[i])) else w[i] for i in range(n)]
            if any(w):
                t = [summed(qt[i][j] * w[j] for j in range(n)) for i in range(n)]
                den = summed(v * v for v in s)
                update(r, qt, t, [v / den for v in s])
                if any(r[i][i] == 0.0 for i in range(n)):
                    raise Failed("ERROR:  r singular in broydn.")
                d = [r[i][i] for i in range(n)]
        p = [-summed(qt[i][j] * fvec[j] for j in range(n)) for i in range(n)]
        g = [0.0 - summed(r[j][i] * p[j] for j in range(i + 1)) for i in range(n)]
        xold, fvcold = list(x), list(fvec)
        for i in reversed(range(n)):
            p[i] = (p[i] - summed(r[i][j] * p[j] for j in range(i + 1, n))) / d[i]
        x, fvec, half, check = lnsrch(f, xold, half, g, p, stpmax)
        if largest(fvec) < TOLF:
            return True
        if check:
            restart = False
            if step_test(x, xold) < TOLX:
                return True
        elif restart or gradient_test(g, x, half) < TOLMIN:
            return False
        else:
            restart = True
    raise Failed("ERROR:  MAXITS exceeded in broydn.")
