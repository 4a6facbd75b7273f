#include "cli/lookup/quantities.h"

#include "cli/lookup/unit_text.h"

namespace metrify {

namespace {

constexpr quantity quantities[] = {
    {"length, distance, height, width, wavelength", "m", "km, mi, m, yd, ft, in, cm, mm, um, nm"},
    {"area, surface, permeability", "m^2", "km^2, mi^2, hectare, acre, m^2, ft^2, in^2, cm^2, mm^2"},
    {"volume, capacity", "m^3", "m^3, ft^3, gal, L, pint, fluidounce, in^3, mL, uL"},
    {"mass, weight", "kg", "tonne, ton, kg, lbm, ozm, g, mg, ug"},
    {"time, duration, period", "s", "year, week, day, hr, min, s, ms, us, ns"},
    {"speed, velocity", "m/s", "km/hr, mph, knot, m/s, ft/s, ft/min"},
    {"acceleration", "m/s^2", "m/s^2, ft/s^2, gee, cm/s^2"},
    {"force, weight, load", "N", "MN, kN, kip, lbf, kgf, N, ozf, mN, dyne"},
    {"pressure, stress, modulus, vacuum", "Pa",
     "GPa, ksi, MPa, atm, bar, psi, kPa, mbar, inHg, mmHg, inWater, Pa"},
    {"energy, work, heat, torque, moment", "J",
     "GWh, GJ, MWh, kWh, MJ, BTU, kcal, kJ, Wh, cal, ft lbf, N m, J, mJ, erg, eV"},
    {"power, heat flow", "W", "GW, MW, hp, kW, BTU/hr, W, mW, uW"},
    {"temperature", "degK", "degC, degF, degK, degR"},
    {"temperature difference", "degKdiff", "degCdiff, degFdiff"},
    {"frequency, rate, radioactivity", "Hz", "GHz, MHz, kHz, Hz, /min, /hr"},
    {"angle", "rad", "rev, rad, deg, mrad, arcmin, arcsec"},
    {"angular speed, rotation, speed of rotation", "rad/s", "rpm, rev/s, rad/s, deg/s"},
    {"density, concentration", "kg/m^3", "g/cm^3, kg/L, kg/m^3, lbm/ft^3, lbm/gal, lbm/in^3"},
    {"flow, volume flow, discharge", "m^3/s", "m^3/s, ft^3/s, L/s, m^3/hr, gal/min, L/min, ft^3/min"},
    {"mass flow", "kg/s", "kg/s, tonne/hr, kg/hr, lbm/s, lbm/hr, g/s"},
    {"viscosity, dynamic viscosity", "Pa s", "Pa s, poise, centipoise, reyn"},
    {"kinematic viscosity, diffusivity", "m^2/s", "m^2/s, cm^2/s, ft^2/s, mm^2/s, cSt"},
    {"fuel economy, fuel consumption", "/m^2", "mi/gal, km/L, mpg_UK"},
    {"charge", "C", "Ah, mAh, C, mC, uC, nC"},
    {"current", "A", "kA, A, mA, microamp, nA"},
    {"voltage, potential", "V", "MV, kV, V, mV, microvolt"},
    {"resistance, impedance", "ohm", "Mohm, kohm, ohm, mohm"},
    {"conductance", "/ohm", "S, mS, uS"},
    {"capacitance", "F", "F, mF, microfarad, nanofarad, pF"},
    {"inductance", "H", "H, mH, uH, nH"},
    {"magnetic flux", "Wb", "Wb, mWb, Maxwell"},
    {"magnetic flux density, magnetic field", "Tesla", "Tesla, mT, uT, gauss"},
    {"magnetic field strength", "A/m", "A/m, Oe"},
    {"electric field", "V/m", "kV/mm, V/mm, kV/m, V/in, V/m"},
    {"amount of substance", "mol", "kmol, mol, mmol, umol"},
    {"heat capacity, entropy", "J/degK", "kJ/degK, J/degK, BTU/degR"},
    {"specific heat", "J/kg degK", "kJ/kg degK, kcal/kg degK, BTU/lbm degR, J/kg degK"},
    {"specific energy, dose", "J/kg", "kWh/kg, MJ/kg, kJ/kg, BTU/lbm, kcal/kg, J/kg, mJ/kg"},
    {"thermal conductivity", "W/m degK", "W/m degK, BTU/hr ft degR"},
    {"heat transfer coefficient", "W/m^2 degK", "kW/m^2 degK, W/m^2 degK, BTU/hr ft^2 degR"},
    {"heat flux, irradiance, intensity", "W/m^2", "kW/m^2, W/m^2, W/cm^2, BTU/hr ft^2"},
    {"stiffness, surface tension", "N/m", "kN/m, N/mm, lbf/in, lbf/ft, N/m, dyne/cm"},
    {"specific weight", "N/m^3", "kN/m^3, lbf/ft^3, N/m^3"},
    {"momentum, impulse", "kg m/s", "kg m/s, lbf s"},
    {"moment of inertia", "kg m^2", "kg m^2, lbm ft^2, slug ft^2, g cm^2"},
    {"number, ratio, fraction", "", "%"},
};

} // namespace

std::span<const quantity> all_quantities() {
    return quantities;
}

const quantity* find_quantity(const exponents& dim) {
    for (const quantity& row : quantities) {
        const std::optional<unit_scale> scale = read_unit_text(row.unit);
        if (scale && same_units_strict(scale->dim, dim))
            return &row;
    }
    return nullptr;
}

std::string_view quantity_name(const exponents& dim) {
    const quantity* found = find_quantity(dim);
    return found == nullptr ? std::string_view() : split_list(found->names).front();
}

std::vector<std::string_view> split_list(std::string_view text) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t comma = text.find(',');
        std::string_view part = text.substr(0, comma);
        part.remove_prefix(std::min(part.find_first_not_of(' '), part.size()));
        parts.push_back(part);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    return parts;
}

} // namespace metrify
