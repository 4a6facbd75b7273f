#include "base/numeric_utilities.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <set>

namespace {

using namespace metrify;

TEST(numeric_utilities, a_vector_holds_the_elements_of_its_range) {
    auto v = dvector(1, 5);
    for (long i = 1; i <= 5; ++i)
        v[i] = 0.5 * static_cast<double>(i);
    for (long i = 1; i <= 5; ++i)
        EXPECT_EQ(v[i], 0.5 * static_cast<double>(i));
}

TEST(numeric_utilities, a_vector_begins_at_its_lower_index) {
    auto from_one = dvector(1, 3);
    EXPECT_EQ(from_one.data(), &from_one[1]);
    auto from_zero = ivector(0, 3);
    EXPECT_EQ(from_zero.data(), &from_zero[0]);
    auto negative = cvector(-3, 3);
    EXPECT_EQ(negative.data(), &negative[-3]);
}

TEST(numeric_utilities, a_vector_is_contiguous) {
    auto v = ivector(-3, 3);
    for (long i = -3; i <= 3; ++i)
        v[i] = static_cast<std::int32_t>(i);
    EXPECT_EQ(&v[3] - &v[-3], 6);
    EXPECT_EQ(v.data()[0], -3);
    EXPECT_EQ(v.data()[6], 3);
}

TEST(numeric_utilities, a_zero_based_vector_serves_a_routine_with_unit_offset) {
    auto v = dvector(0, 2);
    v[0] = 7.0;
    v[2] = 9.0;
    const auto sum_from_one = [](const double* first_of_range, long low, long count) {
        double sum = 0.0;
        for (long i = low; i < low + count; ++i)
            sum += first_of_range[i - low];
        return sum;
    };
    v[1] = 0.0;
    EXPECT_EQ(sum_from_one(v.data(), 1, 3), 16.0);
}

TEST(numeric_utilities, an_empty_range_has_one_element) {
    auto numbers = dvector(0, -1);
    ASSERT_NE(numbers.data(), nullptr);
    numbers[0] = 1.5;
    EXPECT_EQ(numbers[0], 1.5);
    auto from_one = ivector(1, 0);
    from_one[1] = 7;
    EXPECT_EQ(from_one[1], 7);
    auto text = cvector(0, -1);
    text[0] = '\0';
    EXPECT_EQ(text[0], '\0');
}

TEST(numeric_utilities, a_vector_has_one_element_more_than_its_range) {
    auto v = dvector(1, 4);
    v[5] = 2.5;
    EXPECT_EQ(v[5], 2.5);
    auto text = cvector(0, 3);
    text[4] = 'x';
    EXPECT_EQ(text[4], 'x');
}

TEST(numeric_utilities, the_elements_of_a_matrix_are_all_different) {
    auto m = dmatrix(1, 3, -1, 2);
    std::set<const double*> places;
    for (long i = 1; i <= 3; ++i) {
        for (long j = -1; j <= 2; ++j) {
            m(i, j) = 10.0 * static_cast<double>(i) + static_cast<double>(j);
            places.insert(&m(i, j));
        }
    }
    EXPECT_EQ(places.size(), 12u);
    for (long i = 1; i <= 3; ++i)
        for (long j = -1; j <= 2; ++j)
            EXPECT_EQ(m(i, j), 10.0 * static_cast<double>(i) + static_cast<double>(j));
}

TEST(numeric_utilities, a_matrix_is_one_block_row_by_row) {
    auto numbers = dmatrix(0, 2, 1, 4);
    EXPECT_EQ(&numbers(0, 2) - &numbers(0, 1), 1);
    EXPECT_EQ(&numbers(1, 1) - &numbers(0, 1), 4);
    EXPECT_EQ(&numbers(2, 1) - &numbers(1, 1), 4);
    auto texts = cmatrix(1, 2, 0, 9);
    EXPECT_EQ(&texts(2, 0) - &texts(1, 0), 10);
    texts(2, 9) = 'z';
    EXPECT_EQ(texts(2, 9), 'z');
}

TEST(numeric_utilities, a_matrix_without_rows_or_columns_is_legal) {
    auto no_rows = dmatrix(1, 0, 1, 4);
    no_rows(1, 1) = 3.0;
    EXPECT_EQ(no_rows(1, 1), 3.0);
    auto no_columns = cmatrix(1, 2, 1, 0);
    no_columns(1, 1) = 'a';
    EXPECT_EQ(no_columns(1, 1), 'a');
}

TEST(is_not_finite, takes_ordinary_numbers_as_finite) {
    for (const double x :
         {0.0, -0.0, 1.0, -1.0, 1e38, -1e38, 1e-300, std::numeric_limits<double>::denorm_min()})
        EXPECT_EQ(is_not_finite(x), 0) << x;
}

TEST(is_not_finite, has_its_bounds_at_1e39) {
    EXPECT_EQ(is_not_finite(1e39), 1);
    EXPECT_EQ(is_not_finite(std::nextafter(1e39, 0.0)), 0);
    EXPECT_EQ(is_not_finite(-1e39), 1);
    EXPECT_EQ(is_not_finite(std::nextafter(-1e39, 0.0)), 0);
    EXPECT_EQ(is_not_finite(std::numeric_limits<double>::max()), 1);
    EXPECT_EQ(is_not_finite(std::numeric_limits<double>::lowest()), 1);
}

TEST(is_not_finite, holds_for_infinities_and_not_a_number) {
    EXPECT_EQ(is_not_finite(std::numeric_limits<double>::infinity()), 1);
    EXPECT_EQ(is_not_finite(-std::numeric_limits<double>::infinity()), 1);
    EXPECT_EQ(is_not_finite(std::numeric_limits<double>::quiet_NaN()), 1);
}

// Some platforms write a carriage return before each newline.
TEST(nrerror_death_test, writes_three_lines_and_ends_the_process_with_status_1) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(nrerror("Allocation failure in somewhere()."), testing::ExitedWithCode(1),
                "Numerical Recipes run-time error \\.\\.\\.\r?\n"
                "Allocation failure in somewhere\\(\\)\\.\r?\n"
                "\\.\\.\\. now exiting to system \\.\\.\\.\r?\n\r?\n");
}

TEST(memory_failure_scope, turns_a_failure_into_an_exception) {
    const memory_failure_scope outer;
    {
        const memory_failure_scope inner;
        EXPECT_THROW(nrerror("inside"), std::bad_alloc);
    }
    EXPECT_THROW(nrerror("still inside"), std::bad_alloc);
}

TEST(memory_failure_scope_death_test, has_no_effect_after_its_end) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto fail_later = [] {
        { const memory_failure_scope ended; }
        nrerror("later");
    };
    EXPECT_EXIT(fail_later(), testing::ExitedWithCode(1), "later");
}

} // namespace
