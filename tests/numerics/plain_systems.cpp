// The methods for systems of equations in their simplest form.

#include "tests/numerics/plain_methods.h"

#include <algorithm>
#include <cmath>

namespace metrify::test {

namespace {

double half_squares(const numbers& values) {
    double sum = 0;
    for (const double value : values)
        sum += value * value;
    return 0.5 * sum;
}

double largest(const numbers& values) {
    double most = 0;
    for (const double value : values)
        most = std::max(most, std::fabs(value));
    return most;
}

double dot(const numbers& a, const numbers& b) {
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += a[i] * b[i];
    return sum;
}

// The state shared by the methods for systems.
struct search {
    const system_function& f;
    numbers x, values, xold, g, p;
    double half, fold, longest;
    int count;

    explicit search(const system_function& function, const numbers& start)
        : f(function), x(start), values(function(start)), xold(start), g(start.size()), p(start.size()),
          half(half_squares(values)), fold(half),
          longest(100 * std::max(std::sqrt(dot(start, start)), static_cast<double>(start.size()))), count(1) {
    }

    table jacobian() {
        table slopes(x.size(), numbers(x.size()));
        for (std::size_t j = 0; j < x.size(); ++j) {
            const double plain = x[j];
            double h = 1e-6 * std::fabs(plain);
            if (h == 0)
                h = 1e-6;
            x[j] = plain + h;
            h = x[j] - plain;
            const numbers moved = f(x);
            ++count;
            x[j] = plain;
            for (std::size_t i = 0; i < x.size(); ++i)
                slopes[i][j] = (moved[i] - values[i]) / h;
        }
        return slopes;
    }

    bool line_search() {
        xold = x;
        fold = half;
        const double size = std::sqrt(dot(p, p));
        if (size > longest)
            for (double& step : p)
                step *= longest / size;
        const double slope = dot(g, p);
        double most = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            most = std::max(most, std::fabs(p[i]) / std::max(std::fabs(xold[i]), 1.0));
        double alam = 1, before = 0, half_before = 0;
        for (;;) {
            x = along(xold, alam, p);
            values = f(x);
            ++count;
            half = half_squares(values);
            if (alam < 1e-7 / most) {
                x = xold;
                return false;
            }
            if (half <= fold + 1e-4 * alam * slope)
                return true;
            double next = 0;
            if (before == 0) {
                next = -slope / (2 * (half - fold - slope));
            } else {
                const double r1 = half - fold - alam * slope, r2 = half_before - fold - before * slope;
                const double a = (r1 / (alam * alam) - r2 / (before * before)) / (alam - before);
                const double b =
                    (-before * r1 / (alam * alam) + alam * r2 / (before * before)) / (alam - before);
                next = a == 0 ? -slope / (2 * b) : (-b + std::sqrt(b * b - 3 * a * slope)) / (3 * a);
                next = std::min(next, 0.5 * alam);
            }
            before = alam, half_before = half;
            alam = std::max(next, 0.1 * alam);
        }
    }

    double gradient() const {
        double most = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            most = std::max(most, std::fabs(g[i]) * std::max(std::fabs(x[i]), 1.0) /
                                      std::max(half, 0.5 * static_cast<double>(x.size())));
        return most;
    }

    double change() const {
        double most = 0;
        for (std::size_t i = 0; i < x.size(); ++i)
            most = std::max(most, std::fabs(x[i] - xold[i]) / std::max(std::fabs(x[i]), 1.0));
        return most;
    }
};

// Gauss elimination with scaled rows.
void eliminate(table a, numbers& b) {
    const std::size_t n = b.size();
    numbers scale(n);
    for (std::size_t i = 0; i < n; ++i)
        scale[i] = 1 / largest(a[i]);
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t pivot = k;
        for (std::size_t i = k; i < n; ++i)
            if (scale[i] * std::fabs(a[i][k]) >= scale[pivot] * std::fabs(a[pivot][k]))
                pivot = i;
        std::swap(a[k], a[pivot]);
        std::swap(b[k], b[pivot]);
        std::swap(scale[k], scale[pivot]);
        if (a[k][k] == 0)
            a[k][k] = 1e-20;
        for (std::size_t i = k + 1; i < n; ++i) {
            const double factor = a[i][k] * (1 / a[k][k]);
            for (std::size_t j = k + 1; j < n; ++j)
                a[i][j] -= factor * a[k][j];
            b[i] -= factor * b[k];
        }
    }
    for (std::size_t i = n; i-- > 0;) {
        for (std::size_t j = i + 1; j < n; ++j)
            b[i] -= a[i][j] * b[j];
        b[i] /= a[i][i];
    }
}

numbers minus(numbers values) {
    for (double& value : values)
        value = -value;
    return values;
}

numbers transposed_times(const table& a, const numbers& v) {
    numbers product(v.size());
    for (std::size_t i = 0; i < v.size(); ++i)
        for (std::size_t j = 0; j < v.size(); ++j)
            product[i] += a[j][i] * v[j];
    return product;
}

} // namespace

int plain_newt(const system_function& f, numbers& x, bool& good) {
    search at(f, x);
    good = true;
    for (int pass = 0; largest(at.values) >= (pass == 0 ? 1e-8 : 1e-6) && pass < 200; ++pass) {
        const table slopes = at.jacobian();
        at.g = transposed_times(slopes, at.values);
        at.p = minus(at.values);
        eliminate(slopes, at.p);
        const bool moved = at.line_search();
        if (largest(at.values) < 1e-6)
            break;
        if (!moved) {
            good = at.gradient() >= 1e-8;
            break;
        }
        if (at.change() < 1e-7)
            break;
    }
    x = at.x;
    return at.count;
}

// Without factors: the Jacobian itself is updated, and a linear system is solved for each step.
int plain_broydn(const system_function& f, numbers& x, bool& good) {
    search at(f, x);
    good = true;
    table slopes;
    numbers values_before;
    bool anew = true;
    for (int pass = 0; largest(at.values) >= (pass == 0 ? 1e-8 : 1e-6) && pass < 200; ++pass) {
        const std::size_t n = x.size();
        if (anew) {
            slopes = at.jacobian();
        } else {
            const numbers s = along(at.x, -1.0, at.xold);
            const double length = dot(s, s);
            for (std::size_t i = 0; i < n; ++i) {
                const double w = at.values[i] - values_before[i] - dot(slopes[i], s);
                if (std::fabs(w) < 1e-7 * (std::fabs(at.values[i]) + std::fabs(values_before[i])))
                    continue;
                for (std::size_t j = 0; j < n; ++j)
                    slopes[i][j] += w * s[j] / length;
            }
        }
        at.g = transposed_times(slopes, at.values);
        at.p = minus(at.values);
        values_before = at.values;
        eliminate(slopes, at.p);
        const bool moved = at.line_search();
        if (largest(at.values) < 1e-6)
            break;
        if (!moved && (anew || at.gradient() < 1e-8)) {
            good = false;
            break;
        }
        anew = !moved;
        if (moved && at.change() < 1e-7)
            break;
    }
    x = at.x;
    return at.count;
}

} // namespace metrify::test
