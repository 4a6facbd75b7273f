#include "cli/lookup/unit_document.h"

#include "cli/lookup/everyday_tables.h"
#include "cli/lookup/unit_list.h"

namespace metrify {

namespace {

constexpr const char* introduction = R"(# The units

All 375 names of the vocabulary by quantity, with the value of one unit in base units, and the everyday units by subject,
with their sources, are at the end of this page, which `metrify units --markdown` writes. Names are case-sensitive: `Pa`
is a pascal and `pa` is undefined.

## Looking a unit up

`metrify units TEXT` finds units by a part of their name in any case, and by what people call the quantity:

    $ build/release/metrify units psi
    unit                  value of one  in base units       quantity
    Gpsi                  6.89476e+12   kg / m s^2          pressure
    Mpsi                  6.89476e+09   kg / m s^2          pressure
    psi                   6894.76       kg / m s^2          pressure

    $ build/release/metrify units viscosity
    unit                  value of one  in base units       quantity
    reyn                  6894.76       kg / m s            viscosity
    reynold               6894.76       kg / m s            viscosity
    poiseuille            1             kg / m s            viscosity
    poiseuilles           1             kg / m s            viscosity
    poise                 0.1           kg / m s            viscosity
    poises                0.1           kg / m s            viscosity
    centipoise            0.001         kg / m s            viscosity
    centipoises           0.001         kg / m s            viscosity
    cp                    0.001         kg / m s            viscosity
    millipoise            0.0001        kg / m s            viscosity
    millipoises           0.0001        kg / m s            viscosity

`--like` lists the units of the same dimension as a unit expression:

    $ build/release/metrify units --like lbf/in
    metrify: no unit has the dimension of `lbf/in`, kg / s^2

    $ build/release/metrify units --like 'N/A m'
    unit                  value of one  in base units       quantity
    Tesla                 1             kg / s C            magnetic flux density
    Teslas                1             kg / s C            magnetic flux density
    tesla                 1             kg / s C            magnetic flux density
    teslas                1             kg / s C            magnetic flux density
    mT                    0.001         kg / s C            magnetic flux density
    Gauss                 0.0001        kg / s C            magnetic flux density
    Gausses               0.0001        kg / s C            magnetic flux density
    gauss                 0.0001        kg / s C            magnetic flux density
    gausses               0.0001        kg / s C            magnetic flux density

If nothing is found, the nearest names are shown, and the exit status is 1:

    $ build/release/metrify units fathon
    metrify: no unit or quantity is called `fathon`; the nearest: `fathom`, `fathoms`

## Everyday units and your own

The vocabulary has no `kWh`, `km/h` or `mpg`. `--everyday` adds such units to a conversion, a program or a session:

    $ build/release/metrify convert --everyday 30 mpg km/L
    12.7543 km/L

They are defined in the language itself: `everyday.units` is a file of `DefUnit` lines, each with its source, which is
installed in `share/metrify`. [All of them](#all-everyday-units) are listed below. `--units FILE` adds the units of a file
of your own:

    $ printf 'DefUnit(pallet, 480 kg)  # our euro pallet\n' > build/own.units; build/release/metrify convert --units build/own.units 12 pallet tonne
    5.76 tonne

A session also loads `~/.config/metrify/units` (or `metrify/units` in the folder that `XDG_CONFIG_HOME` names).
`metrify run` and `metrify convert` load only what their options name, so a program gives the same listing everywhere.
`metrify units` lists the added units if it is given the same options.

## Surprises

Some units are not what one may expect. Programs rely on them as they are.

`lb`, `pound` and `oz` are forces. The masses are `lbm` and `ozm`:

    $ build/release/metrify convert 180 lbm kg
    81.6466 kg
    $ build/release/metrify convert 180 lb N
    800.68 N

`ton` is the long ton of about 1016 kg, and `tonne` has 1000 kg. The short ton is `ton_US` of the everyday units.

    $ build/release/metrify convert 1 ton kg
    1016.05 kg

`NauticalMile` and `Nmile` are three nautical miles, the length of a league. `nmi` of the everyday units has 1852 m.
`knot` is the usual one.

    $ build/release/metrify convert 1 NauticalMile km
    5.556 km

`Curie` is the reciprocal of a curie. `Ci` of the everyday units is the usual one.

    $ build/release/metrify convert 1 Curie Bq
    2.7027e-11 Bq

`stoke` is a thousand stokes: 0.1 instead of 0.0001 square meters per second. `centistoke` is the usual one, and so is
`St` of the everyday units.

    $ build/release/metrify convert 1 stoke m^2/s
    0.1 m^2/s

`ppm`, `ppb` and `ppt` are masses per volume: a `ppm` is a gram per cubic meter. As ratios write 1e-6, 1e-9 and 1e-12.

    $ build/release/metrify convert 1 ppm g/m^3
    1 g/m^3

Angles count as plain numbers, a radian as 1. So `Hz` is not a revolution per second, which is `rev/s`:

    $ build/release/metrify convert 3000 rpm Hz
    314.159 Hz
    $ build/release/metrify convert 3000 rpm rev/s
    50 rev/s

`degC` and `degF` are points on a scale. A difference of two of them is shown in `degCdiff` or `degFdiff`:

    $ printf '20 degC - 10 degC; degC\n20 degC - 10 degC; degCdiff\n' | build/release/metrify run
    [  1 ] 20 degC - 10 degC; degC
            = -263.15 degC

    [  2 ] 20 degC - 10 degC; degCdiff
            = 10 degCdiff

`C` is the coulomb, `F` the farad, `H` the henry, `D` the darcy, `Mg` a megagram and `mg` a milligram. `mpa` is the same
as `mPa`, a thousandth of a pascal. `Calorie` is the small calorie, like `cal`; that of food is `kcal`. `year` is the
tropical year of 365.2422 days. `inHg` is a column of mercury at 60 degF, 0.3 % less than at 0 degC. `lightyear` is
2e-5 shorter than it should be.

## All units
)";

constexpr const char* about_everyday_units = R"(
## All everyday units

A unit that is another spelling, or is made of other units, has its definition instead of a source. The sources are:

)";

} // namespace

std::string unit_document() {
    return introduction + unit_tables() + about_everyday_units + everyday_tables();
}

} // namespace metrify
