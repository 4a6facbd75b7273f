#pragma once

// Conversions for the calculator and for the units library it is compared with, each in its own spelling.

namespace metrify_bench {

struct unit_pair {
    const char* from;
    const char* to;
    const char* library_from;
    const char* library_to;
};

inline constexpr unit_pair simple_pairs[] = {
    {"ft", "m", "ft", "m"},
    {"in", "cm", "in", "cm"},
    {"miles", "km", "miles", "km"},
    {"lbm", "kg", "lb", "kg"},
    {"g", "lbm", "g", "lb"},
    {"psi", "Pa", "psi", "Pa"},
    {"bar", "psi", "bar", "psi"},
    {"atm", "kPa", "atm", "kPa"},
    {"gal", "L", "gallon", "L"},
    {"degC", "degF", "degC", "degF"},
    {"degF", "degK", "degF", "degK"},
    {"J", "cal", "J", "cal"},
    {"BTU", "kJ", "BTU", "kJ"},
    {"hp", "kW", "hp", "kW"},
    {"lbf", "N", "lbf", "N"},
    {"hour", "s", "hour", "s"},
    {"day", "min", "day", "min"},
    {"deg", "rad", "degrees", "rad"},
    {"acre", "hectare", "acre", "hectare"},
    {"knot", "kph", "knot", "km/h"},
};

inline constexpr unit_pair compound_pairs[] = {
    {"ft/s", "m/s", "ft/s", "m/s"},
    {"kg m / s^2", "lbf", "kg m s-2", "lbf"},
    {"lbf ft", "N m", "lbf ft", "N m"},
    {"kg/m^3", "lbm/ft^3", "kg/m^3", "lb/ft^3"},
    {"W/m^2", "BTU/hr ft^2", "W/m^2", "BTU/(hr ft^2)"},
    {"gal/min", "m^3/hr", "gallon/min", "m^3/hr"},
    {"ft^3/min", "L/s", "ft^3/min", "L/s"},
    {"lbf/in^2", "N/m^2", "lbf/in^2", "N/m^2"},
    {"J/kg degK", "BTU/lbm degR", "J/(kg degK)", "BTU/(lb degR)"},
    {"W/m degK", "BTU/hr ft degR", "W/(m degK)", "BTU/(hr ft degR)"},
    {"miles/hr", "km/hr", "miles/hr", "km/hr"},
    {"ft/s^2", "m/s^2", "ft/s^2", "m/s^2"},
    {"kg/s", "lbm/hr", "kg/s", "lb/hr"},
    {"N s/m^2", "lbf s/ft^2", "N s/m^2", "lbf s/ft^2"},
    {"kJ/mol", "cal/mol", "kJ/mol", "cal/mol"},
    {"A hr", "C", "A hr", "C"},
    {"V/m", "V/in", "V/m", "V/in"},
    {"kW hr", "BTU", "kW hr", "BTU"},
    {"in^4", "cm^4", "in^4", "cm^4"},
    {"m^2/s", "ft^2/hr", "m^2/s", "ft^2/hr"},
};

} // namespace metrify_bench
