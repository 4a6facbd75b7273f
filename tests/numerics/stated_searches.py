"""The methods that look for roots and minima in their published form, with the required constants and
differences, on functions of plain numbers; see make_searches.py. A function takes a list of numbers and gives a
list of values, or raises Failed."""
import math


class Failed(Exception):
    """A method, or an evaluation, that ends with a text."""


class Function:
    """Counts the evaluations and keeps the points."""

    def __init__(self, formula, start):
        self.formula, self.start, self.points = formula, [float(x) for x in start], []

    def __call__(self, x):
        self.points.append(list(x))
        assert len(self.points) < 500000, "endless"
        try:
            return self.formula(x)
        except OverflowError:
            raise Failed("a number beyond the range") from None

    def at(self, x):
        return self([x])[0]


def sign(a, b):
    return abs(a) if b >= 0.0 else -abs(a)


def quotient(a, b):
    """As the processor divides: no exception at 0."""
    if b != 0.0 or math.isnan(a) or math.isnan(b):
        return a / b
    return math.nan if a == 0.0 else math.copysign(math.inf, a) * math.copysign(1.0, b)


def root_of_square(x):
    return math.sqrt(x) if x >= 0.0 else math.nan


# One variable

def bracket_root(f, x0, dx, most=600, growth=2.0):
    f0 = f.at(x0)
    if f0 == 0.0:
        return x0, x0 + 1.0, (x0 + x0 + 1.0) / 2.0, f0, 0.5, 0.0
    walkers = [[-1.0, x0, f0, None, None, True], [1.0, x0, f0, None, None, True]]

    def step():
        for w in walkers:
            if w[5]:
                w[3], w[4] = w[1], w[2]
                w[1] += w[0] * dx
                try:
                    w[2] = f.at(w[1])
                except Failed:
                    w[5] = False

    step()
    if not any(w[5] for w in walkers):
        raise Failed("Cannot evaluate bracketing points (1)")
    count = 1
    while True:
        if count > most:
            raise Failed("ERROR:  Max_it reached w/o sign change in bi_bracket_zero()")
        crossed = [w for w in walkers if w[5] and 0.0 >= w[2] * w[4]]
        if crossed:
            break
        dx *= growth
        step()
        if not any(w[5] for w in walkers):
            raise Failed("Cannot evaluate bracketing points (2)")
        count += 1
    _, b, fb, a, fa, _ = crossed[0]
    m = (a + b) / 2.0
    fm = f.at(m)
    if abs(fm) > 1.5 * abs(fa) and abs(fm) > 1.5 * abs(fb):
        raise Failed("ERROR:  Possible singularity in bi_bracket_zero()")
    return a, b, m, fa, fb, fm


def ridders(f, xl, xh, xm, fl, fh, fm, tolerance=1e-8, most=600):
    first = abs(fl), abs(fh), abs(fm)
    for x, value in ((xl, fl), (xh, fh), (xm, fm)):
        if value == 0.0:
            return x
    if fl * fh > 0.0:
        raise Failed("ERROR:  Root must be bracketed in zriddr()")
    ans, text = -1.11e30, None
    for count in range(1, most + 2):
        if count > most:
            text = "ERROR:  Maximum iterations reached in zriddr()"
            break
        s = root_of_square(fm * fm - fl * fh)
        if s == 0.0:
            break
        xnew = xm + (xm - xl) * ((1.0 if fl > fh else -1.0) * fm / s)
        if abs(xnew - ans) <= tolerance:
            break
        ans = xnew
        fnew = f.at(ans)
        if fnew == 0.0:
            break
        if sign(fm, fnew) != fm:
            xl, fl, xh, fh = xm, fm, ans, fnew
        elif sign(fl, fnew) != fl:
            xh, fh = ans, fnew
        elif sign(fh, fnew) != fh:
            xl, fl = ans, fnew
        else:
            raise Failed("ERROR:  Never get here in zriddr()")
        if abs(xh - xl) <= tolerance:
            break
        xm = (xl + xh) / 2.0
        fm = f.at(xm)
    if text:
        raise Failed(text)
    left = abs(f.at(ans))
    if all(left > value for value in first):
        raise Failed("ERROR:  Singularity detected in zriddr()")
    return ans


def first_step(x0):
    return 0.1 if abs(x0) < 1.0 else 0.1 * abs(x0)


def solve_one(f):
    x0 = f.start[0]
    try:
        found = bracket_root(f, x0, first_step(x0))
    except Failed:
        raise Failed("ERROR: No solution found.  Try a different initial independent value.") from None
    ridders(f, *found)


# Minima

def bracket_minimum(value, ax, bx, direct, most=100):
    """None if an evaluation fails. Only a failure of the third one leaves a text."""
    gold, farthest, tiny = 1.618034, 100.0, 1e-20
    try:
        fa, fb = value(ax), value(bx)
    except Failed:
        return None
    if fb > fa:
        ax, bx, fa, fb = bx, ax, fb, fa
    cx = bx + gold * (bx - ax)
    fc = value(cx)
    count = 0
    while fb > fc:
        count += 1
        if count > most:
            raise Failed("ERROR:  Too many iteratiuons in mnbrak()")
        r = (bx - ax) * (fb - fc)
        q = (bx - cx) * (fb - fa)
        difference = abs(q - r)
        u = bx - ((bx - cx) * q - (bx - ax) * r) / (2.0 * sign(difference if difference > tiny else tiny, q - r))
        ulim = bx + farthest * (cx - bx)
        try:
            if (bx - u) * (u - cx) > 0.0:
                fu = value(u)
                if fu < fc:
                    return bx, u, cx
                if fu > fb:
                    return ax, bx, u
                u = cx + gold * (cx - bx)
                fu = value(u)
            elif (cx - u) * (u - ulim) > 0.0:
                fu = value(u)
                if fu < fc:
                    bx, cx = cx, u
                    u = cx + gold * (cx - bx)
                    fb = fc
                    if direct:  # the values lag the points by one
                        fc, fu = value(u), 0.0
                    else:
                        fc, fu = fu, value(u)
            elif (u - ulim) * (ulim - cx) >= 0.0:
                u = ulim
                fu = value(u)
            else:
                u = cx + gold * (cx - bx)
                fu = value(u)
        except Failed:
            return None
        ax, bx, cx = bx, cx, u
        fa, fb, fc = fb, fc, fu
    return ax, bx, cx


def brent(value, bracket, tol, most=100):
    ax, bx, cx = bracket
    a, b = (ax, cx) if ax < cx else (cx, ax)
    x = w = v = bx
    fx = fw = fv = value(x)
    d = e = 0.0
    for _ in range(most):
        xm = 0.5 * (a + b)
        tol1 = tol * abs(x) + 1e-10
        tol2 = 2.0 * tol1
        if abs(x - xm) <= tol2 - 0.5 * (b - a):
            return x, fx
        golden = True
        if abs(e) > tol1:
            r = (x - w) * (fx - fv)
            q = (x - v) * (fx - fw)
            p = (x - v) * q - (x - w) * r
            q = 2.0 * (q - r)
            if q > 0.0:
                p = -p
            q = abs(q)
            before_last, e = e, d
            if not (abs(p) >= abs(0.5 * q * before_last) or p <= q * (a - x) or p >= q * (b - x)):
                golden = False
                d = quotient(p, q)
                u = x + d
                if u - a < tol2 or b - u < tol2:
                    d = sign(tol1, xm - x)
        if golden:
            e = a - x if x >= xm else b - x
            d = 0.381966 * e
        u = x + d if abs(d) >= tol1 else x + sign(tol1, d)
        fu = value(u)
        if fu <= fx:
            if u >= x:
                a = x
            else:
                b = x
            v, w, x, fv, fw, fx = w, x, u, fw, fx, fu
        else:
            if u < x:
                a = u
            else:
                b = u
            if fu <= fw or w == x:
                v, w, fv, fw = w, u, fw, fu
            elif fu <= fv or v == x or v == w:
                v, fv = u, fu
    raise Failed("ERROR:  Too many iterations in brent()")


def line_minimum(f, p, direction, fret):
    n = len(p)

    def value(t):
        return f([p[j] + t * direction[j] for j in range(n)])[0]

    found = bracket_minimum(value, 0.0, 1.0, False)
    t = 0.0
    if found:
        t, fret = brent(value, found, 0.0002)
    step = [x * t for x in direction]
    return [p[j] + step[j] for j in range(n)], step, fret


def powell(f, ftol=1e-8, most=4000):
    p = list(f.start)
    n = len(p)
    directions = [[1.0 if i == j else 0.0 for j in range(n)] for i in range(n)]
    fret = f(p)[0]
    before = list(p)
    count = 0
    while True:
        count += 1
        fp, steepest, change = fret, 0, 0.0
        for i in range(n):
            last = fret
            p, _, fret = line_minimum(f, p, directions[i], fret)
            if abs(last - fret) > change:
                change, steepest = abs(last - fret), i
        if 2.0 * abs(fp - fret) <= ftol * (abs(fp) + abs(fret)):
            return
        if count == most:
            raise Failed("ERROR:  Too many iterations.")
        beyond = [2.0 * p[j] - before[j] for j in range(n)]
        direction = [p[j] - before[j] for j in range(n)]
        before = list(p)
        far = f(beyond)[0]
        if far < fp:
            a, b = fp - fret - change, fp - far
            if 2.0 * (fp - 2.0 * fret + far) * (a * a) - change * (b * b) < 0.0:
                p, direction, fret = line_minimum(f, p, direction, fret)
                directions[steepest] = directions[n - 1]
                directions[n - 1] = direction


def minimise(f):
    if len(f.start) > 1:
        powell(f)
        return
    x0 = f.start[0]
    step = first_step(x0)
    try:
        found = bracket_minimum(f.at, x0, x0 + step, True)
    except Failed:
        found = None
    if not found:
        raise Failed("ERROR: No minimum solution found.  Try a different initial independent value.")
    brent(f.at, found, step * 1e-8)
