// Metrify for programs in C++20: a thin wrapper of metrify.h, of headers alone.
//
// Failures are exceptions: metrify::error with the message, std::bad_alloc when memory is exhausted. The
// rules for threads are those of metrify.h: a calculator may be used by one thread at a time, but for
// interrupt(), and everything else by any number of threads.
#ifndef METRIFY_METRIFY_HPP
#define METRIFY_METRIFY_HPP

#include "metrify/metrify.h"

#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace metrify {
// Keeps these names apart from the library's own.
inline namespace wrapper {

class error : public std::runtime_error {
  public:
    error(metrify_status status, const char* message) : std::runtime_error(message), status_(status) {}

    metrify_status status() const noexcept { return status_; }

  private:
    metrify_status status_;
};

namespace detail {

inline void check(metrify_status status) {
    if (status == METRIFY_OUT_OF_MEMORY)
        throw std::bad_alloc();
    if (status != METRIFY_OK)
        throw error(status, metrify_message());
}

struct release {
    void operator()(metrify_text* text) const noexcept { metrify_text_free(text); }
    void operator()(metrify_cells* cells) const noexcept { metrify_cells_free(cells); }
    void operator()(metrify_calculator* calculator) const noexcept { metrify_calculator_free(calculator); }
    void operator()(metrify_plan* plan) const noexcept { metrify_plan_free(plan); }
};

template <class Handle>
using owner = std::unique_ptr<Handle, release>;

inline std::string taken(metrify_text* text) {
    const owner<metrify_text> owned(text);
    return {metrify_text_data(text), metrify_text_size(text)};
}

// The row if it was found; metrify.h reports an unknown name as a bad argument.
template <class Row>
std::optional<Row> found(metrify_status status, const Row& row) {
    if (status == METRIFY_BAD_ARGUMENT)
        return std::nullopt;
    check(status);
    return row;
}

} // namespace detail

/// The version of the library, which may be newer than the headers.
inline std::string_view version() {
    return metrify_version();
}

/// The listing of a program.
inline std::string run(std::string_view program) {
    metrify_text* listing = nullptr;
    detail::check(metrify_run(program.data(), program.size(), &listing));
    return detail::taken(listing);
}

/// The two cells of the worksheet function.
struct cells {
    metrify_kind kind;
    double number;
    std::string text;
};

/// Converts a number, or shows it in default units. An error in the units is an answer, not an exception.
inline cells convert(double value, std::string_view in_units, std::string_view out_units = {}) {
    metrify_cells* answer = nullptr;
    detail::check(metrify_convert(value, in_units.data(), in_units.size(), out_units.data(), out_units.size(),
                                  &answer));
    const detail::owner<metrify_cells> owned(answer);
    return {metrify_cells_kind(answer),
            metrify_cells_number(answer),
            {metrify_cells_text(answer), metrify_cells_text_size(answer)}};
}

/// Keeps variables, user units, default units and the function block from call to call.
class calculator {
  public:
    calculator() {
        metrify_calculator* made = nullptr;
        detail::check(metrify_calculator_new(&made));
        handle_.reset(made);
    }

    /// Runs one line or several; the listing.
    std::string enter(std::string_view lines) {
        metrify_text* listing = nullptr;
        detail::check(metrify_calculator_enter(handle_.get(), lines.data(), lines.size(), &listing));
        return detail::taken(listing);
    }
    /// Ends an enter() of another thread, which throws an error with METRIFY_INTERRUPTED.
    void interrupt() noexcept { metrify_interrupt(handle_.get()); }
    void reset() { detail::check(metrify_calculator_reset(handle_.get())); }

  private:
    detail::owner<metrify_calculator> handle_;
};

/// A conversion for any number of numbers in full double precision. Throws an error with the language's
/// message if the units are incompatible or no units.
class plan {
  public:
    explicit plan(std::string_view in_units, std::string_view out_units = {}) {
        metrify_plan* made = nullptr;
        detail::check(
            metrify_plan_new(in_units.data(), in_units.size(), out_units.data(), out_units.size(), &made));
        handle_.reset(made);
    }

    double operator()(double value) const noexcept { return metrify_plan_convert(handle_.get(), value); }

    /// Both spans have the same size. They may be the same numbers, otherwise they must not overlap.
    void apply(std::span<const double> from, std::span<double> to) const {
        if (from.size() != to.size())
            throw error(METRIFY_BAD_ARGUMENT, "the numbers and the results differ in count");
        apply(from.data(), sizeof(double), to.data(), sizeof(double), from.size());
    }
    /// Strides are in bytes, as in metrify_plan_apply.
    void apply(const double* from, std::ptrdiff_t from_stride, double* to, std::ptrdiff_t to_stride,
               std::size_t count) const {
        detail::check(metrify_plan_apply(handle_.get(), from, from_stride, to, to_stride, count));
    }

    /// The units of the results.
    std::string_view units() const noexcept { return metrify_plan_units(handle_.get()); }

  private:
    detail::owner<metrify_plan> handle_;
};

using unit = metrify_unit;
using function = metrify_function;

/// All units, grouped by dimension.
inline std::vector<unit> units() {
    std::vector<unit> rows(metrify_unit_count());
    for (std::size_t i = 0; i < rows.size(); ++i)
        detail::check(metrify_unit_at(i, &rows[i]));
    return rows;
}

/// The unit of exactly that name, if there is one.
inline std::optional<unit> find_unit(std::string_view name) {
    unit row = {};
    return detail::found(metrify_unit_find(name.data(), name.size(), &row), row);
}

/// All built-in functions, chapter by chapter.
inline std::vector<function> functions() {
    std::vector<function> rows(metrify_function_count());
    for (std::size_t i = 0; i < rows.size(); ++i)
        detail::check(metrify_function_at(i, &rows[i]));
    return rows;
}

/// The function of that name in any case, if there is one.
inline std::optional<function> find_function(std::string_view name) {
    function row = {};
    return detail::found(metrify_function_find(name.data(), name.size(), &row), row);
}

} // namespace wrapper
} // namespace metrify

#endif
