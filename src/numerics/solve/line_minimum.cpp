#include "numerics/solve/line_minimum.h"

#include "numerics/scalar_helpers.h"

#include <cmath>
#include <utility>

namespace metrify {

namespace {

constexpr double GOLD = 1.618034;
constexpr double GLIMIT = 100.0;
constexpr double TINY = 1e-20;
constexpr double CGOLD = 0.381966;
constexpr double ZEPS = 1e-10;

double value_at(line_search_state& line, double t, text_str*& err) {
    return line.along_line ? f1dim(line, t, err) : evaluate_at(line.function, t, err);
}

/// The search for a bracket: its three points, and the next one.
struct bracketing {
    line_search_state& line;
    minimum_bracket& at;
    text_str*& err;
    double u = 0.0, fu = 0.0;

    double value(double t) const { return value_at(line, t, err); }
    bool has_failed() const { return !str_is_empty(err); }

    void take(double t) {
        u = t;
        fu = value(t);
    }
    void shift() {
        at.ax = at.bx;
        at.bx = at.cx;
        at.cx = u;
        at.fa = at.fb;
        at.fb = at.fc;
        at.fc = fu;
    }
};

// The extremum of the parabola through the three points.
double parabolic_point(const minimum_bracket& at) {
    const double r = (at.bx - at.ax) * (at.fb - at.fc);
    const double q = (at.bx - at.cx) * (at.fb - at.fa);
    const double divisor = 2.0 * with_sign_of(larger(std::fabs(q - r), TINY), q - r);
    return at.bx - ((at.bx - at.cx) * q - (at.bx - at.ax) * r) / divisor;
}

// Tries a parabolic point between the second and the third: true if it completes a bracket.
bool try_between(bracketing& search, double u) {
    minimum_bracket& at = search.at;
    search.take(u);
    if (search.has_failed())
        return false;
    if (search.fu < at.fc) {
        at.ax = at.bx;
        at.fa = at.fb;
        at.bx = search.u;
        at.fb = search.fu;
        return true;
    }
    if (search.fu > at.fb) {
        at.cx = search.u;
        at.fc = search.fu;
        return true;
    }
    search.take(at.cx + GOLD * (at.cx - at.bx));
    return false;
}

// Tries a parabolic point beyond the third. If the function still decreases, takes one golden step more.
void try_beyond(bracketing& search, double u) {
    minimum_bracket& at = search.at;
    search.take(u);
    if (search.has_failed() || !(search.fu < at.fc))
        return;
    at.bx = at.cx;
    at.cx = search.u;
    search.u = at.cx + GOLD * (at.cx - at.bx);
    at.fb = at.fc;
    if (search.line.along_line) {
        at.fc = search.fu;
        search.fu = search.value(search.u);
    } else {
        // Intentional: the values lag the points by one here. The parabolic point gets the value of the
        // golden one, which gets 0.
        at.fc = search.value(search.u);
        search.fu = 0.0;
    }
}

// One pass: true if the bracket is complete without a shift.
bool bracketing_pass(bracketing& search) {
    const minimum_bracket& at = search.at;
    const double u = parabolic_point(at);
    const double ulim = at.bx + GLIMIT * (at.cx - at.bx);
    if ((at.bx - u) * (u - at.cx) > 0.0)
        return try_between(search, u);
    if ((at.cx - u) * (u - ulim) > 0.0)
        try_beyond(search, u);
    else if ((u - ulim) * (ulim - at.cx) >= 0.0)
        search.take(ulim);
    else
        search.take(at.cx + GOLD * (at.cx - at.bx));
    return false;
}

bool give_up(text_str*& err) {
    str_clear(&err);
    return false;
}

/// Brent's interval and the three best points in it: the best, the second, and the second's predecessor.
struct brent_state {
    double a, b;
    double x, w, v;
    double fx, fw, fv;
    double d = 0.0; // the current step
    double e = 0.0; // the step before the last one

    void golden_step(double xm) {
        e = x >= xm ? a - x : b - x;
        d = CGOLD * e;
    }
    void choose_step(double xm, double tol1);
    void take(double u, double fu);
};

// A step to the minimum of the parabola through the three points; a golden-section step if that is outside
// the interval or longer than half the step before the last one.
void brent_state::choose_step(double xm, double tol1) {
    if (!(std::fabs(e) > tol1)) {
        golden_step(xm);
        return;
    }
    const double r = (x - w) * (fx - fv);
    double q = (x - v) * (fx - fw);
    double p = (x - v) * q - (x - w) * r;
    q = 2.0 * (q - r);
    if (q > 0.0)
        p = -p;
    q = std::fabs(q);
    const double before_last = e;
    e = d;
    if (std::fabs(p) >= std::fabs(0.5 * q * before_last) || p <= q * (a - x) || p >= q * (b - x)) {
        golden_step(xm);
        return;
    }
    d = p / q;
    const double u = x + d;
    const double tol2 = 2.0 * tol1;
    if (u - a < tol2 || b - u < tol2)
        d = with_sign_of(tol1, xm - x);
}

// Updates the interval and the three points with a new one.
void brent_state::take(double u, double fu) {
    if (fu <= fx) {
        (u >= x ? a : b) = x;
        v = w;
        fv = fw;
        w = x;
        fw = fx;
        x = u;
        fx = fu;
        return;
    }
    (u < x ? a : b) = u;
    if (fu <= fw || w == x) {
        v = w;
        fv = fw;
        w = u;
        fw = fu;
    } else if (fu <= fv || v == x || v == w) {
        v = u;
        fv = fu;
    }
}

} // namespace

double f1dim(line_search_state& line, double t, text_str*& err) {
    for (long j = 1; j <= line.dimension; ++j)
        line.point[j] = line.base[j] + t * line.direction[j];
    double value = 0.0;
    line.function.evaluate_function(line.point.data(), &value, err);
    return value;
}

bool mnbrak(line_search_state& line, minimum_bracket& bracket, int limit, text_str*& err) {
    bracketing search = {line, bracket, err};
    bracket = {bracket.ax, bracket.bx};
    bracket.fa = search.value(bracket.ax);
    if (search.has_failed())
        return give_up(err);
    bracket.fb = search.value(bracket.bx);
    if (search.has_failed())
        return give_up(err);
    if (bracket.fb > bracket.fa) {
        std::swap(bracket.ax, bracket.bx);
        std::swap(bracket.fa, bracket.fb);
    }
    bracket.cx = bracket.bx + GOLD * (bracket.bx - bracket.ax);
    bracket.fc = search.value(bracket.cx);
    if (search.has_failed())
        return false;
    for (int pass = 1; bracket.fb > bracket.fc; ++pass) {
        if (pass > limit) {
            err = str_append_text(&err, "ERROR:  Too many iteratiuons in mnbrak()\n");
            return false;
        }
        const bool is_complete = bracketing_pass(search);
        if (search.has_failed())
            return give_up(err);
        if (is_complete)
            break;
        search.shift();
    }
    return true;
}

double brent(line_search_state& line, const minimum_bracket& bracket, double tol, int limit, double& xmin,
             text_str*& err) {
    const double fb = value_at(line, bracket.bx, err);
    if (!str_is_empty(err))
        return 0.0;
    brent_state s = {bracket.ax < bracket.cx ? bracket.ax : bracket.cx,
                     bracket.ax > bracket.cx ? bracket.ax : bracket.cx,
                     bracket.bx,
                     bracket.bx,
                     bracket.bx,
                     fb,
                     fb,
                     fb};
    for (int pass = 1; pass <= limit; ++pass) {
        const double xm = 0.5 * (s.a + s.b);
        const double tol1 = tol * std::fabs(s.x) + ZEPS;
        if (std::fabs(s.x - xm) <= 2.0 * tol1 - 0.5 * (s.b - s.a)) {
            xmin = s.x;
            return s.fx;
        }
        s.choose_step(xm, tol1);
        const double u = std::fabs(s.d) >= tol1 ? s.x + s.d : s.x + with_sign_of(tol1, s.d);
        const double fu = value_at(line, u, err);
        if (!str_is_empty(err))
            return 0.0;
        s.take(u, fu);
    }
    err = str_append_text(&err, "ERROR:  Too many iterations in brent()\n");
    xmin = s.x;
    return s.fx;
}

} // namespace metrify
