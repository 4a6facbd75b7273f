#include "cli/columns/columns_command.h"

#include <algorithm>
#include <cerrno>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace metrify;

struct outcome {
    int status = 0;
    std::string out = {};
    std::string err = {};
};

// Doubles the numbers. The input is read in pieces of the given size.
outcome doubled(std::string_view text, const columns_options& options = {}, std::size_t piece = 1U << 20U) {
    conversion_plan plan;
    plan.slope = 2.0;
    std::ostringstream out;
    std::ostringstream err;
    const auto read = [&](char* to, std::size_t size) {
        const std::size_t count = text.copy(to, std::min(size, piece));
        text.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    };
    const int status = convert_columns(plan, options, {read, 0, out, err, nullptr});
    return {status, out.str(), err.str()};
}

columns_options columns(const std::string& list) {
    columns_options options;
    options.columns = list;
    return options;
}

TEST(convert_columns, converts_one_number_a_line) {
    const outcome it = doubled("1\n2.5\n-3e2\n");
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(it.out, "2\n5\n-600\n");
    EXPECT_EQ(it.err, "");
}
TEST(convert_columns, converts_an_empty_input) {
    EXPECT_EQ(doubled("").out, "");
    EXPECT_EQ(doubled("").status, 0);
}
TEST(convert_columns, finds_columns_by_name_and_by_number) {
    const std::string text = "name,height,depth\nx,1,2\ny,3,4\n";
    EXPECT_EQ(doubled(text, columns("height,3")).out, "name,height,depth\nx,2,4\ny,6,8\n");
    EXPECT_EQ(doubled(text, columns("depth")).out, "name,height,depth\nx,1,4\ny,3,8\n");
    EXPECT_EQ(doubled("a,\"b,c\"\n1,2\n", columns("\"b,c\"")).out, "a,\"b,c\"\n1,4\n");
}
TEST(convert_columns, recognises_names_in_the_first_row_by_the_chosen_cells) {
    EXPECT_EQ(doubled("5,a\n1,2\n", columns("1")).out, "10,a\n2,2\n");
    EXPECT_EQ(doubled("h\n1\n").out, "h\n2\n");
    EXPECT_EQ(doubled("h\n1\n").status, 0);
}
TEST(convert_columns, is_told_whether_the_first_row_holds_names) {
    columns_options options = columns("1");
    options.header = true;
    EXPECT_EQ(doubled("5\n1\n", options).out, "5\n2\n");
    options.header = false;
    EXPECT_EQ(doubled("h\n1\n", options).status, 1);
    options.columns = "h";
    EXPECT_EQ(doubled("h\n1\n", options).status, 2);
}
TEST(convert_columns, leaves_every_other_byte_as_it_is) {
    const std::string text = "\"a\"\" ,\",1,\xFF, x\r\n,\"2\",\n\"line\nbreak\", 3 ,\r\nlast,4";
    columns_options options = columns("2");
    options.header = false;
    EXPECT_EQ(doubled(text, options).out, "\"a\"\" ,\",2,\xFF, x\r\n,\"4\",\n\"line\nbreak\",6,\r\nlast,8");
}
TEST(convert_columns, converts_a_column_once_if_it_is_given_twice) {
    EXPECT_EQ(doubled("h,1\n3,4\n", columns("h,1")).out, "h,1\n6,4\n");
}
TEST(convert_columns, uses_another_delimiter) {
    columns_options options = columns("2");
    options.delimiter = '\t';
    EXPECT_EQ(doubled("1,1\t2\n", options).out, "1,1\t4\n");
}
TEST(convert_columns, leaves_cells_that_are_no_number_and_names_them) {
    const outcome it = doubled("a,h\nx,1\ny,\nz,n/a\nw\nv,1e308\n", columns("h"));
    EXPECT_EQ(it.status, 1);
    EXPECT_EQ(it.out, "a,h\nx,2\ny,\nz,n/a\nw\nv,1e308\n");
    EXPECT_EQ(it.err, "metrify: 4 cells are not converted\n"
                      "  row 3, column h: empty\n"
                      "  row 4, column h: n/a is no number\n"
                      "  row 5, column h: missing\n"
                      "  row 6, column h: 1e308 is too large for the result\n");
}
TEST(convert_columns, shortens_a_bad_cell_of_more_than_40_characters) {
    const std::string forty(40, 'x');
    EXPECT_EQ(doubled("1\n" + forty + "\n" + forty + "y\n").err, "metrify: 2 cells are not converted\n"
                                                                 "  row 2, column 1: " +
                                                                     forty +
                                                                     " is no number\n"
                                                                     "  row 3, column 1: " +
                                                                     forty + "... is no number\n");
}
TEST(convert_columns, names_the_first_ten_bad_cells_only) {
    std::string text = "1\n";
    for (int i = 0; i < 12; ++i)
        text += "x\n";
    const std::string err = doubled(text).err;
    EXPECT_EQ(err.find("metrify: 12 cells are not converted\n  row 2, column 1: x is no number\n"), 0U)
        << err;
    EXPECT_NE(err.find("  row 11, column 1: x is no number\n  and 2 more\n"), std::string::npos) << err;
    EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 12);
}
TEST(convert_columns, has_to_be_told_which_of_several_columns) {
    const outcome it = doubled("1,2\n");
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.out, "");
    EXPECT_EQ(it.err, "metrify: there are 2 columns; choose with --columns\n");
}
TEST(convert_columns, names_the_columns_that_there_are) {
    EXPECT_EQ(doubled("a,b c\n1,2\n", columns("c")).err,
              "metrify: there is no column 'c'; the columns are 'a' 'b c'\n");
}
TEST(convert_columns, refuses_a_number_beyond_the_first_row) {
    const outcome named = doubled("a,b c\n1,2\n", columns("3"));
    EXPECT_EQ(named.status, 2);
    EXPECT_EQ(named.out, "");
    EXPECT_EQ(named.err, "metrify: there is no column '3'; the columns are 'a' 'b c'\n");
    const outcome unnamed = doubled("1,2\n3,4\n", columns("1,3"));
    EXPECT_EQ(unnamed.status, 2);
    EXPECT_EQ(unnamed.out, "");
    EXPECT_EQ(unnamed.err, "metrify: there is no column '3'; the first row has 2 cells\n");
    EXPECT_EQ(doubled("1\n", columns("2,1")).err,
              "metrify: there is no column '2'; the first row has 1 cell\n");
    EXPECT_EQ(doubled("1,2\n", columns("1,0")).err,
              "metrify: there is no column '0'; they are counted from 1; the first row has 2 cells\n");
    EXPECT_EQ(doubled("1,2\n", columns("1,99999999999999999999")).err,
              "metrify: there is no column '99999999999999999999'; the first row has 2 cells\n");
}
TEST(convert_columns, finds_a_name_that_is_a_number) {
    const outcome it = doubled("name,2020,2021\nx,1,2\n", columns("2021"));
    EXPECT_EQ(it.out, "name,2020,2021\nx,1,4\n");
    EXPECT_EQ(it.err, "");
    EXPECT_EQ(it.status, 0);
    columns_options without_names = columns("2021");
    without_names.header = false;
    EXPECT_EQ(doubled("2020,2021\n1,2\n", without_names).err,
              "metrify: there is no column '2021'; the first row has 2 cells\n");
}
TEST(convert_columns, finds_names_if_any_column_is_given_by_name) {
    EXPECT_EQ(doubled("height,2020\n1,2\n", columns("2,height")).out, "height,2020\n2,4\n");
}
TEST(convert_columns, prefers_the_number_of_a_column_to_a_name_and_says_so) {
    columns_options options = columns("2");
    options.header = true;
    const outcome it = doubled("id,1,2\n7,8,9\n", options);
    EXPECT_EQ(it.out, "id,1,2\n7,16,9\n");
    EXPECT_EQ(it.err, "metrify: column 2 is '1'; the one with the name '2' is column 3\n");
    EXPECT_EQ(it.status, 0);
    EXPECT_EQ(doubled("1,2,3\n7,8,9\n", options).err, "");
}
TEST(convert_columns, says_that_a_first_row_of_years_is_taken_for_numbers) {
    const std::string note =
        "metrify: the first row is taken for numbers; if 2021 is the name of a column, use --header\n";
    const outcome it = doubled("name,2021\nx,1\n", columns("2"));
    EXPECT_EQ(it.out, "name,4042\nx,2\n");
    EXPECT_EQ(it.err, note);
    EXPECT_EQ(it.status, 0);
    columns_options options = columns("2");
    for (const bool header : {true, false}) {
        options.header = header;
        EXPECT_EQ(doubled("name,2021\nx,1\n", options).err, "");
    }
    for (const char* number : {"1799", "2200", "2021.5"})
        EXPECT_EQ(doubled("name," + std::string(number) + "\nx,1\n", columns("2")).err, "") << number;
    for (const char* number : {"1800", "2199"})
        EXPECT_NE(doubled("name," + std::string(number) + "\nx,1\n", columns("2")).err, "") << number;
    EXPECT_EQ(doubled("2021\n1\n").err, "");
}
TEST(convert_columns, takes_a_byte_order_mark_after_the_beginning_for_text) {
    for (const std::string mark : {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
        const std::string row = "1234\n"; // a piece, so that the mark begins the next one
        const outcome it = doubled(row + mark + "5\n", {}, row.size());
        EXPECT_EQ(it.status, 1);
        EXPECT_EQ(it.out, "2468\n" + mark + "5\n");
        EXPECT_EQ(it.err.find("byte order mark"), std::string::npos) << it.err;
    }
}
TEST(convert_columns, ignores_a_byte_order_mark_with_a_note) {
    for (const std::size_t piece : {1U, 100U}) {
        const outcome it = doubled("\xEF\xBB\xBF"
                                   "h\n1\n",
                                   columns("h"), piece);
        EXPECT_EQ(it.out, "h\n2\n");
        EXPECT_EQ(it.err, "metrify: standard input: a byte order mark is ignored\n");
        EXPECT_EQ(it.status, 0);
    }
}
TEST(convert_columns, writes_objects_of_JSON) {
    columns_options options = columns("height");
    options.as_json = true;
    const outcome it = doubled("name,height\r\n\"a \"\"b\"\"\",1.5\nc,\n,x\n", options);
    EXPECT_EQ(it.out, "{\"name\":\"a \\\"b\\\"\",\"height\":3}\n"
                      "{\"name\":\"c\",\"height\":null}\n"
                      "{\"name\":\"\",\"height\":\"x\"}\n");
    EXPECT_EQ(it.status, 1);
}
TEST(convert_columns, writes_arrays_of_JSON_without_names) {
    columns_options options = columns("1");
    options.as_json = true;
    EXPECT_EQ(doubled("1,a\n2,b\n", options).out, "[2,\"a\"]\n[4,\"b\"]\n");
}
TEST(convert_columns, does_not_depend_on_the_pieces_that_are_read) {
    const std::string text = "h,t\r\n1,\"a\nb\"\r\n\"2\",c\n3,\"\"\"\"\n";
    const std::string converted = "h,t\r\n2,\"a\nb\"\r\n\"4\",c\n6,\"\"\"\"\n";
    for (std::size_t piece = 1; piece <= text.size(); ++piece)
        EXPECT_EQ(doubled(text, columns("h"), piece).out, converted) << piece;
}
TEST(convert_columns, reports_a_quote_without_its_end) {
    const std::string text = "1\n\"" + std::string(17000000, 'x');
    const outcome it = doubled(text, {}, text.size());
    EXPECT_EQ(it.status, 2);
    EXPECT_EQ(it.err, "metrify: row 2 is too long; is there a quote without its end?\n");
}
TEST(convert_columns, leaves_a_row_whose_quote_has_no_end) {
    const std::string text = "h,b\n1,\"unterm\n2,3\n";
    const outcome it = doubled(text, columns("h"));
    EXPECT_EQ(it.status, 1);
    EXPECT_EQ(it.out, text);
    EXPECT_EQ(it.err, "metrify: 1 cell is not converted\n  row 2: a quote has no end\n");
}
TEST(convert_columns, leaves_a_row_with_more_cells_than_the_first) {
    const outcome it = doubled("h\n1,5\n2\n");
    EXPECT_EQ(it.status, 1);
    EXPECT_EQ(it.out, "h\n1,5\n4\n");
    EXPECT_EQ(it.err, "metrify: 1 cell is not converted\n"
                      "  row 2, column h: more cells than the first row\n");
    columns_options options;
    options.as_json = true;
    EXPECT_EQ(doubled("h\n1,5\n2\n", options).out, "{\"h\":\"1\",\"2\":\"5\"}\n{\"h\":4}\n");
}
TEST(convert_columns, counts_a_blank_last_line_as_no_row) {
    for (const std::size_t piece : {1U, 100U}) {
        EXPECT_EQ(doubled("h\n1\n\n", {}, piece).out, "h\n2\n\n");
        EXPECT_EQ(doubled("h\n1\n\n", {}, piece).status, 0);
        EXPECT_EQ(doubled("h\r\n1\r\n\r\n", {}, piece).status, 0);
        EXPECT_EQ(doubled("h\n\n1\n", {}, piece).status, 1);
    }
}
TEST(convert_columns, writes_no_line_of_JSON_for_a_blank_last_line) {
    columns_options options;
    options.as_json = true;
    EXPECT_EQ(doubled("h\n1\n\n", options).out, "{\"h\":2}\n");
    EXPECT_EQ(doubled("\r\n", options).out, "");
}
TEST(convert_columns, refuses_UTF_16) {
    for (const char* text : {"\xFF\xFE"
                             "1",
                             "\xFE\xFF"
                             "1"}) {
        EXPECT_EQ(doubled(text).status, 2);
        EXPECT_EQ(doubled(text).out, "");
        EXPECT_EQ(doubled(text).err, "metrify: the input is encoded in UTF-16; save it as UTF-8\n");
    }
}
TEST(convert_columns, reports_an_input_that_cannot_be_read) {
    std::ostringstream out;
    std::ostringstream err;
    const auto fail = [](char*, std::size_t) {
        errno = EISDIR;
        return std::ptrdiff_t{-1};
    };
    EXPECT_EQ(convert_columns({}, {}, {fail, 0, out, err, nullptr}), 2);
    EXPECT_EQ(err.str(), "metrify: Is a directory\n");
}

TEST(convert_columns, reads_no_further_once_its_output_is_lost) {
    int reads = 0;
    const auto read = [&](char* to, std::size_t size) {
        ++reads;
        return static_cast<std::ptrdiff_t>(reads > 10 ? 0 : std::string_view("1\n").copy(to, size));
    };
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    std::ostringstream err;
    convert_columns({}, {}, {read, 0, out, err, nullptr});
    EXPECT_EQ(reads, 1);
}

} // namespace
