#include "numerics/linear/products.h"

#include <gtest/gtest.h>
#include <vector>

using namespace metrify;

namespace {

// The matrix with the rows (1, 2, ..., n), (n + 1, ..., 2 n) and so on.
offset_matrix<double> numbered(long n) {
    offset_matrix<double> m = dmatrix(1, n, 1, n);
    for (long i = 1; i <= n; ++i)
        for (long j = 1; j <= n; ++j)
            m(i, j) = static_cast<double>((i - 1) * n + j);
    return m;
}

offset_vector<double> to_vector(const std::vector<double>& from) {
    offset_vector<double> v = dvector(1, static_cast<long>(from.size()));
    for (std::size_t i = 0; i < from.size(); ++i)
        v[static_cast<long>(i) + 1] = from[i];
    return v;
}

std::vector<double> elements(const offset_vector<double>& v, long n) {
    return {&v[1], &v[1] + n};
}

using Product = void (*)(matrix_view<const double>, vector_view<const double>, long, vector_view<double>);

std::vector<double> product(Product form, const std::vector<double>& v) {
    const auto n = static_cast<long>(v.size());
    offset_vector<double> out = dvector(1, n);
    form(numbered(n), to_vector(v), n, out);
    return elements(out, n);
}

} // namespace

TEST(products, of_a_matrix_have_a_sum_for_each_row) {
    EXPECT_EQ(product(multiply, {10, 1}), (std::vector<double>{12, 34}));
    EXPECT_EQ(product(multiply, {100, 10, 1}), (std::vector<double>{123, 456, 789}));
}

TEST(products, of_a_transposed_matrix_have_a_sum_for_each_column) {
    EXPECT_EQ(product(multiply_transposed, {10, 1}), (std::vector<double>{13, 24}));
    EXPECT_EQ(product(multiply_transposed, {100, 10, 1}), (std::vector<double>{147, 258, 369}));
}

// 1e16 + 1 is 1e16 again, so that only this order gives 0.
TEST(products, add_in_the_order_of_the_elements) {
    const std::vector<double> row = {1e16, 1.0, -1e16};
    offset_matrix<double> m = dmatrix(1, 3, 1, 3);
    for (long i = 1; i <= 3; ++i)
        for (long j = 1; j <= 3; ++j)
            m(i, j) = row[static_cast<std::size_t>(j - 1)];
    offset_vector<double> out = dvector(1, 3);
    multiply(m, to_vector({1, 1, 1}), 3, out);
    EXPECT_EQ(elements(out, 3), (std::vector<double>{0, 0, 0}));
    multiply_transposed(m, to_vector({1, 1, 1}), 3, out);
    EXPECT_EQ(elements(out, 3), (std::vector<double>{3e16, 3, -3e16}));
}

TEST(products, of_a_vector_with_itself_are_the_sum_of_its_squares) {
    EXPECT_EQ(square_sum(to_vector({3, 4, 12}), 2), 25.0);
    EXPECT_EQ(square_sum(to_vector({3, 4, 12}), 3), 169.0);
}

TEST(view_memory, has_vectors_and_rows_that_do_not_overlap) {
    view_memory memory(2, 2, 1);
    const matrix_pair pair = memory.matrices();
    const vector_view<double> first = memory.vector();
    const vector_view<double> second = memory.vector();
    double next = 1.0;
    for (long i = 1; i <= 2; ++i) {
        first[i] = next++;
        second[i] = next++;
        for (long j = 1; j <= 2; ++j) {
            pair.left(i, j) = next++;
            pair.right(i, j) = next++;
        }
    }
    EXPECT_EQ(first[1] + first[2], 1.0 + 7.0);
    EXPECT_EQ(second[1] + second[2], 2.0 + 8.0);
    EXPECT_EQ(pair.left(1, 1) + pair.left(1, 2) + pair.left(2, 1) + pair.left(2, 2), 3.0 + 5.0 + 9.0 + 11.0);
    EXPECT_EQ(pair.right(1, 1) + pair.right(1, 2) + pair.right(2, 1) + pair.right(2, 2),
              4.0 + 6.0 + 10.0 + 12.0);
    EXPECT_EQ(&pair.left(1, 2) + 1, &pair.right(1, 1)); // side by side
}

TEST(view_memory, is_zero_whether_it_is_allocated_or_not) {
    for (const long n : {1L, 2L, 6L, 7L, 50L}) {
        view_memory memory(n, 2, 1);
        memory.vector();
        const matrix_pair pair = memory.matrices();
        const vector_view<double> last = memory.vector();
        for (long i = 1; i <= n; ++i) {
            EXPECT_EQ(last[i], 0.0) << n;
            EXPECT_EQ(pair.left(i, n), 0.0) << n;
            EXPECT_EQ(pair.right(n, i), 0.0) << n;
            last[i] = 1.0; // a sanitizer sees an element beyond the memory
        }
    }
}
