#pragma once

// All that the methods see of what they work on: numbers in, numbers out, and a text that tells of a failure.
// Units, variables and instructions stay on the other side.

#include "base/text_str.h"

namespace metrify {

/// A function of several numbers with several values. Numbers and values are counted from 0.
class bound_function {
  public:
    bound_function() = default;
    bound_function(const bound_function&) = delete;
    bound_function& operator=(const bound_function&) = delete;
    virtual ~bound_function() = default;

    virtual long independents() const = 0;
    virtual long dependents() const = 0;

    /// True where the values are those of a function to be made largest, with their signs turned. It only
    /// decides the wording of a message.
    virtual bool is_negated() const = 0;

    /// The numbers from which a method starts; 0 for one that can't be read.
    virtual void read_solver_vector(double* x, text_str*& err) const = 0;

    /// The values at x. The evaluation has failed if err is not empty behind it, be it that it was not empty
    /// before: then nothing is evaluated. The values that are missing are 0.
    virtual void evaluate_function(const double* x, double* y, text_str*& err) = 0;
};

/// The value at x of a function of one number with one value.
inline double evaluate_at(bound_function& f, double x, text_str*& err) {
    double y = 0.0;
    f.evaluate_function(&x, &y, err);
    return y;
}

/// Puts a message in the place of what err holds.
inline void replace_message(text_str*& err, std::string_view message) {
    str_clear(&err);
    err = str_append_text(&err, message);
}

} // namespace metrify
