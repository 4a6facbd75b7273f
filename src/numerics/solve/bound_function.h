#pragma once

// The interface through which the methods see the function block: numbers in, numbers out, and an error text.
// Units, variables and instructions are internal to it.

#include "base/text_str.h"

namespace metrify {

/// A function of several variables with several values. Both are indexed from 0.
class bound_function {
  public:
    bound_function() = default;
    bound_function(const bound_function&) = delete;
    bound_function& operator=(const bound_function&) = delete;
    virtual ~bound_function() = default;

    virtual long independents() const = 0;
    virtual long dependents() const = 0;

    /// True if the function is to be maximised, so that its values are negated. Only the wording of a message
    /// depends on it.
    virtual bool is_negated() const = 0;

    /// The start point; 0 for a variable that can't be read.
    virtual void read_solver_vector(double* x, text_str*& err) const = 0;

    /// The values at x. Does nothing if err is set; sets err on failure. Values that could not be computed
    /// are 0.
    virtual void evaluate_function(const double* x, double* y, text_str*& err) = 0;
};

/// The value at x of a function of one variable with one value.
inline double evaluate_at(bound_function& f, double x, text_str*& err) {
    double y = 0.0;
    f.evaluate_function(&x, &y, err);
    return y;
}

} // namespace metrify
