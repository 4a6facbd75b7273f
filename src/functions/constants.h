#pragma once

// The constants: built-ins without arguments. Their values are fixed, digits that look dated included.

#include "functions/builtin.h"

namespace metrify {

struct constant_function {
    std::string_view name;
    double value; // in the base system
    exponents dim;
};
void run_function(const constant_function& constant, compile_ctx& ctx, text_str*& err);

// clang-format off
inline constexpr constant_function constants[] = {
    //                                     rad   s  kg   m degK mol  diff C
    {"pi",              3.141592653589793, {}},
    {"euler",           0.5772156649015329, {}},
    {"CLight",          299792458.0,       {0,  -1,  0,  1,  0,  0,  0,  0}},
    {"grav",            9.806652,          {0,  -2,  0,  1,  0,  0,  0,  0}},
    {"GEarth",          6.67428e-11,       {0,  -2, -1,  3,  0,  0,  0,  0}},
    {"Planck",          6.62606896e-34,    {0,  -1,  1,  2,  0,  0,  0,  0}},
    {"Boltzmann",       1.38065e-23,       {0,  -2,  1,  2, -1,  0,  0,  0}},
    {"StefanBoltzmann", 5.6704e-08,        {0,  -3,  1,  0, -4,  0,  0,  0}},
    {"gas",             8.31434,           {0,  -2,  1,  2, -1, -1,  0,  0}},
};
// clang-format on

} // namespace metrify
