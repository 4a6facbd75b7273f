#pragma once

// The constants: built-ins without arguments. Intentional: some values are dated.

#include "functions/builtin.h"

namespace metrify {

struct constant_function {
    function_facts about;
    double value; // in the base system
    exponents dim;
};
void run_function(const constant_function& constant, compile_ctx& ctx, text_str*& err);

// clang-format off
inline constexpr constant_function constants[] = {
    // the facts
    //   the value, the exponents of rad s kg m degK mol, temperature difference and C
    {{69, family::constant, "pi", 0, "", "The ratio of a circle's circumference to its diameter",
      "", help::number, help::no_limits, "pi()", "= 3.14159"},
     3.141592653589793, {}},
    {{39, family::constant, "euler", 0, "", "The constant of Euler and Mascheroni",
      "", help::number, help::no_limits, "euler()", "= 0.577216", {.name_in_count = "pi"}},
     0.5772156649015329, {}},
    {{23, family::constant, "CLight", 0, "", "The speed of light in a vacuum",
      "", "a speed", help::no_limits, "CLight()", "= 2.99792e+08 m / s"},
     299792458.0, {0,  -1,  0,  1,  0,  0,  0,  0}},
    {{53, family::constant, "grav", 0, "", "The acceleration of gravity",
      "", "an acceleration", help::no_limits, "grav()", "= 9.80665 m / s^2"},
     9.806652, {0,  -2,  0,  1,  0,  0,  0,  0}},
    {{52, family::constant, "GEarth", 0, "", "The constant of gravitation",
      "", "m^3 / (kg s^2)", help::no_limits, "GEarth() * 1 kg^2 / (1 m)^2", "= 6.67428e-11 kg m / s^2"},
     6.67428e-11, {0,  -2, -1,  3,  0,  0,  0,  0}},
    {{70, family::constant, "Planck", 0, "", "The constant of Planck",
      "", "energy times time", help::no_limits, "Planck(); J s", "= 6.62607e-34 J s"},
     6.62606896e-34, {0,  -1,  1,  2,  0,  0,  0,  0}},
    {{17, family::constant, "Boltzmann", 0, "", "The constant of Boltzmann",
      "", "energy per temperature", help::no_limits, "Boltzmann(); J / degK", "= 1.38065e-23 J / degK"},
     1.38065e-23, {0,  -2,  1,  2, -1,  0,  0,  0}},
    {{81, family::constant, "StefanBoltzmann", 0, "", "The constant of Stefan and Boltzmann",
      "", "power per area and temperature to the fourth", help::no_limits, "StefanBoltzmann(); W / m^2 degK^4", "= 5.6704e-08 W / m^2 degK^4", {.name_in_count = "Boltzmann"}},
     5.6704e-08, {0,  -3,  1,  0, -4,  0,  0,  0}},
    {{51, family::constant, "gas", 0, "", "The molar gas constant",
      "", "energy per amount and temperature", help::no_limits, "gas(); J / mol degK", "= 8.31434 J / mol degK"},
     8.31434, {0,  -2,  1,  2, -1, -1,  0,  0}},
};
// clang-format on

} // namespace metrify
