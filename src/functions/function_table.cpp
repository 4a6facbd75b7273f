#include "functions/function_table.h"

#include "base/perfect_hash.h"
#include "functions/constants.h"
#include "functions/scalar_functions.h"
#include "functions/solving_functions.h"
#include "functions/special_functions.h"
#include "functions/vector_functions.h"

#include <algorithm>
#include <array>

namespace metrify {

namespace {

constexpr std::size_t function_count = 89;

// The numbers run in alphabetical order without regard to case; the six inverse hyperbolic functions stand
// last. The name in the count message isn't always the function's own, and that is meant.
constexpr std::array<function_row, function_count> functions = {{
    {1, "abs", 1, true, "abs", args_expressions, function_of<scalar_functions>("abs")},
    {2, "acos", 1, true, "acos", args_expressions, function_of<formulas>("acos")},
    {3, "acot", 1, true, "acot", args_expressions, function_of<formulas>("acot")},
    {4, "acsc", 1, true, "acsc", args_expressions, function_of<formulas>("acsc")},
    {5, "AiryAi", 1, true, "AiryAi", args_expressions, function_of<special_functions>("AiryAi")},
    {6, "AiryBi", 1, true, "AiryBi", args_expressions, function_of<special_functions>("AiryBi")},
    {7, "angle", 2, true, "angle", args_expressions, function_of<vector_functions>("angle")},
    {8, "asec", 1, true, "asec", args_expressions, function_of<formulas>("asec")},
    {9, "asin", 1, true, "asin", args_expressions, function_of<formulas>("asin")},
    {10, "atan", 1, true, "atan", args_expressions, function_of<formulas>("atan")},
    {11, "atan2", 2, true, "atan2", args_expressions, function_of<scalar_functions>("atan2")},
    {12, "BesselI", 2, true, "BesselI", args_expressions, function_of<special_functions>("BesselI")},
    {13, "BesselJ", 2, true, "BesselJ", args_expressions, function_of<special_functions>("BesselJ")},
    {14, "BesselK", 2, true, "BesselK", args_expressions, function_of<special_functions>("BesselK")},
    {15, "BesselY", 2, true, "BesselY", args_expressions, function_of<special_functions>("BesselY")},
    {16, "BetaFunc", 2, true, "BetaFunc", args_expressions, function_of<special_functions>("BetaFunc")},
    {17, "Boltzmann", 0, true, "Boltzmann", args_expressions, function_of<constants>("Boltzmann")},
    {18, "CarlsonRC", 2, true, "CarlsonRC", args_expressions, function_of<special_functions>("CarlsonRC")},
    {19, "CarlsonRD", 3, true, "CarlsonRD", args_expressions, function_of<special_functions>("CarlsonRD")},
    {20, "CarlsonRF", 3, true, "CarlsonRF", args_expressions, function_of<special_functions>("CarlsonRF")},
    {21, "CarlsonRJ", 4, true, "CarlsonRJ", args_expressions, function_of<special_functions>("CarlsonRJ")},
    {22, "ceil", 1, true, "ceil", args_expressions, function_of<scalar_functions>("ceil")},
    {23, "CLight", 0, true, "CLight", args_expressions, function_of<constants>("CLight")},
    {24, "component", 2, true, "component", args_expressions, function_of<vector_functions>("component")},
    {25, "cos", 1, true, "cos", args_expressions, function_of<formulas>("cos")},
    {26, "cosh", 1, true, "cosh", args_expressions, function_of<formulas>("cosh")},
    {27, "cot", 1, true, "cot", args_expressions, function_of<formulas>("cot")},
    {28, "coth", 1, true, "coth", args_expressions, function_of<formulas>("coth")},
    {29, "cross", 2, true, "cross", args_expressions, function_of<vector_functions>("cross")},
    {30, "csc", 1, true, "csc", args_expressions, function_of<formulas>("csc")},
    {31, "csch", 1, true, "csch", args_expressions, function_of<formulas>("csch")},
    {32, "DawsonIntegral", 1, true, "DawsonIntegral", args_expressions,
     function_of<special_functions>("DawsonIntegral")},
    {33, "dot", 2, true, "dot", args_expressions, function_of<vector_functions>("dot")},
    {34, "EllipticE", 2, true, "EllipticE", args_expressions, function_of<special_functions>("EllipticE")},
    {35, "EllipticF", 2, true, "EllipticF", args_expressions, function_of<special_functions>("EllipticF")},
    {36, "EllipticPi", 3, true, "EllipticPi", args_expressions, function_of<special_functions>("EllipticPi")},
    {37, "Erf", 1, true, "Erf", args_expressions, function_of<special_functions>("Erf")},
    {38, "Erfc", 1, true, "Erfc", args_expressions, function_of<special_functions>("Erfc")},
    {39, "euler", 0, true, "pi", args_expressions, function_of<constants>("euler")},
    {40, "exp", 1, true, "exp", args_expressions, function_of<formulas>("exp")},
    {41, "ExpInt", 1, true, "ExpInt", args_expressions, function_of<special_functions>("ExpInt")},
    {42, "ExpIntEi", 1, true, "ExpInt", args_expressions, function_of<special_functions>("ExpIntEi")},
    {43, "ExpIntN", 2, true, "ExpIntN", args_expressions, function_of<special_functions>("ExpIntN")},
    {44, "floor", 1, true, "floor", args_expressions, function_of<scalar_functions>("floor")},
    {45, "fmax", 2, false, "max", args_variables, run_fmax},
    {46, "fmin", 2, false, "min", args_variables, run_fmin},
    {47, "func", 0, false, "func", args_variable_value, run_func},
    {48, "GammaFunc", 1, true, "GammaFunc", args_expressions, function_of<special_functions>("GammaFunc")},
    {49, "GammaPFunc", 2, true, "GammaPFunc", args_expressions, function_of<special_functions>("GammaPFunc")},
    {50, "GammaQFunc", 2, true, "GammaQFunc", args_expressions, function_of<special_functions>("GammaQFunc")},
    {51, "gas", 0, true, "gas", args_expressions, function_of<constants>("gas")},
    {52, "GEarth", 0, true, "GEarth", args_expressions, function_of<constants>("GEarth")},
    {53, "grav", 0, true, "grav", args_expressions, function_of<constants>("grav")},
    {54, "IncBetaFunc", 3, true, "IncBetaFunc", args_expressions,
     function_of<special_functions>("IncBetaFunc")},
    {55, "int", 1, true, "int", args_expressions, function_of<scalar_functions>("int")},
    {56, "JacobiCN", 2, true, "JacobiCN", args_expressions, function_of<special_functions>("JacobiCN")},
    {57, "JacobiDN", 2, true, "JacobiDN", args_expressions, function_of<special_functions>("JacobiDN")},
    {58, "JacobiSN", 2, true, "JacobiSN", args_expressions, function_of<special_functions>("JacobiSN")},
    {59, "lininterp", 5, true, "LinInterp", args_expressions, function_of<vector_functions>("LinInterp")},
    {60, "ln", 1, true, "ln", args_expressions, function_of<formulas>("ln")},
    {61, "log", 1, true, "log", args_expressions, function_of<formulas>("log")},
    {62, "log10", 1, true, "log10", args_expressions, function_of<formulas>("log10")},
    {63, "LogGammaFunc", 1, true, "LogGammaFunc", args_expressions,
     function_of<special_functions>("LogGammaFunc")},
    {64, "mag", 1, true, "mag", args_expressions, function_of<vector_functions>("mag")},
    {65, "mod", 2, true, "mod", args_expressions, function_of<scalar_functions>("mod")},
    {66, "Normsdist", 1, true, "Normsdist", args_expressions, function_of<special_functions>("Normsdist")},
    {67, "Normsinv", 1, true, "Normsinv", args_expressions, function_of<special_functions>("Normsinv")},
    {68, "Number", 1, true, "Number", args_expressions, function_of<vector_functions>("Number")},
    {69, "pi", 0, true, "pi", args_expressions, function_of<constants>("pi")},
    {70, "Planck", 0, true, "Planck", args_expressions, function_of<constants>("Planck")},
    {71, "PolarAngle", 1, true, "PolarAngle", args_expressions, function_of<vector_functions>("PolarAngle")},
    {72, "PolarVec", 2, true, "PolarVec", args_expressions, function_of<vector_functions>("PolarVec")},
    {73, "round", 1, true, "round", args_expressions, function_of<scalar_functions>("round")},
    {74, "sec", 1, true, "sec", args_expressions, function_of<formulas>("sec")},
    {75, "sech", 1, true, "sech", args_expressions, function_of<formulas>("sech")},
    {76, "sign", 1, true, "sign", args_expressions, function_of<scalar_functions>("sign")},
    {77, "sin", 1, true, "sin", args_expressions, function_of<formulas>("sin")},
    {78, "sinh", 1, true, "sinh", args_expressions, function_of<formulas>("sinh")},
    {79, "solve", 2, false, "solve", args_variables, run_solve},
    {80, "sqrt", 1, true, "sqrt", args_expressions, function_of<scalar_functions>("sqrt")},
    {81, "StefanBoltzmann", 0, true, "Boltzmann", args_expressions,
     function_of<constants>("StefanBoltzmann")},
    {82, "tan", 1, true, "tan", args_expressions, function_of<formulas>("tan")},
    {83, "tanh", 1, true, "tanh", args_expressions, function_of<formulas>("tanh")},
    {84, "asinh", 1, true, "asinh", args_expressions, function_of<formulas>("asinh")},
    {85, "acosh", 1, true, "acosh", args_expressions, function_of<formulas>("acosh")},
    {86, "atanh", 1, true, "atanh", args_expressions, function_of<formulas>("atanh")},
    {87, "asech", 1, true, "asech", args_expressions, function_of<formulas>("asech")},
    {88, "acsch", 1, true, "acsch", args_expressions, function_of<formulas>("acsch")},
    {89, "acoth", 1, true, "acoth", args_expressions, function_of<formulas>("acoth")},
}};

constexpr std::uint64_t folded_hash(std::string_view name) {
    std::uint64_t hash = name_hash_seed;
    for (const char c : name)
        hash = add_to_name_hash(hash, fold_case(c));
    return hash;
}

constexpr std::array<std::uint64_t, function_count> make_hashes() {
    std::array<std::uint64_t, function_count> hashes = {};
    std::transform(functions.begin(), functions.end(), hashes.begin(),
                   [](const function_row& row) { return folded_hash(row.name); });
    return hashes;
}

constexpr perfect_hash<function_count, 256, 64> function_hash(make_hashes());

constexpr std::size_t longest_name =
    std::max_element(
        functions.begin(), functions.end(),
        [](const function_row& a, const function_row& b) { return a.name.size() < b.name.size(); })
        ->name.size();

static_assert(std::is_sorted(functions.begin(), functions.end(),
                             [](const function_row& a, const function_row& b) {
                                 return a.number < b.number;
                             }),
              "a function's row is found by its number");
static_assert(functions[function_Number - 1].name == "Number");
static_assert(functions[function_component - 1].name == "component");

} // namespace

std::span<const function_row> all_functions() {
    return functions;
}

bool lookup_function(cursor& expptr, function_ref& function) {
    cursor p = expptr;
    if (!is_mnemonic(false, p))
        return false;
    std::uint64_t hash = name_hash_seed;
    while (is_name_char(*p) && !at_stop_pointer(p)) {
        hash = add_to_name_hash(hash, fold_case(*p));
        ++p.at;
        if (text_span(expptr, p).size() > longest_name)
            return false;
    }
    const std::uint16_t place = function_hash.find(hash);
    if (place == function_hash.none || text_compare_nocase(functions[place].name, text_span(expptr, p)) != 0)
        return false;
    function = {functions[place].number, functions[place].mode};
    expptr = p;
    return true;
}

bool is_function_name(bool advance, cursor& expptr) {
    const cursor entry = expptr;
    skip_blanks_and_comments(expptr);
    function_ref function;
    const bool found = lookup_function(expptr, function);
    if (!found || !advance)
        expptr = entry;
    return found;
}

void call_func_by_number(std::int32_t number, std::int32_t, std::int32_t count, compile_ctx& ctx,
                         text_str*& err) {
    if (number < 1 || number > static_cast<std::int32_t>(function_count)) {
        append(err, "ERROR:  Bad function number in call_func_by_number.\n");
        return;
    }
    const function_row& row = functions[static_cast<std::size_t>(number - 1)];
    if (row.mode == args_expressions &&
        !check_arg_count(row.name_in_count_message, row.exact, row.arguments, count, ctx, err))
        return;
    row.run(count, ctx, err);
}

} // namespace metrify
