#pragma once

// Vectors and matrices with a free index base, what happens when memory is exhausted, and a test for finite
// numbers. A failure of a numerical method is a message in `err` and does not end the process.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

namespace metrify {

/// Writes the three lines of a fatal failure to standard error and ends the process with status 1. Inside a
/// memory_failure_scope throws std::bad_alloc instead.
[[noreturn]] void nrerror(const char* text);

/// While it lives, exhausted memory on this thread is reported to its owner as std::bad_alloc. For programs
/// that must survive it; state that a routine was changing is then incomplete and may only be released.
class memory_failure_scope {
  public:
    memory_failure_scope();
    ~memory_failure_scope();
    memory_failure_scope(const memory_failure_scope&) = delete;
    memory_failure_scope& operator=(const memory_failure_scope&) = delete;
};

/// 1 if v is not-a-number or of magnitude 1e39 or more, else 0.
constexpr int is_not_finite(double v) {
    return (v != v || v >= 1e39 || v <= -1e39) ? 1 : 0;
}

namespace detail {

struct block_release {
    void operator()(void* block) const;
};
template <class T>
using block_owner = std::unique_ptr<T[], block_release>;

/// A block of count elements of the given size; nrerror(failure) if there is no memory for it.
void* allocate_block(long count, std::size_t size, const char* failure);

/// Numbers are initialized to 0; characters are not initialized.
template <class T>
block_owner<T> new_block(long count, const char* failure) {
    block_owner<T> block(static_cast<T*>(allocate_block(count, sizeof(T), failure)));
    if constexpr (!std::is_same_v<T, char>)
        std::fill_n(block.get(), count, T());
    return block;
}

} // namespace detail

/// Owner of the elements v[nl] to v[nh]. A range with nh = nl - 1 is legal and empty.
template <class T>
class offset_vector {
  public:
    offset_vector(long nl, long nh, const char* failure)
        // One element more than the range, so that an empty range has an address too.
        : block_(detail::new_block<T>(nh - nl + 2, failure)), low_(nl) {}

    T& operator[](long index) { return block_[static_cast<std::size_t>(index - low_)]; }
    const T& operator[](long index) const { return block_[static_cast<std::size_t>(index - low_)]; }

    /// Address of the element at the lower index.
    T* data() { return block_.get(); }
    const T* data() const { return block_.get(); }

  private:
    detail::block_owner<T> block_;
    long low_;
};

/// Owner of the elements m(i, j) for i from nrl to nrh and j from ncl to nch, in one contiguous block, row
/// by row.
template <class T>
class offset_matrix {
  public:
    offset_matrix(long nrl, long nrh, long ncl, long nch, const char* failure)
        : block_(detail::new_block<T>((nrh - nrl + 1) * (nch - ncl + 1) + 1, failure)), low_row_(nrl),
          low_column_(ncl), columns_(nch - ncl + 1) {}

    T& operator()(long row, long column) { return block_[index_of(row, column)]; }
    const T& operator()(long row, long column) const { return block_[index_of(row, column)]; }

    long columns() const { return columns_; }

  private:
    std::size_t index_of(long row, long column) const {
        return static_cast<std::size_t>((row - low_row_) * columns_ + (column - low_column_));
    }

    detail::block_owner<T> block_;
    long low_row_;
    long low_column_;
    long columns_;
};

inline offset_vector<double> dvector(long nl, long nh) {
    return {nl, nh, "Allocation failure in dvector()."};
}
inline offset_vector<std::int32_t> ivector(long nl, long nh) {
    return {nl, nh, "Allocation failure in ivector()."};
}
inline offset_vector<char> cvector(long nl, long nh) {
    return {nl, nh, "Allocation failure in cvector()."};
}
inline offset_matrix<double> dmatrix(long nrl, long nrh, long ncl, long nch) {
    return {nrl, nrh, ncl, nch, "Allocation failure 2 in dmatrix()."};
}
inline offset_matrix<char> cmatrix(long nrl, long nrh, long ncl, long nch) {
    return {nrl, nrh, ncl, nch, "Allocation failure 2 in cmatrix()."};
}

} // namespace metrify
