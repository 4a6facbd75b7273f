#include "numerics/solve/one_dim_root.h"

#include "base/failure.h"
#include "numerics/scalar_helpers.h"

#include <cmath>

namespace metrify {

namespace {

constexpr int bracket_steps = 600;
constexpr double bracket_growth = 2.0;
constexpr double XACC = 1e-8;
constexpr int MAXIT = 600;
constexpr double UNUSED = -1.11e30; // no root is expected there

/// One of the two points that move away from the start value, with its previous position.
class search_side {
  public:
    search_side(double x, double fx) : x_(x), fx_(fx) {}

    bool is_abandoned() const { return abandoned_; }

    /// Moves to the next point. If the function can't be evaluated there, this side is abandoned.
    void step(bound_function& f, double distance, text_str*& err) {
        if (abandoned_)
            return;
        previous_x_ = x_;
        previous_fx_ = fx_;
        x_ += distance;
        fx_ = evaluate_at(f, x_, err);
        if (!str_is_empty(err)) {
            str_clear(&err);
            abandoned_ = true;
        }
    }

    /// A not-a-number at either end is no change of sign: the search continues.
    bool has_crossed() const { return !abandoned_ && 0.0 >= fx_ * previous_fx_; }

    void give_bracket(root_bracket& found) const {
        found.a = previous_x_;
        found.fa = previous_fx_;
        found.b = x_;
        found.fb = fx_;
    }

  private:
    double x_, fx_;
    double previous_x_ = 0.0, previous_fx_ = 0.0;
    bool abandoned_ = false;
};

// A start value that is itself a root gets a bracket that zriddr returns without an evaluation.
void bracket_at_root(double x0, double fx0, root_bracket& found) {
    found.a = x0;
    found.fa = fx0;
    found.b = x0 + 1.0;
    found.fb = fx0 + 0.5;
    found.m = (found.a + found.b) / 2.0;
}

bool search_outward(bound_function& f, double x0, double fx0, double dx, int Max_it, double growth,
                    root_bracket& found, text_str*& err) {
    constexpr std::string_view too_many_message =
        "ERROR:  Max_it reached w/o sign change in bi_bracket_zero()\n";
    search_side low(x0, fx0);
    search_side high(x0, fx0);
    low.step(f, -dx, err);
    high.step(f, dx, err);
    if (low.is_abandoned() && high.is_abandoned()) {
        append(err, "Cannot evaluate bracketing points (1)");
        return false;
    }
    for (int pass = 1; pass <= Max_it; ++pass) {
        if (low.has_crossed() || high.has_crossed()) {
            (low.has_crossed() ? low : high).give_bracket(found);
            return true;
        }
        dx *= growth;
        low.step(f, -dx, err);
        high.step(f, dx, err);
        if (low.is_abandoned() && high.is_abandoned()) {
            append(err, "Cannot evaluate bracketing points (2)");
            return false;
        }
    }
    append(err, too_many_message);
    return false;
}

// The bracket, its midpoint, and the latest estimate of the root.
struct ridders_state {
    double xl, xh, xm;
    double fl, fh, fm;
    double ans = UNUSED;
};

bool differ_in_sign(double a, double b) {
    return with_sign_of(a, b) != a;
}

// Makes the new point an end of the bracket; the midpoint or an old end is the other one.
bool shrink_bracket(ridders_state& s, double fnew) {
    if (differ_in_sign(s.fm, fnew)) {
        s.xl = s.xm;
        s.fl = s.fm;
        s.xh = s.ans;
        s.fh = fnew;
    } else if (differ_in_sign(s.fl, fnew)) {
        s.xh = s.ans;
        s.fh = fnew;
    } else if (differ_in_sign(s.fh, fnew)) {
        s.xl = s.ans;
        s.fl = fnew;
    } else {
        return false;
    }
    return true;
}

enum class pass_result { goes_on, converged, failed };

pass_result ridders_pass(bound_function& f, ridders_state& s, double tolerance, text_str*& err) {
    const double root = std::sqrt(s.fm * s.fm - s.fl * s.fh);
    if (root == 0.0)
        return pass_result::converged;
    const double xnew = s.xm + (s.xm - s.xl) * ((s.fl > s.fh ? 1.0 : -1.0) * s.fm / root);
    if (std::fabs(xnew - s.ans) <= tolerance)
        return pass_result::converged;
    s.ans = xnew;
    const double fnew = evaluate_at(f, s.ans, err);
    if (!str_is_empty(err))
        return pass_result::failed;
    if (fnew == 0.0)
        return pass_result::converged;
    if (!shrink_bracket(s, fnew)) {
        append(err, "ERROR:  Never get here in zriddr()\n");
        return pass_result::failed;
    }
    if (std::fabs(s.xh - s.xl) <= tolerance)
        return pass_result::converged;
    s.xm = (s.xl + s.xh) / 2.0;
    s.fm = evaluate_at(f, s.xm, err);
    return str_is_empty(err) ? pass_result::goes_on : pass_result::failed;
}

} // namespace

void solve_one_dim(bound_function& f, text_str*& err) {
    double x0 = 0.0;
    f.read_solver_vector(&x0, err);
    const double dx = std::fabs(x0) < 1.0 ? 0.1 : 0.1 * std::fabs(x0);
    root_bracket found;
    if (bi_bracket_zero(f, x0, dx, bracket_steps, bracket_growth, found, err))
        zriddr(f, found, XACC, err);
    else
        replace_message(err, "ERROR: No solution found.  Try a different initial independent value.\n");
}

bool bi_bracket_zero(bound_function& f, double x0, double dx, int Max_it, double growth, root_bracket& found,
                     text_str*& err) {
    found = {};
    const double fx0 = evaluate_at(f, x0, err);
    if (!str_is_empty(err))
        return false;
    if (fx0 == 0.0) {
        bracket_at_root(x0, fx0, found);
        return true;
    }
    if (!search_outward(f, x0, fx0, dx, Max_it, growth, found, err))
        return false;
    found.m = (found.a + found.b) / 2.0;
    found.fm = evaluate_at(f, found.m, err);
    if (!str_is_empty(err))
        return false;
    // The function is larger in the middle than at the ends: assume a pole.
    constexpr double growth_of_a_pole = 1.5;
    const double middle = std::fabs(found.fm);
    if (middle > growth_of_a_pole * std::fabs(found.fa) && middle > growth_of_a_pole * std::fabs(found.fb)) {
        append(err, "ERROR:  Possible singularity in bi_bracket_zero()\n");
        return false;
    }
    return true;
}

double zriddr(bound_function& f, const root_bracket& bracket, double tolerance, text_str*& err) {
    const auto& [a, b, m, fa, fb, fm] = bracket;
    // Intentional: there is no evaluation here, so the function keeps the point of its last evaluation.
    if (fa == 0.0)
        return a;
    if (fb == 0.0)
        return b;
    if (fm == 0.0)
        return m;
    if (fa * fb > 0.0) {
        append(err, "ERROR:  Root must be bracketed in zriddr()\n");
        return 0.0;
    }
    ridders_state s = {a, b, m, fa, fb, fm};
    pass_result result = pass_result::goes_on;
    for (int pass = 1; pass <= MAXIT && result == pass_result::goes_on; ++pass)
        result = ridders_pass(f, s, tolerance, err);
    if (result == pass_result::failed)
        return 0.0;
    if (result == pass_result::goes_on)
        append(err, "ERROR:  Maximum iterations reached in zriddr()\n");
    // Leaves the function evaluated at the root.
    const double left = std::fabs(evaluate_at(f, s.ans, err));
    if (left > std::fabs(fa) && left > std::fabs(fb) && left > std::fabs(fm))
        append(err, "ERROR:  Singularity detected in zriddr()\n");
    return s.ans;
}

} // namespace metrify
