#include "functions/function_help.h"

namespace metrify {

namespace {

constexpr std::string_view number = "a number";
constexpr std::string_view numbers = "numbers";
constexpr std::string_view angle = "a number or an angle";
constexpr std::string_view radians = "an angle, in radians";
constexpr std::string_view anywhere = "every x";
constexpr std::string_view number_or_angle = "a number; an angle stays one";
constexpr std::string_view variables = "names of variables";
constexpr std::string_view report = "no value; shows the block with what was found";
constexpr std::string_view no_limits = "everything";

// clang-format off
constexpr help_row trigonometric[] = {
    {"sin", "x", "The sine", angle, number, anywhere, "sin(30 deg)", "= 0.5"},
    {"cos", "x", "The cosine", angle, number, anywhere, "cos(60 deg)", "= 0.5"},
    {"tan", "x", "The tangent", angle, number, anywhere, "tan(45 deg)", "= 1"},
    {"sec", "x", "The secant, 1/cos(x)", angle, number, "every x; infinite where the cosine is 0", "sec(60 deg)", "= 2"},
    {"csc", "x", "The cosecant, 1/sin(x)", angle, number, "every x; infinite where the sine is 0", "csc(30 deg)", "= 2"},
    {"cot", "x", "The cotangent, 1/tan(x)", angle, number, "every x; infinite where the tangent is 0", "cot(45 deg)", "= 1"},
    {"asin", "x", "The angle with the sine x", number, radians, "-1 to 1; infinite outside", "asin(1); deg", "= 90 deg"},
    {"acos", "x", "The angle with the cosine x", number, radians, "-1 to 1; infinite outside", "acos(0.5); deg", "= 60 deg"},
    {"atan", "x", "The angle with the tangent x", number, radians, anywhere, "atan(1); deg", "= 45 deg"},
    {"asec", "x", "The angle with the secant x", number, radians, "-1 and below, 1 and above; infinite between", "asec(2); deg", "= 60 deg"},
    {"acsc", "x", "The angle with the cosecant x; below -1 its distance from -pi", number, radians, "-1 and below, 1 and above; infinite between", "acsc(2); deg", "= 30 deg"},
    {"acot", "x", "The angle with the cotangent x; below 0 that angle less pi", number, radians, anywhere, "acot(1); deg", "= 45 deg"},
    {"atan2", "y, x", "The angle of the point (x, y)", "two quantities of the same units", radians, no_limits, "atan2(1 m, 1 m); deg", "= 45 deg"},
};

constexpr help_row hyperbolic[] = {
    {"sinh", "x", "The hyperbolic sine", number, number, anywhere, "sinh(1)", "= 1.1752"},
    {"cosh", "x", "The hyperbolic cosine", number, number, anywhere, "cosh(1)", "= 1.54308"},
    {"tanh", "x", "The hyperbolic tangent", number, number, anywhere, "tanh(1)", "= 0.761594"},
    {"sech", "x", "The hyperbolic secant, 1/cosh(x)", number, number, anywhere, "sech(0)", "= 1"},
    {"csch", "x", "The hyperbolic cosecant, 1/sinh(x)", number, number, "every x; infinite at 0", "csch(1)", "= 0.850918"},
    {"coth", "x", "The hyperbolic cotangent, 1/tanh(x)", number, number, "every x; infinite at 0", "coth(1)", "= 1.31304"},
    {"asinh", "x", "The inverse of sinh", number, number, anywhere, "asinh(1)", "= 0.881374"},
    {"acosh", "x", "The inverse of cosh", number, number, "1 and above", "acosh(2)", "= 1.31696"},
    {"atanh", "x", "The inverse of tanh", number, number, "-1 to 1; no message below", "atanh(0.5)", "= 0.549306"},
    {"asech", "x", "The inverse of sech", number, number, "0 to 1", "asech(0.5)", "= 1.31696"},
    {"acsch", "x", "The inverse of csch", number, number, anywhere, "acsch(1)", "= 0.881374"},
    {"acoth", "x", "The inverse of coth", number, number, "-1 and below, 1 and above", "acoth(2)", "= 0.549306"},
};

constexpr help_row logarithms[] = {
    {"exp", "x", "e to the power x", number, number, anywhere, "exp(1)", "= 2.71828"},
    {"ln", "x", "The natural logarithm", number, number, "above 0; infinite elsewhere", "ln(100)", "= 4.60517"},
    {"log", "x", "The natural logarithm, the same as ln", number, number, "above 0; infinite elsewhere", "log(100)", "= 4.60517"},
    {"log10", "x", "The decimal logarithm", number, number, "above 0; infinite elsewhere", "log10(100)", "= 2"},
    {"sqrt", "x", "The square root", "any quantity", "half its units", "0 and above", "sqrt(4 m^2)", "= 2 m"},
};

constexpr help_row rounding[] = {
    {"abs", "x", "The magnitude of a scalar", "any quantity", "its units", anywhere, "abs(-3 m)", "= 3 m"},
    {"sign", "x", "-1, 0 or 1", "any quantity", number, anywhere, "sign(-5 m)", "= -1"},
    {"ceil", "x", "The least whole number that isn't below x", angle, number_or_angle, anywhere, "ceil(2.1)", "= 3"},
    {"floor", "x", "The greatest whole number that isn't above x", angle, number_or_angle, anywhere, "floor(-2.5)", "= -3"},
    {"int", "x", "x without its fraction", angle, number_or_angle, anywhere, "int(-2.5)", "= -2"},
    {"round", "x", "The nearest whole number, halves away from 0", angle, number_or_angle, "32-bit integers; -2147483648 outside", "round(2.5)", "= 3"},
    {"mod", "x, d", "The remainder of x divided by d, with the sign of x", "two quantities of the same units", "their units", "d other than 0", "mod(7 m, 2 m)", "= 1 m"},
};

constexpr help_row vectors[] = {
    {"dot", "a, b", "The scalar product", "two vectors", "the product of their units", no_limits, "dot([1, 2, 3], [4, 5, 6])", "= 32"},
    {"cross", "a, b", "The vector product", "two vectors", "a vector, of the product of their units", no_limits, "cross([1, 2, 3], [4, 5, 7])", "= [ -1 , 5 , -3 ]"},
    {"mag", "v", "The length of a vector", "a vector", "its units", no_limits, "mag([3 m, 4 m])", "= 5 m"},
    {"angle", "a, b", "The arc tangent of the cosine of the angle between two vectors", "two vectors of the same units", radians, no_limits, "angle([1, 0], [1, 0]); deg", "= 45 deg"},
    {"component", "v, i", "A component of a vector", "a vector; a number", "the vector's units", "i is 1, 2 or 3", "component([1 m, 2 m, 3 m], 2)", "= 2 m"},
    {"PolarVec", "r, a", "The vector of length r at an angle a", "a quantity; an angle", "a vector, of the units of r", no_limits, "PolarVec(2 m, 0 rad)", "= [ 2 , 0 , 0 ] m"},
    {"PolarAngle", "v", "The angle of a vector in the plane of its first two components", "a vector", radians, no_limits, "PolarAngle([1 m, 1 m]); deg", "= 45 deg"},
};

constexpr help_row units[] = {
    {"Number", "x, u", "The number that x is in the units u, or in the base system", "any quantity; units, which may be left out", number, "u fits x", "Number(1 ft, in)", "= 12"},
    {"lininterp", "x1, y1, x2, y2, x", "The value at x on the line through two points", "three x of the same units, two y of the same units", "the units of y", "x1 and x2 differ", "lininterp(0, 0, 10, 100, 5)", "= 50"},
};

constexpr help_row constant_values[] = {
    {"pi", "", "The ratio of a circle's circumference to its diameter", "", number, no_limits, "pi()", "= 3.14159"},
    {"euler", "", "The constant of Euler and Mascheroni", "", number, no_limits, "euler()", "= 0.577216"},
    {"CLight", "", "The speed of light in a vacuum", "", "a speed", no_limits, "CLight()", "= 2.99792e+08 m / s"},
    {"grav", "", "The acceleration of gravity", "", "an acceleration", no_limits, "grav()", "= 9.80665 m / s^2"},
    {"GEarth", "", "The constant of gravitation", "", "m^3 / (kg s^2)", no_limits, "GEarth() * 1 kg^2 / (1 m)^2", "= 6.67428e-11 kg m / s^2"},
    {"Planck", "", "The constant of Planck", "", "energy times time", no_limits, "Planck(); J s", "= 6.62607e-34 J s"},
    {"Boltzmann", "", "The constant of Boltzmann", "", "energy per temperature", no_limits, "Boltzmann(); J / degK", "= 1.38065e-23 J / degK"},
    {"StefanBoltzmann", "", "The constant of Stefan and Boltzmann", "", "power per area and temperature to the fourth", no_limits, "StefanBoltzmann(); W / m^2 degK^4", "= 5.6704e-08 W / m^2 degK^4"},
    {"gas", "", "The molar gas constant", "", "energy per amount and temperature", no_limits, "gas(); J / mol degK", "= 8.31434 J / mol degK"},
};

// These work on a block, so their examples are programs.
constexpr help_row solving[] = {
    {"solve", "y, ..., x, ...", "Finds the x, ... at which the function block makes the y, ... vanish", "names of variables, as many x as y", report, "the search starts at the values of x, ...", "begin\nx = 2 m\ny = x^2 - 9 m^2\nend\nsolve(y, x)", "x = 3 m"},
    {"fmin", "y, x, ...", "Finds the x, ... at which the function block makes y least", variables, report, "the search starts at the values of x, ...", "begin\nx = 1 m\ny = (x - 3 m)^2\nend\nfmin(y, x)", "x = 3 m"},
    {"fmax", "y, x, ...", "Finds the x, ... at which the function block makes y greatest", variables, report, "the search starts at the values of x, ...", "begin\nx = 1 m\ny = 4 m^2 - (x - 3 m)^2\nend\nfmax(y, x)", "x = 3 m"},
    {"func", "x, value, ...", "Sets the x, ... to the values, units included, and runs the function block", "names of variables, each with its value", report, "any values", "begin\nx = 2 m\ny = x^2 - 9 m^2\nend\nfunc(x, 5 m)", "y = 16 m^2"},
};

constexpr std::string_view order_and_x = "numbers: the order n and x";
constexpr std::string_view first_kind_domain = "every x where n is whole, x > 0 elsewhere; orders of 32 bits";
constexpr std::string_view second_kind_domain = "x > 0; orders of 32 bits";

constexpr help_row bessel[] = {
    {"BesselJ", "n, x", "The Bessel function of the first kind, to 6e-7, for other than whole orders to 1e-13", order_and_x, number, first_kind_domain, "BesselJ(0, 1)", "= 0.765198"},
    {"BesselY", "n, x", "The Bessel function of the second kind, as accurate", order_and_x, number, second_kind_domain, "BesselY(0, 1)", "= 0.088257"},
    {"BesselI", "n, x", "The modified Bessel function of the first kind, as accurate", order_and_x, number, first_kind_domain, "BesselI(0, 1)", "= 1.26607"},
    {"BesselK", "n, x", "The modified Bessel function of the second kind, as accurate, just below x = 2 to 2e-13", order_and_x, number, second_kind_domain, "BesselK(2, 1)", "= 1.62484"},
    {"AiryAi", "x", "The Airy function Ai, to 1e-13", number, number, "-600 to 100000; a message where the fractions end", "AiryAi(1)", "= 0.135292"},
    {"AiryBi", "x", "The Airy function Bi, to 1e-13", number, number, "-600 to 104, infinite above; a message where the fractions end", "AiryBi(1)", "= 1.20742"},
};

constexpr help_row gamma_and_beta[] = {
    {"GammaFunc", "x", "The gamma function, to 3e-10", number, number, "x > 0", "GammaFunc(5)", "= 24"},
    {"LogGammaFunc", "x", "The logarithm of the gamma function, to 3e-10", number, number, "x > 0", "LogGammaFunc(5)", "= 3.17805"},
    {"GammaPFunc", "a, x", "The incomplete gamma function P, to 5e-7", numbers, number, "a > 0, x at least 0; a up to some 1000", "GammaPFunc(1, 1)", "= 0.632121"},
    {"GammaQFunc", "a, x", "Its complement Q, to 5e-7", numbers, number, "a > 0, x at least 0; a up to some 1000", "GammaQFunc(1, 1)", "= 0.367879"},
    {"BetaFunc", "a, b", "The beta function, to 3e-10", numbers, number, "a > 0, b > 0", "BetaFunc(2, 3)", "= 0.0833333"},
    {"IncBetaFunc", "a, b, x", "The incomplete beta function I(a, b) at x, to 5e-7", numbers, number, "a > 0, b > 0, x from 0 to 1", "IncBetaFunc(2, 3, 0.4)", "= 0.5248"},
};

constexpr help_row error_and_normal[] = {
    {"Erf", "x", "The error function, to 3e-7", number, number, anywhere, "Erf(1)", "= 0.842701"},
    {"Erfc", "x", "Its complement 1 - Erf(x), to 3e-7", number, number, anywhere, "Erfc(-1)", "= 1.8427"},
    {"Normsdist", "x", "The probability of a standard normal variable below x, to 3e-9", number, number, "every x; 0 and 1 from -6 and 6 on", "Normsdist(1.96)", "= 0.975002"},
    {"Normsinv", "p", "The x at which that probability is p, to 4e-9", number, number, "0 to 1; the ends are finite", "Normsinv(0.975)", "= 1.95996"},
    {"DawsonIntegral", "x", "Dawson's integral, to 5e-7", number, number, anywhere, "DawsonIntegral(1)", "= 0.538079"},
};

constexpr help_row exponential_integrals[] = {
    {"ExpInt", "x", "The exponential integral E1, to 5e-7", number, number, "x > 0", "ExpInt(1)", "= 0.219384"},
    {"ExpIntN", "n, x", "The exponential integral of a whole order n, to 5e-7", numbers, number, "n at least 0; x > 0, from n = 2 on also 0", "ExpIntN(2, 0)", "= 1"},
    {"ExpIntEi", "x", "The exponential integral Ei, to 3e-7", number, number, "x > 0", "ExpIntEi(1)", "= 1.89512"},
};

constexpr help_row elliptic[] = {
    {"CarlsonRF", "x, y, z", "Carlson's elliptic integral of the first kind", numbers, number, "none negative, at most one 0", "CarlsonRF(1, 2, 3)", "= 0.726946"},
    {"CarlsonRD", "x, y, z", "Carlson's elliptic integral of the second kind", numbers, number, "none negative, z and one of x, y above 0", "CarlsonRD(1, 1, 1)", "= 1"},
    {"CarlsonRC", "x, y", "Carlson's degenerate integral RC with 11 more in its series: near twelve times the integral", numbers, number, "x at least 0, y > 0", "CarlsonRC(1, 1)", "= 12"},
    {"CarlsonRJ", "x, y, z, p", "Carlson's integral of the third kind, formed from such values of RC", numbers, number, "none negative, p > 0", "CarlsonRJ(1, 1, 1, 1)", "= 9.25"},
    {"EllipticF", "phi, k", "Legendre's integral of the first kind, modulus k", "an angle; a number", number, "-90 deg to 90 deg; k sin(phi) from -1 to 1", "EllipticF(30 deg, 0.5)", "= 0.529429"},
    {"EllipticE", "phi, k", "Legendre's integral of the second kind, modulus k", "an angle; a number", number, "-90 deg to 90 deg; k sin(phi) from -1 to 1", "EllipticE(90 deg, 0)", "= 1.5708"},
    {"EllipticPi", "phi, n, k", "Legendre's integral of the third kind with 1 + n sin^2, formed from CarlsonRJ", "an angle; numbers", number, "-90 deg to 90 deg; k sin(phi) from -1 to 1; n sin(phi)^2 above -1", "EllipticPi(30 deg, 0, 0.5)", "= 0.529429"},
    {"JacobiSN", "u, k", "The Jacobian function sn whose complementary parameter is k^2, to 1e-7", numbers, number, anywhere, "JacobiSN(0.5, 0)", "= 0.462117"},
    {"JacobiCN", "u, k", "The Jacobian function cn of the same", numbers, number, anywhere, "JacobiCN(0.5, 0)", "= 0.886819"},
    {"JacobiDN", "u, k", "The Jacobian function dn of the same", numbers, number, anywhere, "JacobiDN(0.5, 1)", "= 1"},
};

constexpr help_family families[] = {
    {"Trigonometry", trigonometric},
    {"Hyperbolic functions", hyperbolic},
    {"Exponential, logarithms, roots", logarithms},
    {"Rounding, sign, remainder", rounding},
    {"Vectors", vectors},
    {"Units and interpolation", units},
    {"Constants", constant_values},
    {"Solving", solving},
    {"Bessel and Airy functions", bessel},
    {"Gamma and beta functions", gamma_and_beta},
    {"Error function and normal distribution", error_and_normal},
    {"Exponential integrals", exponential_integrals},
    {"Elliptic integrals and functions", elliptic},
};
// clang-format on

} // namespace

std::span<const help_family> function_help() {
    return families;
}

} // namespace metrify
