#pragma once

// Vectors and matrices that other objects own. Indices start at 1, as in the published routines. A view is
// passed by value: it costs no more than a pointer.

#include "base/numeric_utilities.h"

#include <algorithm>
#include <array>
#include <optional>
#include <type_traits>

namespace metrify {

/// The elements v[1] to v[n].
template <class T>
class vector_view {
  public:
    explicit vector_view(T* first) : first_(first) {}
    // NOLINTNEXTLINE(google-explicit-constructor): a routine is given the owner, whose lower index is 1
    vector_view(offset_vector<std::remove_const_t<T>>& owner) : first_(&owner[1]) {}
    // NOLINTNEXTLINE(google-explicit-constructor): the same, of a vector that is only read
    vector_view(const offset_vector<std::remove_const_t<T>>& owner) requires std::is_const_v<T>
        : first_(&owner[1]) {}
    // NOLINTNEXTLINE(google-explicit-constructor): what may be written may be read
    operator vector_view<const T>() const requires(!std::is_const_v<T>) {
        return vector_view<const T>(first_);
    }

    T& operator[](long i) const { return first_[i - 1]; }
    T* data() const { return first_; }

  private:
    T* first_;
};

/// The elements m(1, 1) to m(n, n) of a square matrix, row by row. Rows may be further apart than they are
/// long.
template <class T>
class matrix_view {
  public:
    matrix_view(T* first, long distance) : first_(first), distance_(distance) {}
    // NOLINTNEXTLINE(google-explicit-constructor): a routine is given the owner, whose lower indices are 1
    matrix_view(offset_matrix<std::remove_const_t<T>>& owner)
        : first_(&owner(1, 1)), distance_(owner.columns()) {}
    // NOLINTNEXTLINE(google-explicit-constructor): the same, of a matrix that is only read
    matrix_view(const offset_matrix<std::remove_const_t<T>>& owner) requires std::is_const_v<T>
        : first_(&owner(1, 1)), distance_(owner.columns()) {}
    // NOLINTNEXTLINE(google-explicit-constructor): what may be written may be read
    operator matrix_view<const T>() const requires(!std::is_const_v<T>) { return {first_, distance_}; }

    T& operator()(long i, long j) const { return first_[(i - 1) * distance_ + (j - 1)]; }
    /// The elements of a row.
    vector_view<T> row(long i) const { return vector_view<T>(first_ + (i - 1) * distance_); }

  private:
    T* first_;
    long distance_; // from a row to the next
};

/// Two matrices whose rows are side by side, so that they can be changed as one row.
struct matrix_pair {
    matrix_view<double> left, right;
};

/// The memory of several vectors and pairs of matrices of n rows, set to 0. That of a few rows needs no
/// allocation.
class view_memory {
  public:
    view_memory(long n, long vectors, long pairs) : n_(n) {
        const long count = vectors * n + pairs * 2 * n * n;
        if (count > few)
            block_.emplace(dvector(1, count));
        else
            std::fill_n(few_.data(), count, 0.0);
        next_ = block_ ? block_->data() : few_.data();
    }
    view_memory(const view_memory&) = delete;
    view_memory& operator=(const view_memory&) = delete;

    vector_view<double> vector() { return vector_view<double>(take(n_)); }
    matrix_pair matrices() {
        double* const first = take(2 * n_ * n_);
        return {{first, 2 * n_}, {first + n_, 2 * n_}};
    }

  private:
    double* take(long count) {
        double* const taken = next_;
        next_ += count;
        return taken;
    }

    static constexpr long few = 96;

    std::array<double, few> few_; // NOLINT: only what is used is set
    std::optional<offset_vector<double>> block_;
    double* next_;
    long n_;
};

} // namespace metrify
