#include "numerics/solve/minimise.h"

#include "base/failure.h"
#include "numerics/scalar_helpers.h"

#include <cmath>

namespace metrify {

namespace {

constexpr int search_passes = 100; // the limit of one bracketing, and of one call of brent
constexpr double tol_by_step = 1e-8;
constexpr double FTOL = 1e-8;
constexpr double TOL = 0.0002;
constexpr int ITMAX = 4000;

void minimise_one(bound_function& f, text_str*& err) {
    line_search_state direct(f, 1);
    double x0 = 0.0;
    f.read_solver_vector(&x0, err);
    const double step = std::fabs(x0) < 1.0 ? 0.1 : 0.1 * std::fabs(x0);
    minimum_bracket bracket = {x0, x0 + step};
    if (!mnbrak(direct, bracket, search_passes, err)) {
        replace_message(
            err, f.is_negated()
                     ? "ERROR: No maximum solution found.  Try a different initial independent value.\n"
                     : "ERROR: No minimum solution found.  Try a different initial independent value.\n");
        return;
    }
    double xmin = 0.0;
    brent(direct, bracket, step * tol_by_step, search_passes, xmin, err);
}

void minimise_several(bound_function& f, long n, text_str*& err) {
    offset_vector<double> p = dvector(1, n);
    offset_matrix<double> xi = dmatrix(1, n, 1, n);
    f.read_solver_vector(p.data(), err);
    for (long i = 1; i <= n; ++i)
        xi(i, i) = 1.0;
    int iter = 0;
    double fret = 0.0;
    powell(f, p, xi, n, FTOL, iter, fret, err);
}

/// The line searches of one iteration, one in each direction.
struct iteration_result {
    long steepest = 1; // the direction of the largest change
    double change = 0.0;
};

iteration_result search_all_directions(line_search_state& line, offset_vector<double>& p,
                                       offset_vector<double>& direction, const offset_matrix<double>& xi,
                                       long n, double& fret, text_str*& err) {
    iteration_result result;
    for (long i = 1; i <= n; ++i) {
        for (long j = 1; j <= n; ++j)
            direction[j] = xi(j, i);
        const double before = fret;
        linmin(line, p, direction, n, fret, err);
        const double change = std::fabs(before - fret);
        if (change > result.change)
            result = {i, change};
    }
    return result;
}

// Replaces the steepest direction by the last one, and the last by the new direction.
void replace_direction(offset_matrix<double>& xi, long n, long steepest,
                       const offset_vector<double>& direction) {
    for (long j = 1; j <= n; ++j) {
        xi(j, steepest) = xi(j, n);
        xi(j, n) = direction[j];
    }
}

} // namespace

void minimise(bound_function& f, text_str*& err) {
    const long n = f.independents();
    if (n == 1)
        minimise_one(f, err);
    else
        minimise_several(f, n, err);
}

void linmin(line_search_state& line, offset_vector<double>& p, offset_vector<double>& xi, long n,
            double& fret, text_str*& err) {
    line.along_line = true;
    line.dimension = n;
    for (long j = 1; j <= n; ++j) {
        line.base[j] = p[j];
        line.direction[j] = xi[j];
    }
    double xmin = 0.0;
    minimum_bracket bracket = {0.0, 1.0};
    if (mnbrak(line, bracket, search_passes, err))
        fret = brent(line, bracket, TOL, search_passes, xmin, err);
    line.along_line = false;
    for (long j = 1; j <= n; ++j) {
        xi[j] *= xmin;
        p[j] += xi[j];
    }
}

void powell(bound_function& f, offset_vector<double>& p, offset_matrix<double>& xi, long n, double ftol,
            int& iter, double& fret, text_str*& err) {
    line_search_state line(f, n);
    offset_vector<double> start = dvector(1, n);
    offset_vector<double> extrapolated = dvector(1, n);
    offset_vector<double> direction = dvector(1, n);
    // Intentional: failed evaluations are ignored here; only the line searches handle them.
    f.evaluate_function(p.data(), &fret, err);
    for (long j = 1; j <= n; ++j)
        start[j] = p[j];
    for (iter = 1;; ++iter) {
        const double fp = fret;
        const iteration_result found = search_all_directions(line, p, direction, xi, n, fret, err);
        if (2.0 * std::fabs(fp - fret) <= ftol * (std::fabs(fp) + std::fabs(fret)))
            return;
        if (iter == ITMAX) {
            err = str_append_text(&err, "ERROR:  Too many iterations.\n");
            return;
        }
        for (long j = 1; j <= n; ++j) {
            extrapolated[j] = 2.0 * p[j] - start[j];
            direction[j] = p[j] - start[j];
            start[j] = p[j];
        }
        double beyond = 0.0;
        f.evaluate_function(extrapolated.data(), &beyond, err);
        if (!(beyond < fp))
            continue;
        const double t = 2.0 * (fp - 2.0 * fret + beyond) * square(fp - fret - found.change) -
                         found.change * square(fp - beyond);
        if (t < 0.0) {
            linmin(line, p, direction, n, fret, err);
            replace_direction(xi, n, found.steepest, direction);
        }
    }
}

} // namespace metrify
