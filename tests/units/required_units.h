#pragma once

// The vocabulary of units as it is required, row by row: the names that share a factor, by dimension.

#include "units/dim_value.h"

#include <array>
#include <string_view>

namespace metrify {

struct required_units {
    exponents dim;
    double factor;
    std::string_view names; // with a blank between them
};

// clang-format off
constexpr std::array<required_units, 153> required_unit_rows = {{
    // s^-2 kg m^-1
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1.45037739690094e-13, "Gpsi"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1.45037739690094e-10, "Mpsi"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1e-09, "GPa Gpa"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1.45037739690094e-07, "ksi"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1e-06, "MPa Mpa"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 9.86923266716013e-06, "atm atmosphere"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1e-05, "bar bars"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.000145037739690094, "psi"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.000296133971008484, "inHg"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.000750061505043414, "cmHg"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.001, "kPa kpa"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.00401864651985211, "inWater"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.00750061505043414, "Torr Torrs mmHg torr torrs"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.01, "millibar millibars"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.0101974428892211, "cmWater"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 0.0208854345154, "psf"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1.0, "Pa Pascal Pascals"},
    {{0, -2, 1, -1, 0, 0, 0, 0}, 1000.0, "mPa mpa"},
    // m
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1.05702099772212e-16, "lightyear lightyears"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 0.000179985601, "NauticalMile Nmile"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 0.000179985601151908, "league"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 0.000621371192237334, "mi mile miles"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 0.001, "kilometer kilometers km"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 0.546806649168854, "fathom fathoms"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1.0, "m meter meters"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1.09361329833771, "yard yards yd"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 2.18722, "cubit cubits"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 3.28083989501312, "feet foot ft"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 39.3700787401575, "in inch inches"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 100.0, "centimeter centimeters cm"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1000.0, "millimeter millimeters mm"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 39370.0787401575, "mil"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1000000.0, "micrometer micrometers micron microns um"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1650763.73, "KrWavelength"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 1000000000.0, "nanometer nanometers nm"},
    {{0, 0, 0, 1, 0, 0, 0, 0}, 10000000000.0, "angstrom"},
    // m^3
    {{0, 0, 0, 3, 0, 0, 0, 0}, 0.275895838616164, "cord cords"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 1.0, "stere"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 6.28981056977507, "barrel barrels"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 28.3775932584017, "bushel bushels"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 113.510373033607, "peck pecks"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 264.172051242, "gal gallon gallons"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 423.776000657863, "boardfoot"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 1000.0, "L l liter liters"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 1056.68820496623, "quart quarts"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 2113.37641886519, "pint pints"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 4226.75283773037, "cup cups"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 33814.022701843, "fluidounce fluidounces"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 67628.045403686, "Tablespoon Tablespoons Tbs tablespoon tablespoons"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 202884.136211058, "teaspoon teaspoons tsp"},
    {{0, 0, 0, 3, 0, 0, 0, 0}, 1000000.0, "cc mL milliliter milliliters ml"},
    // kg
    {{0, 0, 1, 0, 0, 0, 0, 0}, 0.000984206527611061, "ton tons"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 0.001, "Mg tonne"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 0.06852176556, "slug slugs"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 0.15747304441777, "stone stones"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 1.0, "kg kilogram kilograms"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 2.20462262184878, "lbm"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 35.2739619495804, "ozm"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 1000.0, "g gram grams"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 5000.0, "carat carats"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 15432.3583529414, "grain grains"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 1000000.0, "mg milligram milligrams"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 1000000000.0, "microgram micrograms ug"},
    {{0, 0, 1, 0, 0, 0, 0, 0}, 1000000000000.0, "nanogram nanograms ng"},
    // s^-2 kg m^2
    {{0, -2, 1, 2, 0, 0, 0, 0}, 1e-09, "GJ"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 1e-06, "MJ"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 0.000238845897, "kcal kcals"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 0.000947817078, "BTU BritishThermalUnit BritishThermalUnits Btu Btus btu btus"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 0.001, "kJ"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 0.238845897, "Calorie Calories cal calorie calories cals"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 1.0, "J Joule Joules joule joules"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 1000.0, "mJ"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 10000000.0, "erg ergs"},
    {{0, -2, 1, 2, 0, 0, 0, 0}, 6.241506479963234e+18, "ElectronVolt eV"},
    // s^-2 kg m
    {{0, -2, 1, 1, 0, 0, 0, 0}, 1e-06, "MN"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 0.000224808943099711, "kip kips"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 0.001, "kN"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 0.101971600501374, "kgf"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 0.224808943099711, "lb lbf lbs pound pounds"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 1.0, "N Newton Newtons newton newtons"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 3.59694310193539, "ounce ounces oz ozf"},
    {{0, -2, 1, 1, 0, 0, 0, 0}, 100000.0, "dyne dynes"},
    // s
    {{0, 1, 0, 0, 0, 0, 0, 0}, 3.168876487e-08, "year years yr"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 1.65343916e-06, "week weeks"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 1.15740740740741e-05, "day days"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 0.0002777777777778, "hour hours"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 0.000277777777778, "hr"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 0.01666666666667, "min minute minutes"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 1.0, "s sec second seconds"},
    {{0, 1, 0, 0, 0, 0, 0, 0}, 1000.0, "millisecond milliseconds ms msec"},
    // s^-3 kg m^2
    {{0, -3, 1, 2, 0, 0, 0, 0}, 1e-09, "GW"},
    {{0, -3, 1, 2, 0, 0, 0, 0}, 1e-06, "MW"},
    {{0, -3, 1, 2, 0, 0, 0, 0}, 0.001, "kW kiloWatt kiloWatts"},
    {{0, -3, 1, 2, 0, 0, 0, 0}, 0.00134102209244049, "horsepower hp"},
    {{0, -3, 1, 2, 0, 0, 0, 0}, 1.0, "W Watt Watts watt watts"},
    {{0, -3, 1, 2, 0, 0, 0, 0}, 1000.0, "mW"},
    // s^-1
    {{0, -1, 0, 0, 0, 0, 0, 0}, 1e-09, "GBq GHz"},
    {{0, -1, 0, 0, 0, 0, 0, 0}, 1e-06, "MBq MHz"},
    {{0, -1, 0, 0, 0, 0, 0, 0}, 0.001, "kBq kHz"},
    {{0, -1, 0, 0, 0, 0, 0, 0}, 1.0, "Becquerel Bq Hertz Hz becquerel hz"},
    {{0, -1, 0, 0, 0, 0, 0, 0}, 37000000000.0, "Curie curie"},
    // rad
    {{1, 0, 0, 0, 0, 0, 0, 0}, 0.15915494309189535, "rev revolution revolutions"},
    {{1, 0, 0, 0, 0, 0, 0, 0}, 1.0, "rad radian radians"},
    {{1, 0, 0, 0, 0, 0, 0, 0}, 57.29577951308232, "deg degree degrees"},
    {{1, 0, 0, 0, 0, 0, 0, 0}, 3437.746770784939, "arcmin arcminute"},
    {{1, 0, 0, 0, 0, 0, 0, 0}, 206264.80624709636, "arcsec arcsecond"},
    // s^-1 kg m^-1
    {{0, -1, 1, -1, 0, 0, 0, 0}, 0.0001450377, "reyn reynold"},
    {{0, -1, 1, -1, 0, 0, 0, 0}, 1.0, "poiseuille poiseuilles"},
    {{0, -1, 1, -1, 0, 0, 0, 0}, 10.0, "poise poises"},
    {{0, -1, 1, -1, 0, 0, 0, 0}, 1000.0, "centipoise centipoises cp"},
    {{0, -1, 1, -1, 0, 0, 0, 0}, 10000.0, "millipoise millipoises"},
    // s^-1 m
    {{0, -1, 0, 1, 0, 0, 0, 0}, 1.94384449244061, "knot knots"},
    {{0, -1, 0, 1, 0, 0, 0, 0}, 2.2369362920544, "mph"},
    {{0, -1, 0, 1, 0, 0, 0, 0}, 3.280839895, "fps"},
    {{0, -1, 0, 1, 0, 0, 0, 0}, 3.6, "kph"},
    {{0, -1, 0, 1, 0, 0, 0, 0}, 196.8503937, "fpm"},
    // m^2
    {{0, 0, 0, 2, 0, 0, 0, 0}, 0.0001, "hectare hectares"},
    {{0, 0, 0, 2, 0, 0, 0, 0}, 0.000247105381467165, "acre acres"},
    {{0, 0, 0, 2, 0, 0, 0, 0}, 1013253354000.0, "D Darcies Darcy darcies darcy"},
    {{0, 0, 0, 2, 0, 0, 0, 0}, 1013253354000000.0, "mD millidarcies millidarcy"},
    // s^2 kg^-1 m^-2 C^2
    {{0, 2, -1, -2, 0, 0, 0, 2}, 1.0, "F Farad Farads farad farads"},
    {{0, 2, -1, -2, 0, 0, 0, 2}, 1000.0, "mF millifarad millifarads"},
    {{0, 2, -1, -2, 0, 0, 0, 2}, 1000000.0, "microfarad microfarads"},
    {{0, 2, -1, -2, 0, 0, 0, 2}, 1000000000.0, "nanofarad nanofarads"},
    // s^-1 C
    {{0, -1, 0, 0, 0, 0, 0, 1}, 1.0, "A Amp Amps amp ampere amperes amps"},
    {{0, -1, 0, 0, 0, 0, 0, 1}, 1000.0, "mA milliamp milliamps"},
    {{0, -1, 0, 0, 0, 0, 0, 1}, 1000000.0, "microamp microamps"},
    // s^-1 kg C^-1
    {{0, -1, 1, 0, 0, 0, 0, -1}, 1.0, "Tesla Teslas tesla teslas"},
    {{0, -1, 1, 0, 0, 0, 0, -1}, 1000.0, "mT"},
    {{0, -1, 1, 0, 0, 0, 0, -1}, 10000.0, "Gauss Gausses gauss gausses"},
    // s^-2 kg m^2 C^-1
    {{0, -2, 1, 2, 0, 0, 0, -1}, 1.0, "V Volt Volts volt volts"},
    {{0, -2, 1, 2, 0, 0, 0, -1}, 1000.0, "mV millivolt millivolts"},
    {{0, -2, 1, 2, 0, 0, 0, -1}, 1000000.0, "microvolt microvolts"},
    // kg m^-3
    {{0, 0, 1, -3, 0, 0, 0, 0}, 1000.0, "ppm"},
    {{0, 0, 1, -3, 0, 0, 0, 0}, 1000000.0, "ppb"},
    {{0, 0, 1, -3, 0, 0, 0, 0}, 1000000000.0, "ppt"},
    // s^-1 kg m^2 C^-1
    {{0, -1, 1, 2, 0, 0, 0, -1}, 1.0, "Wb Weber Webers weber webers"},
    {{0, -1, 1, 2, 0, 0, 0, -1}, 100000000.0, "Maxwell Maxwells maxwell maxwells"},
    // s^-1 m^2
    {{0, -1, 0, 2, 0, 0, 0, 0}, 10.0, "stoke stokes"},
    {{0, -1, 0, 2, 0, 0, 0, 0}, 1000000.0, "centistoke centistokes"},
    // degK
    {{0, 0, 0, 0, 1, 0, 0, 0}, 1.0, "degC degK"},
    {{0, 0, 0, 0, 1, 0, 0, 0}, 1.8, "degF degR"},
    // degKdiff
    {{0, 0, 0, 0, 0, 0, 1, 0}, 1.0, "degCdiff degKdiff"},
    {{0, 0, 0, 0, 0, 0, 1, 0}, 1.8, "degFdiff degRdiff"},
    // mol
    {{0, 0, 0, 0, 0, 1, 0, 0}, 0.001, "kmol"},
    {{0, 0, 0, 0, 0, 1, 0, 0}, 1.0, "mol mole moles"},
    // rad s^-1
    {{1, -1, 0, 0, 0, 0, 0, 0}, 0.15915494309189535, "rps"},
    {{1, -1, 0, 0, 0, 0, 0, 0}, 9.54929658551372, "rpm rpms"},
    // none
    {{0, 0, 0, 0, 0, 0, 0, 0}, 100.0, "% Percent percent"},
    // C
    {{0, 0, 0, 0, 0, 0, 0, 1}, 1.0, "C Coulomb Coulombs coulomb coulombs"},
    // kg m^2 C^-2
    {{0, 0, 1, 2, 0, 0, 0, -2}, 1.0, "H Henries Henry henries henry"},
    // s^-1 m^-1 C
    {{0, -1, 0, -1, 0, 0, 0, 1}, 0.01256637061436, "Oe oersted oersteds"},
    // s^-1 kg m^2 C^-2
    {{0, -1, 1, 2, 0, 0, 0, -2}, 1.0, "Ohm Ohms ohm ohms"},
}};
// clang-format on

} // namespace metrify
