#include "tests/numerics/plain_methods.h"

#include <algorithm>
#include <cmath>

namespace metrify::test {

numbers along(const numbers& p, double t, const numbers& direction) {
    numbers at = p;
    for (std::size_t i = 0; i < p.size(); ++i)
        at[i] = p[i] + t * direction[i];
    return at;
}

namespace {

double sign(double a, double b) {
    return b >= 0 ? std::fabs(a) : -std::fabs(a);
}

int ridders(const number_function& f, double xl, double xh, double xm, double fl, double fh, double fm,
            double& x) {
    if (fl == 0 || fh == 0 || fm == 0)
        return 0;
    int count = 0;
    double ans = -1.11e30;
    for (int pass = 0; pass < 600; ++pass) {
        const double s = std::sqrt(fm * fm - fl * fh);
        if (s == 0)
            break;
        const double xnew = xm + (xm - xl) * ((fl > fh ? 1.0 : -1.0) * fm / s);
        if (std::fabs(xnew - ans) <= 1e-8)
            break;
        ans = xnew;
        const double fnew = f(ans);
        ++count;
        if (fnew == 0)
            break;
        if (sign(fm, fnew) != fm)
            xl = xm, fl = fm, xh = ans, fh = fnew;
        else if (sign(fl, fnew) != fl)
            xh = ans, fh = fnew;
        else
            xl = ans, fl = fnew;
        if (std::fabs(xh - xl) <= 1e-8)
            break;
        xm = (xl + xh) / 2;
        fm = f(xm);
        ++count;
    }
    x = ans;
    return count + 1;
}

struct bracket {
    double a, b, c;
    int count;
};

// direct is false if the values lag their points in the branch beyond the third point.
bracket bracket_minimum(const number_function& f, double ax, double bx, bool direct) {
    int count = 3;
    double fa = f(ax), fb = f(bx);
    if (fb > fa)
        std::swap(ax, bx), std::swap(fa, fb);
    double cx = bx + 1.618034 * (bx - ax);
    double fc = f(cx);
    while (fb > fc) {
        const double r = (bx - ax) * (fb - fc), q = (bx - cx) * (fb - fa);
        double u = bx - ((bx - cx) * q - (bx - ax) * r) /
                            (2.0 * sign(std::fabs(q - r) > 1e-20 ? std::fabs(q - r) : 1e-20, q - r));
        const double ulim = bx + 100.0 * (cx - bx);
        double fu = 0;
        if ((bx - u) * (u - cx) > 0) {
            fu = f(u), ++count;
            if (fu < fc)
                return {bx, u, cx, count};
            if (fu > fb)
                return {ax, bx, u, count};
            u = cx + 1.618034 * (cx - bx);
            fu = f(u), ++count;
        } else if ((cx - u) * (u - ulim) > 0) {
            fu = f(u), ++count;
            if (fu < fc) {
                bx = cx, cx = u;
                u = cx + 1.618034 * (cx - bx);
                fb = fc;
                ++count;
                if (direct)
                    fc = f(u), fu = 0;
                else
                    fc = fu, fu = f(u);
            }
        } else {
            u = (u - ulim) * (ulim - cx) >= 0 ? ulim : cx + 1.618034 * (cx - bx);
            fu = f(u), ++count;
        }
        ax = bx, bx = cx, cx = u;
        fa = fb, fb = fc, fc = fu;
    }
    return {ax, bx, cx, count};
}

double brent(const number_function& f, const bracket& in, double tol, int& count, double& last, double& fx) {
    double a = std::min(in.a, in.c), b = std::max(in.a, in.c);
    double x = in.b, w = x, v = x, d = 0, e = 0;
    fx = f(x);
    double fw = fx, fv = fx;
    last = x;
    ++count;
    for (;;) {
        const double xm = 0.5 * (a + b), tol1 = tol * std::fabs(x) + 1e-10, tol2 = 2 * tol1;
        if (std::fabs(x - xm) <= tol2 - 0.5 * (b - a))
            return x;
        bool golden = true;
        if (std::fabs(e) > tol1) {
            const double r = (x - w) * (fx - fv);
            double q = (x - v) * (fx - fw);
            double p = (x - v) * q - (x - w) * r;
            q = 2 * (q - r);
            if (q > 0)
                p = -p;
            q = std::fabs(q);
            const double etemp = e;
            e = d;
            if (std::fabs(p) < std::fabs(0.5 * q * etemp) && p > q * (a - x) && p < q * (b - x)) {
                golden = false;
                d = p / q;
                const double u = x + d;
                if (u - a < tol2 || b - u < tol2)
                    d = sign(tol1, xm - x);
            }
        }
        if (golden)
            d = 0.381966 * (e = x >= xm ? a - x : b - x);
        const double u = std::fabs(d) >= tol1 ? x + d : x + sign(tol1, d);
        const double fu = f(u);
        last = u;
        ++count;
        if (fu <= fx) {
            (u >= x ? a : b) = x;
            v = w, w = x, x = u;
            fv = fw, fw = fx, fx = fu;
        } else {
            (u < x ? a : b) = u;
            if (fu <= fw || w == x)
                v = w, w = u, fv = fw, fw = fu;
            else if (fu <= fv || v == x || v == w)
                v = u, fv = fu;
        }
    }
}

double line_minimum(const value_function& f, numbers& p, numbers& direction, int& count, numbers& last) {
    const number_function g = [&](double t) { return f(along(p, t, direction)); };
    const bracket found = bracket_minimum(g, 0.0, 1.0, false);
    count += found.count;
    double t = 0, fret = 0;
    const double best = brent(g, found, 2e-4, count, t, fret);
    last = along(p, t, direction);
    for (std::size_t i = 0; i < p.size(); ++i) {
        direction[i] *= best;
        p[i] += direction[i];
    }
    return fret;
}

} // namespace

int plain_root(const number_function& f, double& x) {
    const double x0 = x, f0 = f(x0);
    if (f0 == 0)
        return 1;
    double dx = std::fabs(x0) < 1 ? 0.1 : 0.1 * std::fabs(x0);
    double low = x0 - dx, high = x0 + dx, before_low = x0, before_high = x0;
    double f_low = f(low), f_high = f(high), f_before_low = f0, f_before_high = f0;
    int count = 3;
    while (!(f_low * f_before_low <= 0) && !(f_high * f_before_high <= 0)) {
        dx *= 2;
        before_low = low, f_before_low = f_low, low -= dx, f_low = f(low);
        before_high = high, f_before_high = f_high, high += dx, f_high = f(high);
        count += 2;
    }
    const bool is_low = f_low * f_before_low <= 0;
    const double a = is_low ? before_low : before_high, b = is_low ? low : high;
    x = (a + b) / 2;
    return count + 1 +
           ridders(f, a, b, x, is_low ? f_before_low : f_before_high, is_low ? f_low : f_high, f(x), x);
}

int plain_minimum(const number_function& f, double& x) {
    const double step = std::fabs(x) < 1 ? 0.1 : 0.1 * std::fabs(x);
    const bracket found = bracket_minimum(f, x, x + step, true);
    int count = found.count;
    double value = 0;
    brent(f, found, step * 1e-8, count, x, value);
    return count;
}

int plain_powell(const value_function& f, numbers& x) {
    const std::size_t n = x.size();
    table directions(n, numbers(n));
    for (std::size_t i = 0; i < n; ++i)
        directions[i][i] = 1;
    numbers p = x, before = x;
    double fret = f(p);
    int count = 1;
    for (;;) {
        const double fp = fret;
        std::size_t steepest = 0;
        double del = 0;
        for (std::size_t i = 0; i < n; ++i) {
            const double previous = fret;
            numbers direction = directions[i];
            fret = line_minimum(f, p, direction, count, x);
            if (std::fabs(previous - fret) > del)
                del = std::fabs(previous - fret), steepest = i;
        }
        if (2 * std::fabs(fp - fret) <= 1e-8 * (std::fabs(fp) + std::fabs(fret)))
            return count;
        numbers beyond(n), direction(n);
        for (std::size_t j = 0; j < n; ++j) {
            beyond[j] = 2 * p[j] - before[j];
            direction[j] = p[j] - before[j];
        }
        before = p;
        const double far = f(beyond);
        x = beyond;
        ++count;
        const double u = fp - fret - del, v = fp - far;
        if (far < fp && 2 * (fp - 2 * fret + far) * (u * u) - del * (v * v) < 0) {
            fret = line_minimum(f, p, direction, count, x);
            directions[steepest] = directions[n - 1];
            directions[n - 1] = direction;
        }
    }
}

} // namespace metrify::test
