// Every function of the host by its number, with its numbers of arguments and the contexts that may call it.

#include "tests/host/calling.h"

#include <gtest/gtest.h>

namespace metrify::host {
namespace {

constexpr int kSuccess = 0;
constexpr int kNoFunction = 2;
constexpr int kWrongCount = 4;
constexpr int kFailed = 32;
constexpr int kNotThreadSafe = 128;

enum class Callers { all, macros, commands };

struct Row {
    int number;
    std::size_t fewest;
    std::size_t most;
    Callers callers;
};

constexpr Row functions[] = {
    {0x4001, 0, 1, Callers::all},     // whether Escape is pressed
    {0x4002, 1, 2, Callers::all},     // conversion of a value
    {0x4008, 0, 0, Callers::all},     // main window
    {0x4009, 0, 0, Callers::all},     // path of the add-in
    {88, 1, 2, Callers::commands},    // SET.NAME
    {94, 0, 0, Callers::macros},      // ACTIVE.CELL
    {106, 1, 1, Callers::macros},     // GET.FORMULA
    {149, 2, 255, Callers::commands}, // REGISTER
    {152, 2, 4, Callers::commands},   // ADD.MENU
    {153, 3, 5, Callers::commands},   // ADD.COMMAND
    {158, 2, 3, Callers::commands},   // DELETE.MENU
    {185, 1, 2, Callers::macros},     // GET.CELL
    {186, 1, 1, Callers::macros},     // GET.WORKSPACE
    {201, 1, 1, Callers::commands},   // UNREGISTER
    {241, 2, 5, Callers::macros},     // FORMULA.CONVERT
    {244, 1, 1, Callers::all},        // INFO
    {32784, 0, 2, Callers::commands}, // CLOSE
    {32864, 1, 2, Callers::commands}, // FORMULA
    {32866, 1, 2, Callers::commands}, // FORMULA.ARRAY
    {32886, 1, 3, Callers::commands}, // ALERT
    {32887, 0, 3, Callers::commands}, // NEW
    {32909, 0, 1, Callers::commands}, // ECHO
    {33218, 0, 0, Callers::commands}, // the function wizard
};

int CodeOf(const Row& row, std::size_t count, CallContext context = CallContext::command) {
    Host host(15);
    Adopt(host, {});
    const ContextScope scope(context);
    return Ask12(host, row.number, std::vector<CellValue>(count, CellValue(u""))).code;
}

TEST(host_functions, take_their_counts_of_arguments) {
    for (const Row& row : functions) {
        EXPECT_TRUE(row.fewest == 0 || CodeOf(row, row.fewest - 1) == kWrongCount) << row.number;
        EXPECT_NE(CodeOf(row, row.fewest), kWrongCount) << row.number;
        EXPECT_NE(CodeOf(row, row.most), kWrongCount) << row.number;
        EXPECT_EQ(CodeOf(row, row.most + 1), kWrongCount) << row.number;
    }
}

TEST(host_functions, refuse_calls_in_other_contexts) {
    for (const Row& row : functions) {
        const bool is_command = row.number >= 0x8000;
        const int refusal = is_command ? kFailed : kNoFunction;
        const bool is_for_all = row.callers == Callers::all;
        EXPECT_EQ(CodeOf(row, row.fewest, CallContext::calculation_thread),
                  is_for_all ? kSuccess : kNotThreadSafe)
            << row.number;
        EXPECT_EQ(CodeOf(row, row.fewest, CallContext::worksheet_function), is_for_all ? kSuccess : refusal)
            << row.number;
        EXPECT_EQ(CodeOf(row, row.fewest, CallContext::macro_function),
                  row.callers == Callers::commands ? refusal : kSuccess)
            << row.number;
        EXPECT_NE(CodeOf(row, row.fewest), kNoFunction) << row.number;
    }
}

TEST(host_functions, unknown_numbers_are_refused) {
    for (const int number : {0, 1, 87, 89, 187, 243, 245, 379, 0x4003, 0x4004, 33217, 33219, 450})
        EXPECT_EQ(CodeOf({number, 0, 0, Callers::all}, 0), kNoFunction) << number;
}

TEST(host_functions, information_on_the_host) {
    Host host(11);
    EXPECT_EQ(Ask4(host, 244, {u"RELEASE"}), Success(u"11.0"));
    EXPECT_EQ(Ask4(host, 244, {u"system"}), Success(u"pcdos"));
    EXPECT_EQ(Ask4(host, 244, {u"recalc"}), Success(u"Automatic"));
    EXPECT_EQ(Ask4(host, 244, {u"numfile"}), Success(1.0));
    EXPECT_EQ(Ask4(host, 244, {CellError{7}}), Success(CellError{7}));
    host.state().books.Open();
    EXPECT_EQ(Ask4(host, 244, {u"numfile"}), Success(2.0));
    EXPECT_EQ(Ask4(host, 186, {1.0}), Success(u"Windows (64-bit) NT 6.01"));
    EXPECT_EQ(Ask4(host, 186, {2.0}), Success(u"11.0"));
    EXPECT_EQ(Ask4(host, 186, {40.0}), Success(true));
    for (const double item : {0.0, 3.0, 36.0, 38.0, 39.0, 41.0})
        EXPECT_EQ(Ask4(host, 186, {item}), Success(CellError{15})) << item;
}

TEST(host_functions, settings_are_those_of_the_united_states) {
    Host host(15);
    const CellArray settings =
        RowOf({1.0,  1.0,        u".", u",",  u",",  u"R",  u"C", u"r", u"c",  u"[",  u"]",  u"{",
               u"}", u",",       u";", u"\\", u"/",  u":",  u"y", u"m", u"d",  u"h",  u"m",  u"s",
               u"$", u"General", 2.0,  1.0,   2.0,   3.0,   3.0,  0.0,  false, false, false, false,
               true, true,       true, false, false, false, true, true, false});
    EXPECT_EQ(Ask12(host, 186, {37.0}), Success(settings));
}

TEST(host_functions, conversion_uses_the_first_wanted_type_that_is_possible) {
    Host host(15);
    const auto converted = [&host](const CellValue& value, int wanted) {
        return Ask12(host, 0x4002, {value, static_cast<double>(wanted)}).value;
    };
    EXPECT_EQ(converted(u"12.5", 0x0001 | 0x0800), CellValue(12.5));
    EXPECT_EQ(converted(u"12.5", 0x0800 | 0x0004), CellValue(12));
    EXPECT_EQ(converted(u"true", 0x0001 | 0x0004), CellValue(true));
    EXPECT_EQ(converted(12.5, 0x0004 | 0x0002), CellValue(true));
    EXPECT_EQ(converted(12.5, 0x0002 | 0x0040), CellValue(u"12.5"));
    EXPECT_EQ(converted(u"x", 0x0001 | 0x0040), CellValue(RowOf({u"x"})));
    EXPECT_EQ(converted(2147483647.0, 0x0800), CellValue(2147483647));
    EXPECT_EQ(converted(-2147483648.0, 0x0800), CellValue(std::int32_t{-2147483647 - 1}));
    EXPECT_EQ(converted(2147483648.0, 0x0800), CellValue(CellError{15}));
    EXPECT_EQ(Ask4(host, 0x4002, {-32768.0, 2048.0}), Success(-32768));
    EXPECT_EQ(Ask4(host, 0x4002, {-32769.0, 2048.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(host, 0x4002, {1.0, 0.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(host, 0x4002, {1.0, 4096.0}), Success(CellError{15}));
    EXPECT_EQ(Ask12(host, 0x4002, {1.0, u"x"}), Success(CellError{15}));
}

TEST(host_functions, a_formula_is_converted_if_every_argument_is_right) {
    Host host(15);
    const CellValue base = CellOf(host, 0, 0);
    const auto converted = [&host](std::vector<CellValue> arguments) {
        return Ask12(host, 241, arguments).value;
    };
    EXPECT_EQ(converted({u"=A1", true, false, 1.0, base}), CellValue(u"=R1C1"));
    EXPECT_EQ(converted({u"=A1", true, MissingArgument{}, 1.0, base}), CellValue(u"=$A$1"));
    EXPECT_EQ(converted({CellError{7}, true, false, 1.0, base}), CellValue(CellError{15}));
    EXPECT_EQ(converted({u"=A1", u"maybe", false, 1.0, base}), CellValue(CellError{15}));
    EXPECT_EQ(converted({u"=A1", true, u"maybe", 1.0, base}), CellValue(CellError{15}));
    for (const CellValue& kind : {CellValue(0.0), CellValue(5.0), CellValue(u"x")})
        EXPECT_EQ(converted({u"=A1", true, false, kind, base}), CellValue(CellError{15}));
    EXPECT_EQ(converted({u"=A1", true, false, 1.0, 7.0}), CellValue(CellError{15}));
}

TEST(host_functions, conversion_without_a_type_gives_a_value) {
    Host host(15);
    EXPECT_EQ(Ask12(host, 0x4002, {u"a"}), Success(u"a"));
    EXPECT_EQ(Ask12(host, 0x4002, {true}), Success(true));
    EXPECT_EQ(Ask12(host, 0x4002, {5}), Success(5));
    EXPECT_EQ(Ask12(host, 0x4002, {CellValue()}), Success(CellValue()));
    EXPECT_EQ(Ask12(host, 0x4002, {CellOf(host, 3, 3)}), Success(CellValue()));
    EXPECT_EQ(Ask12(host, 0x4002, {Reference{99, {{0, 0, 0, 0}}, false}}), Success(CellError{23}));
    const IDSHEET sheet = host.state().books.Active()->id();
    EXPECT_EQ(Ask12(host, 0x4002, {Reference{sheet, {{0, 0, 0, 0}, {1, 1, 1, 1}}, false}}),
              Success(CellError{15}));
    EXPECT_EQ(Ask12(host, 0x4002, {Reference{99, {{0, 0, 0, 0}}, false}, 1024.0}), Success(CellError{23}));
}

} // namespace
} // namespace metrify::host
