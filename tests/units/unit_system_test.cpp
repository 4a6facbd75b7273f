#include "tests/testing.h"
#include "units/unit_system.h"
#include "units/user_units.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using namespace metrify;

class unit_system_state_of_a_run : public testing::Test {
  protected:
    unit_system_state_of_a_run() {
        reset_unit_state();
        free_user_units();
    }
    ~unit_system_state_of_a_run() override {
        reset_unit_state();
        free_user_units();
    }

    /// Reads a list and gives the message.
    static std::string read(const char* list) {
        work_text err;
        cursor p(list);
        read_exceptions(p, err.str);
        return std::string(err.view());
    }
    static std::string matching(const exponents& dim) {
        const std::string* text = matching_exception(dim);
        return text == nullptr ? "none" : *text;
    }
    static std::string answer(unit_system system, const char* list) {
        work_text out;
        work_text err;
        cursor p(list);
        run_system_statement(system, p, out.str, err.str);
        return std::string(out.view());
    }
};

using unit_systems = unit_system_state_of_a_run;

TEST_F(unit_systems, begin_with_MKS_and_no_exceptions) {
    EXPECT_EQ(current_unit_system(), system_MKS);
    EXPECT_EQ(exception_count(), 0);
    EXPECT_EQ(matching(in_N), "none");
}

TEST_F(unit_systems, have_their_numbers) {
    EXPECT_EQ(static_cast<int>(system_MKS), 0);
    EXPECT_EQ(static_cast<int>(system_cgs), 1);
    EXPECT_EQ(static_cast<int>(system_FPS), 2);
    EXPECT_EQ(static_cast<int>(system_IPS), 3);
}

TEST_F(unit_systems, are_set_back_with_the_exceptions) {
    set_unit_system(system_IPS);
    EXPECT_EQ(read("(N, Pa)"), "");
    reset_unit_state();
    EXPECT_EQ(current_unit_system(), system_MKS);
    EXPECT_EQ(exception_count(), 0);
    EXPECT_EQ(matching(in_N), "none");
}

TEST_F(unit_systems, count_their_exceptions) {
    EXPECT_EQ(read("(N, Pa, ft)"), "");
    EXPECT_EQ(exception_count(), 3);
}

TEST_F(unit_systems, keep_the_text_of_an_exception_from_its_comma_to_its_end) {
    EXPECT_EQ(read("( N ,  Pa , kg m^2 / s^2 )"), "");
    EXPECT_EQ(matching(in_N), "N");
    EXPECT_EQ(matching(in_Pa), "  Pa");
    EXPECT_EQ(matching(in_J), " kg m^2 / s^2");
}

TEST_F(unit_systems, take_units_without_a_comma_as_a_product) {
    EXPECT_EQ(read("(N Pa)"), "");
    EXPECT_EQ(exception_count(), 1);
    EXPECT_EQ(matching({0, -4, 2, 0, 0, 0, 0, 0}), "N Pa");
    EXPECT_EQ(matching(in_N), "none");
}

TEST_F(unit_systems, pass_over_commas_without_an_item) {
    EXPECT_EQ(read("(,N,,Pa,)"), "");
    EXPECT_EQ(exception_count(), 2);
    EXPECT_EQ(matching(in_Pa), "Pa");
}

TEST_F(unit_systems, keep_their_exceptions_without_a_list) {
    EXPECT_EQ(read("(N)"), "");
    for (const char* text : {"", " ", "; m", "N", ")"}) {
        EXPECT_EQ(read(text), "") << text;
        EXPECT_EQ(exception_count(), 1);
    }
    EXPECT_EQ(matching(in_N), "N");
}

TEST_F(unit_systems, keep_their_exceptions_with_an_empty_list) {
    EXPECT_EQ(read("(N, ft)"), "");
    for (const char* text : {"()", "( )", "(,)", " ()"}) {
        EXPECT_EQ(read(text), "") << text;
        EXPECT_EQ(exception_count(), 2);
    }
}

TEST_F(unit_systems, replace_their_exceptions_by_a_new_list) {
    EXPECT_EQ(read("(N, ft)"), "");
    EXPECT_EQ(read("(Pa)"), "");
    EXPECT_EQ(exception_count(), 1);
    EXPECT_EQ(matching(in_N), "none");
    EXPECT_EQ(matching(in_Pa), "Pa");
}

TEST_F(unit_systems, keep_their_exceptions_when_a_list_is_not_terminated) {
    EXPECT_EQ(read("(N)"), "");
    for (const char* text : {"(", "(Pa", "(Pa,", "(Pa, ft\n)"}) {
        EXPECT_EQ(read(text), " Argument list not terminated") << text;
        EXPECT_EQ(exception_count(), 1);
        EXPECT_EQ(matching(in_N), "N");
        EXPECT_EQ(matching(in_Pa), "none");
    }
}

TEST_F(unit_systems, keep_their_exceptions_when_an_item_is_no_unit) {
    EXPECT_EQ(read("(N)"), "");
    for (const char* text : {"(xyz)", "(Pa, xyz)", "(Pa; ft)", "(2 m)", "((Pa, ft)"}) {
        EXPECT_EQ(read(text), " Argument not a proper unit") << text;
        EXPECT_EQ(exception_count(), 1) << text;
        EXPECT_EQ(matching(in_N), "N");
    }
}

TEST_F(unit_systems, put_the_message_of_an_item_in_the_place_of_its_units) {
    for (const char* text : {"(N^x)", "(N, m^)", "(N, /)", "(m (s, N)", "(Pa, kg^(1/0))"})
        EXPECT_EQ(read(text), " Argument not a proper unit") << text;
}

TEST_F(unit_systems, give_the_first_exception_that_agrees) {
    EXPECT_EQ(read("(lbf,N)"), "");
    EXPECT_EQ(matching(in_N), "lbf");
}

TEST_F(unit_systems, match_an_exception_within_the_tolerance) {
    EXPECT_EQ(read("(m^(1/3))"), "");
    EXPECT_EQ(matching({0, 0, 0, 0.333333, 0, 0, 0, 0}), "m^(1/3)");
    EXPECT_EQ(matching({0, 0, 0, 0.3333, 0, 0, 0, 0}), "none");
}

TEST_F(unit_systems, read_a_user_unit_in_an_exception_with_the_meaning_of_the_moment) {
    work_text err;
    store_user_unit("foo", scalar(2, in_m), err.str);
    EXPECT_EQ(read("(foo)"), "");
    EXPECT_EQ(matching(in_m), "foo");
    store_user_unit("foo", scalar(2, in_s), err.str);
    EXPECT_EQ(matching(in_m), "none");
    EXPECT_EQ(matching(in_s), "foo");
    free_user_units();
    EXPECT_EQ(matching(in_s), "none");
}

TEST_F(unit_systems, read_an_exception_also_if_a_user_unit_is_defined_before_it_is_first_used) {
    work_text err;
    EXPECT_EQ(read("(N)"), "");
    store_user_unit("foo", scalar(2, in_m), err.str);
    EXPECT_EQ(matching(in_N), "N");
}

TEST_F(unit_systems, answer_in_the_singular_in_MKS_only) {
    EXPECT_EQ(answer(system_MKS, "(N)"), " Default units = MKS with 1 exception.\n");
    EXPECT_EQ(answer(system_cgs, "(N)"), " Default units = cgs with 1 exceptions.\n");
    EXPECT_EQ(answer(system_FPS, "(N)"), " Default units = FPS with 1 exceptions.\n");
    EXPECT_EQ(answer(system_IPS, "(N)"), " Default units = IPS with 1 exceptions.\n");
}

TEST_F(unit_systems, answer_with_the_count_of_exceptions) {
    EXPECT_EQ(answer(system_MKS, ""), " Default units = MKS with 0 exceptions.\n");
    EXPECT_EQ(answer(system_MKS, "(N, Pa)"), " Default units = MKS with 2 exceptions.\n");
    EXPECT_EQ(answer(system_FPS, ""), " Default units = FPS with 2 exceptions.\n");
    EXPECT_EQ(answer(system_MKS, "()"), " Default units = MKS with 2 exceptions.\n");
    EXPECT_EQ(current_unit_system(), system_MKS);
}

TEST_F(unit_systems, are_set_even_if_the_list_fails) {
    EXPECT_EQ(answer(system_MKS, "(N)"), " Default units = MKS with 1 exception.\n");
    EXPECT_EQ(answer(system_FPS, "(Pa"),
              " Argument list not terminated\n Default units = FPS with 1 exceptions.\n");
    EXPECT_EQ(current_unit_system(), system_FPS);
    EXPECT_EQ(answer(system_MKS, "(xyz)"),
              " Argument not a proper unit\n Default units = MKS with 1 exception.\n");
    EXPECT_EQ(matching(in_N), "N");
}

TEST_F(unit_systems, leave_the_message_of_a_failed_list_in_the_error_text) {
    work_text out;
    work_text err;
    cursor p("(N");
    run_system_statement(system_cgs, p, out.str, err.str);
    EXPECT_EQ(err.view(), " Argument list not terminated");
}

} // namespace
