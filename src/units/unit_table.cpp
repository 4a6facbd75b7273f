#include "units/unit_table.h"

#include "base/perfect_hash.h"

#include <algorithm>

namespace metrify {

namespace {

//                       rad   s  kg   m degK mol degKdiff C
constexpr exponents pressure = {0, -2, 1, -1, 0, 0, 0, 0};
constexpr exponents length = {0, 0, 0, 1, 0, 0, 0, 0};
constexpr exponents volume = {0, 0, 0, 3, 0, 0, 0, 0};
constexpr exponents mass = {0, 0, 1, 0, 0, 0, 0, 0};
constexpr exponents energy = {0, -2, 1, 2, 0, 0, 0, 0};
constexpr exponents force = {0, -2, 1, 1, 0, 0, 0, 0};
constexpr exponents time = {0, 1, 0, 0, 0, 0, 0, 0};
constexpr exponents power = {0, -3, 1, 2, 0, 0, 0, 0};
constexpr exponents frequency = {0, -1, 0, 0, 0, 0, 0, 0};
constexpr exponents angle = {1, 0, 0, 0, 0, 0, 0, 0};
constexpr exponents viscosity = {0, -1, 1, -1, 0, 0, 0, 0};
constexpr exponents speed = {0, -1, 0, 1, 0, 0, 0, 0};
constexpr exponents area = {0, 0, 0, 2, 0, 0, 0, 0};
constexpr exponents capacitance = {0, 2, -1, -2, 0, 0, 0, 2};
constexpr exponents current = {0, -1, 0, 0, 0, 0, 0, 1};
constexpr exponents flux_density = {0, -1, 1, 0, 0, 0, 0, -1};
constexpr exponents voltage = {0, -2, 1, 2, 0, 0, 0, -1};
constexpr exponents density = {0, 0, 1, -3, 0, 0, 0, 0};
constexpr exponents magnetic_flux = {0, -1, 1, 2, 0, 0, 0, -1};
constexpr exponents kinematic_viscosity = {0, -1, 0, 2, 0, 0, 0, 0};
constexpr exponents temperature = {0, 0, 0, 0, 1, 0, 0, 0};
constexpr exponents temperature_difference = {0, 0, 0, 0, 0, 0, 1, 0};
constexpr exponents amount = {0, 0, 0, 0, 0, 1, 0, 0};
constexpr exponents angular_speed = {1, -1, 0, 0, 0, 0, 0, 0};
constexpr exponents dimensionless = {0, 0, 0, 0, 0, 0, 0, 0};
constexpr exponents charge = {0, 0, 0, 0, 0, 0, 0, 1};
constexpr exponents inductance = {0, 0, 1, 2, 0, 0, 0, -2};
constexpr exponents magnetic_field = {0, -1, 0, -1, 0, 0, 0, 1};
constexpr exponents resistance = {0, -1, 1, 2, 0, 0, 0, -2};
struct unit_row {
    const exponents& dim;
    double factor;
    std::string_view spellings;
};

// Intentional: all digits, and rows that look like errors. Pounds and ounces are forces, `Curie` has the
// reciprocal factor, a nautical mile is three times too long, `mpa` is a thousandth of a pascal, `ppm` is a
// mass per volume, `fps` has fewer digits than `ft`.
constexpr unit_row rows[] = {
    // pressure: s^-2 kg m^-1
    {pressure, 1.45037739690094e-13, "Gpsi"},
    {pressure, 1.45037739690094e-10, "Mpsi"},
    {pressure, 1e-09, "GPa Gpa"},
    {pressure, 1.45037739690094e-07, "ksi"},
    {pressure, 1e-06, "MPa Mpa"},
    {pressure, 9.86923266716013e-06, "atm atmosphere"},
    {pressure, 1e-05, "bar bars"},
    {pressure, 0.000145037739690094, "psi"},
    {pressure, 0.000296133971008484, "inHg"},
    {pressure, 0.000750061505043414, "cmHg"},
    {pressure, 0.001, "kPa kpa"},
    {pressure, 0.00401864651985211, "inWater"},
    {pressure, 0.00750061505043414, "Torr Torrs mmHg torr torrs"},
    {pressure, 0.01, "millibar millibars"},
    {pressure, 0.0101974428892211, "cmWater"},
    {pressure, 0.0208854345154, "psf"},
    {pressure, 1.0, "Pa Pascal Pascals"},
    {pressure, 1000.0, "mPa mpa"},
    // length: m
    {length, 1.05702099772212e-16, "lightyear lightyears"},
    {length, 0.000179985601, "NauticalMile Nmile"},
    {length, 0.000179985601151908, "league"},
    {length, 0.000621371192237334, "mi mile miles"},
    {length, 0.001, "kilometer kilometers km"},
    {length, 0.546806649168854, "fathom fathoms"},
    {length, 1.0, "m meter meters"},
    {length, 1.09361329833771, "yard yards yd"},
    {length, 2.18722, "cubit cubits"},
    {length, 3.28083989501312, "feet foot ft"},
    {length, 39.3700787401575, "in inch inches"},
    {length, 100.0, "centimeter centimeters cm"},
    {length, 1000.0, "millimeter millimeters mm"},
    {length, 39370.0787401575, "mil"},
    {length, 1000000.0, "micrometer micrometers micron microns um"},
    {length, 1650763.73, "KrWavelength"},
    {length, 1000000000.0, "nanometer nanometers nm"},
    {length, 10000000000.0, "angstrom"},
    // volume: m^3
    {volume, 0.275895838616164, "cord cords"},
    {volume, 1.0, "stere"},
    {volume, 6.28981056977507, "barrel barrels"},
    {volume, 28.3775932584017, "bushel bushels"},
    {volume, 113.510373033607, "peck pecks"},
    {volume, 264.172051242, "gal gallon gallons"},
    {volume, 423.776000657863, "boardfoot"},
    {volume, 1000.0, "L l liter liters"},
    {volume, 1056.68820496623, "quart quarts"},
    {volume, 2113.37641886519, "pint pints"},
    {volume, 4226.75283773037, "cup cups"},
    {volume, 33814.022701843, "fluidounce fluidounces"},
    {volume, 67628.045403686, "Tablespoon Tablespoons Tbs tablespoon tablespoons"},
    {volume, 202884.136211058, "teaspoon teaspoons tsp"},
    {volume, 1000000.0, "cc mL milliliter milliliters ml"},
    // mass: kg
    {mass, 0.000984206527611061, "ton tons"},
    {mass, 0.001, "Mg tonne"},
    {mass, 0.06852176556, "slug slugs"},
    {mass, 0.15747304441777, "stone stones"},
    {mass, 1.0, "kg kilogram kilograms"},
    {mass, 2.20462262184878, "lbm"},
    {mass, 35.2739619495804, "ozm"},
    {mass, 1000.0, "g gram grams"},
    {mass, 5000.0, "carat carats"},
    {mass, 15432.3583529414, "grain grains"},
    {mass, 1000000.0, "mg milligram milligrams"},
    {mass, 1000000000.0, "microgram micrograms ug"},
    {mass, 1000000000000.0, "nanogram nanograms ng"},
    // energy: s^-2 kg m^2
    {energy, 1e-09, "GJ"},
    {energy, 1e-06, "MJ"},
    {energy, 0.000238845897, "kcal kcals"},
    {energy, 0.000947817078, "BTU BritishThermalUnit BritishThermalUnits Btu Btus btu btus"},
    {energy, 0.001, "kJ"},
    {energy, 0.238845897, "Calorie Calories cal calorie calories cals"},
    {energy, 1.0, "J Joule Joules joule joules"},
    {energy, 1000.0, "mJ"},
    {energy, 10000000.0, "erg ergs"},
    {energy, 6.241506479963234e+18, "ElectronVolt eV"},
    // force: s^-2 kg m
    {force, 1e-06, "MN"},
    {force, 0.000224808943099711, "kip kips"},
    {force, 0.001, "kN"},
    {force, 0.101971600501374, "kgf"},
    {force, 0.224808943099711, "lb lbf lbs pound pounds"},
    {force, 1.0, "N Newton Newtons newton newtons"},
    {force, 3.59694310193539, "ounce ounces oz ozf"},
    {force, 100000.0, "dyne dynes"},
    // time: s
    {time, 3.168876487e-08, "year years yr"},
    {time, 1.65343916e-06, "week weeks"},
    {time, 1.15740740740741e-05, "day days"},
    {time, 0.0002777777777778, "hour hours"},
    {time, 0.000277777777778, "hr"},
    {time, 0.01666666666667, "min minute minutes"},
    {time, 1.0, "s sec second seconds"},
    {time, 1000.0, "millisecond milliseconds ms msec"},
    // power: s^-3 kg m^2
    {power, 1e-09, "GW"},
    {power, 1e-06, "MW"},
    {power, 0.001, "kW kiloWatt kiloWatts"},
    {power, 0.00134102209244049, "horsepower hp"},
    {power, 1.0, "W Watt Watts watt watts"},
    {power, 1000.0, "mW"},
    // frequency: s^-1
    {frequency, 1e-09, "GBq GHz"},
    {frequency, 1e-06, "MBq MHz"},
    {frequency, 0.001, "kBq kHz"},
    {frequency, 1.0, "Becquerel Bq Hertz Hz becquerel hz"},
    {frequency, 37000000000.0, "Curie curie"},
    // angle: rad
    {angle, 0.15915494309189535, "rev revolution revolutions"},
    {angle, 1.0, "rad radian radians"},
    {angle, 57.29577951308232, "deg degree degrees"},
    {angle, 3437.746770784939, "arcmin arcminute"},
    {angle, 206264.80624709636, "arcsec arcsecond"},
    // viscosity: s^-1 kg m^-1
    {viscosity, 0.0001450377, "reyn reynold"},
    {viscosity, 1.0, "poiseuille poiseuilles"},
    {viscosity, 10.0, "poise poises"},
    {viscosity, 1000.0, "centipoise centipoises cp"},
    {viscosity, 10000.0, "millipoise millipoises"},
    // speed: s^-1 m
    {speed, 1.94384449244061, "knot knots"},
    {speed, 2.2369362920544, "mph"},
    {speed, 3.280839895, "fps"},
    {speed, 3.6, "kph"},
    {speed, 196.8503937, "fpm"},
    // area: m^2
    {area, 0.0001, "hectare hectares"},
    {area, 0.000247105381467165, "acre acres"},
    {area, 1013253354000.0, "D Darcies Darcy darcies darcy"},
    {area, 1013253354000000.0, "mD millidarcies millidarcy"},
    // capacitance: s^2 kg^-1 m^-2 C^2
    {capacitance, 1.0, "F Farad Farads farad farads"},
    {capacitance, 1000.0, "mF millifarad millifarads"},
    {capacitance, 1000000.0, "microfarad microfarads"},
    {capacitance, 1000000000.0, "nanofarad nanofarads"},
    // current: s^-1 C
    {current, 1.0, "A Amp Amps amp ampere amperes amps"},
    {current, 1000.0, "mA milliamp milliamps"},
    {current, 1000000.0, "microamp microamps"},
    // flux density: s^-1 kg C^-1
    {flux_density, 1.0, "Tesla Teslas tesla teslas"},
    {flux_density, 1000.0, "mT"},
    {flux_density, 10000.0, "Gauss Gausses gauss gausses"},
    // voltage: s^-2 kg m^2 C^-1
    {voltage, 1.0, "V Volt Volts volt volts"},
    {voltage, 1000.0, "mV millivolt millivolts"},
    {voltage, 1000000.0, "microvolt microvolts"},
    // density: kg m^-3
    {density, 1000.0, "ppm"},
    {density, 1000000.0, "ppb"},
    {density, 1000000000.0, "ppt"},
    // magnetic flux: s^-1 kg m^2 C^-1
    {magnetic_flux, 1.0, "Wb Weber Webers weber webers"},
    {magnetic_flux, 100000000.0, "Maxwell Maxwells maxwell maxwells"},
    // kinematic viscosity: s^-1 m^2
    {kinematic_viscosity, 10.0, "stoke stokes"},
    {kinematic_viscosity, 1000000.0, "centistoke centistokes"},
    // temperature: degK
    {temperature, 1.0, "degC degK"},
    {temperature, 1.8, "degF degR"},
    // temperature difference: degKdiff
    {temperature_difference, 1.0, "degCdiff degKdiff"},
    {temperature_difference, 1.8, "degFdiff degRdiff"},
    // amount: mol
    {amount, 0.001, "kmol"},
    {amount, 1.0, "mol mole moles"},
    // angular speed: rad s^-1
    {angular_speed, 0.15915494309189535, "rps"},
    {angular_speed, 9.54929658551372, "rpm rpms"},
    // dimensionless
    {dimensionless, 100.0, "% Percent percent"},
    // charge: C
    {charge, 1.0, "C Coulomb Coulombs coulomb coulombs"},
    // inductance: kg m^2 C^-2
    {inductance, 1.0, "H Henries Henry henries henry"},
    // magnetic field: s^-1 m^-1 C
    {magnetic_field, 0.01256637061436, "Oe oersted oersteds"},
    // resistance: s^-1 kg m^2 C^-2
    {resistance, 1.0, "Ohm Ohms ohm ohms"},
};

constexpr std::size_t unit_count = 375;

constexpr std::array<unit_entry, unit_count> make_units() {
    std::array<unit_entry, unit_count> units = {};
    std::size_t count = 0;
    for (const unit_row& row : rows) {
        std::string_view rest = row.spellings;
        while (!rest.empty()) {
            const std::string_view name = rest.substr(0, rest.find(' '));
            units[count++] = {name, row.factor, row.dim};
            rest.remove_prefix(std::min(name.size() + 1, rest.size()));
        }
    }
    return units;
}

constexpr std::array<unit_entry, unit_count> units = make_units();
static_assert(!units.back().name.empty(), "all rows are there");

constexpr std::array<std::uint64_t, unit_count> make_hashes() {
    std::array<std::uint64_t, unit_count> hashes = {};
    std::transform(units.begin(), units.end(), hashes.begin(),
                   [](const unit_entry& unit) { return name_hash(unit.name); });
    return hashes;
}

constexpr perfect_hash<unit_count, 1024, 256> unit_hash(make_hashes());

constexpr std::size_t longest_name =
    std::max_element(units.begin(), units.end(), [](const unit_entry& a, const unit_entry& b) {
        return a.name.size() < b.name.size();
    })->name.size();

} // namespace

std::span<const unit_entry> all_units() {
    return units;
}

const unit_entry* find_unit(cursor& expptr) {
    // Names consist of name characters, except for `%`.
    const char* const start = expptr.at;
    const char* p = start;
    std::uint64_t hash = name_hash_seed;
    if (*p == '%')
        hash = add_to_name_hash(hash, *p++);
    while (is_name_char(*p) && p != expptr.stop) {
        hash = add_to_name_hash(hash, *p++);
        if (static_cast<std::size_t>(p - start) > longest_name)
            return nullptr;
    }
    const std::uint16_t place = unit_hash.find(hash);
    if (place == unit_hash.none ||
        units[place].name != std::string_view(start, static_cast<std::size_t>(p - start)))
        return nullptr;
    expptr.at = p;
    return &units[place];
}

} // namespace metrify
