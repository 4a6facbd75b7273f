#include "numerics/solve/multi_dim_root.h"

#include "base/interruption.h"
#include "numerics/linear/products.h"
#include "numerics/scalar_helpers.h"
#include "numerics/solve/root_step.h"

#include <cmath>

namespace metrify {

namespace {

constexpr double EPS = 1e-7;

/// The state of both methods. An iteration computes xold, fold and the gradient g before its step p.
struct root_search {
    root_search(bound_function& searched, vector_view<double> numbers, long count)
        : function(searched), x(numbers), n(count), memory(count, 4, 0) {}

    bound_function& function;
    vector_view<double> x;
    long n;
    view_memory memory;
    vector_view<double> fvec = memory.vector();
    double f = 0.0;
    double stpmax = 0.0;
    vector_view<double> xold = memory.vector();
    double fold = 0.0;
    vector_view<double> g = memory.vector();
    vector_view<double> p = memory.vector();

    /// The first evaluation. True if it has failed, or the start is a root.
    bool is_over_at_start(text_str*& err) {
        function.evaluate_function(x.data(), fvec.data(), err);
        if (!str_is_empty(err))
            return true;
        f = half_square_sum(fvec, n);
        stpmax = longest_step(x, n);
        return largest_magnitude(fvec, n) < TOLF_AT_START;
    }

    void remember() {
        for (long i = 1; i <= n; ++i)
            xold[i] = x[i];
        fold = f;
    }

    /// The line search, which sets check to 0 if it finds no better point. True if the method ends with it:
    /// with check 0 after a failed evaluation, with check 1 at a root.
    bool ends_along_step(std::uint32_t& check, text_str*& err) {
        lnsrch(function, n, xold, fold, g, p, x, f, stpmax, check, fvec, err);
        const bool failed = !str_is_empty(err);
        if (!failed && largest_magnitude(fvec, n) >= TOLF)
            return false;
        check = failed ? 0 : 1;
        return true;
    }

    bool has_small_gradient() const { return relative_gradient(g, x, f, n) < TOLMIN; }
    bool has_stopped() const { return relative_change(x, xold, n) < TOLX; }
};

/// Whether a method continues after an iteration.
enum class pass_result { goes_on, ends };

pass_result fail(std::uint32_t& check) {
    check = 0;
    return pass_result::ends;
}

pass_result fail(std::uint32_t& check, text_str*& err, std::string_view message) {
    append(err, message);
    return fail(check);
}

// g = transposed Jacobian times values
void form_gradient(matrix_view<const double> jacobian, root_search& at) {
    multiply_transposed(jacobian, at.fvec, at.n, at.g);
}

pass_result newton_pass(root_search& at, matrix_view<double> jacobian, vector_view<std::int32_t> indx,
                        std::uint32_t& check, text_str*& err) {
    fdjac(at.function, at.n, at.x, at.fvec, jacobian, err);
    if (!str_is_empty(err))
        return fail(check);
    form_gradient(jacobian, at);
    at.remember();
    for (long i = 1; i <= at.n; ++i)
        at.p[i] = -at.fvec[i];
    double parity = 0.0;
    ludcmp(jacobian, at.n, indx, parity, err);
    if (!str_is_empty(err))
        return fail(check);
    lubksb(jacobian, at.n, indx, at.p);
    if (at.ends_along_step(check, err))
        return pass_result::ends;
    if (check == 0) {
        // Where the sum of squares is flat it has a minimum that is no root. Elsewhere the variables have
        // converged, which counts as success.
        check = at.has_small_gradient() ? 0 : 1;
        return pass_result::ends;
    }
    return at.has_stopped() ? pass_result::ends : pass_result::goes_on;
}

/// The factors of the Jacobian in Broyden's method, and the vectors of an update.
struct broyden_factors {
    explicit broyden_factors(long n) : memory(n, 6, 1) {}

    view_memory memory;
    matrix_pair rows = memory.matrices();
    matrix_view<double> r = rows.left; // with its diagonal, once formed
    matrix_view<double> qt = rows.right;
    vector_view<double> c = memory.vector();
    vector_view<double> d = memory.vector(); // the diagonal of r
    vector_view<double> fvcold = memory.vector();
    vector_view<double> s = memory.vector();
    vector_view<double> t = memory.vector();
    vector_view<double> w = memory.vector();
    bool restrt = true; // compute the factors from a new Jacobian
};

// Computes qt from the reflections that qrdcmp has left in r, and clears r below its diagonal.
void unfold_factors(broyden_factors& factors, long n) {
    auto& [memory, rows, r, qt, c, d, fvcold, s, t, w, restrt] = factors;
    for (long i = 1; i <= n; ++i)
        for (long j = 1; j <= n; ++j)
            qt(i, j) = i == j ? 1.0 : 0.0;
    for (long k = 1; k < n; ++k) {
        if (is_interrupted_after(n * n))
            return;
        if (c[k] == 0.0)
            continue;
        for (long j = 1; j <= n; ++j) {
            double sum = 0.0;
            for (long i = k; i <= n; ++i)
                sum += r(i, k) * qt(i, j);
            sum /= c[k];
            for (long i = k; i <= n; ++i)
                qt(i, j) -= sum * r(i, k);
        }
    }
    for (long i = 1; i <= n; ++i) {
        r(i, i) = d[i];
        for (long j = 1; j < i; ++j)
            r(i, j) = 0.0;
    }
}

pass_result form_factors(root_search& at, broyden_factors& factors, std::uint32_t& check, text_str*& err) {
    fdjac(at.function, at.n, at.x, at.fvec, factors.r, err);
    if (!str_is_empty(err))
        return fail(check);
    bool sing = false;
    qrdcmp(factors.r, at.n, factors.c, factors.d, sing);
    if (sing)
        return fail(check, err, "ERROR:  Singular Jacobian in brodyn.\n");
    unfold_factors(factors, at.n);
    return pass_result::goes_on;
}

// w is the difference between the actual change of the values and that predicted by the factors. True if any
// component is more than noise.
bool find_discrepancy(const root_search& at, broyden_factors& factors) {
    auto& [memory, rows, r, qt, c, d, fvcold, s, t, w, restrt] = factors;
    const long n = at.n;
    for (long i = 1; i <= n; ++i)
        s[i] = at.x[i] - at.xold[i];
    for (long i = 1; i <= n; ++i) {
        const vector_view<double> row = r.row(i);
        double sum = 0.0;
        for (long j = i; j <= n; ++j)
            sum += row[j] * s[j];
        t[i] = sum;
    }
    multiply_transposed(qt, t, n, w);
    bool is_found = false;
    for (long i = 1; i <= n; ++i) {
        w[i] = at.fvec[i] - fvcold[i] - w[i];
        if (std::fabs(w[i]) < EPS * (std::fabs(at.fvec[i]) + std::fabs(fvcold[i])))
            w[i] = 0.0;
        else
            is_found = true;
    }
    return is_found;
}

pass_result update_factors(root_search& at, broyden_factors& factors, std::uint32_t& check, text_str*& err) {
    if (!find_discrepancy(at, factors))
        return pass_result::goes_on;
    auto& [memory, rows, r, qt, c, d, fvcold, s, t, w, restrt] = factors;
    const long n = at.n;
    multiply(qt, w, n, t);
    const double squared_length = square_sum(s, n);
    for (long i = 1; i <= n; ++i)
        s[i] /= squared_length;
    qrupdt(r, qt, n, t, s);
    for (long i = 1; i <= n; ++i) {
        d[i] = r(i, i);
        if (d[i] == 0.0)
            return fail(check, err, "ERROR:  r singular in broydn.\n");
    }
    return pass_result::goes_on;
}

// p is minus Q transposed times the values, before it is solved for the step; g is the gradient.
void form_step(root_search& at, broyden_factors& factors) {
    const long n = at.n;
    multiply(factors.qt, at.fvec, n, at.p);
    for (long i = 1; i <= n; ++i) {
        at.p[i] = -at.p[i];
        factors.fvcold[i] = at.fvec[i];
        double sum = 0.0;
        for (long j = 1; j <= i; ++j)
            sum -= factors.r(j, i) * at.p[j];
        at.g[i] = sum;
    }
    at.remember();
    rsolv(factors.r, n, factors.d, at.p);
}

pass_result broyden_pass(root_search& at, broyden_factors& factors, std::uint32_t& check, text_str*& err) {
    const pass_result factored =
        factors.restrt ? form_factors(at, factors, check, err) : update_factors(at, factors, check, err);
    if (factored == pass_result::ends)
        return pass_result::ends;
    form_step(at, factors);
    if (at.ends_along_step(check, err))
        return pass_result::ends;
    if (check == 1) {
        factors.restrt = false;
        return at.has_stopped() ? pass_result::ends : pass_result::goes_on;
    }
    // The line search has failed: try once more with a new Jacobian.
    if (factors.restrt || at.has_small_gradient())
        return pass_result::ends;
    factors.restrt = true;
    return pass_result::goes_on;
}

} // namespace

void solve_multi_dim(bound_function& f, std::uint32_t& check, bool use_broydn, text_str*& err) {
    check = 0;
    const long n = f.independents();
    if (n == 1) {
        append(err, "ERROR: Doing multidimensional root finding in 1D routine.\n");
        return;
    }
    if (n != f.dependents()) {
        append(err, "ERROR: Root finding must have same number of indpendent and dependent vars.\n");
        return;
    }
    view_memory memory(n, 1, 0);
    const vector_view<double> x = memory.vector();
    f.read_solver_vector(x.data(), err);
    if (use_broydn)
        broydn(f, x, n, check, err);
    else
        newt(f, x, n, check, err);
}

void newt(bound_function& f, vector_view<double> x, long n, std::uint32_t& check, text_str*& err) {
    check = 1;
    root_search at(f, x, n);
    double_matrix jacobian = dmatrix(1, n, 1, n);
    int_vector indx = ivector(1, n);
    if (at.is_over_at_start(err))
        return;
    for (int its = 1; its <= MAXITS; ++its)
        if (newton_pass(at, jacobian, indx, check, err) == pass_result::ends)
            return;
    fail(check, err, "ERROR:  MAXITS exceeded in newt\n");
}

void broydn(bound_function& f, vector_view<double> x, long n, std::uint32_t& check, text_str*& err) {
    check = 1;
    root_search at(f, x, n);
    broyden_factors factors(n);
    if (at.is_over_at_start(err))
        return;
    for (int its = 1; its <= MAXITS; ++its)
        if (broyden_pass(at, factors, check, err) == pass_result::ends)
            return;
    fail(check, err, "ERROR:  MAXITS exceeded in broydn.\n");
}

} // namespace metrify
