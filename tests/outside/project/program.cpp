// Converts a column of numbers.

#include <array>
#include <iostream>
#include <metrify/metrify.hpp>

int main() {
    constexpr std::array<double, 3> feet = {1, 10, 100};
    std::array<double, 3> metres = {};
    const metrify::plan plan("ft", "m");
    plan.apply(feet, metres);
    for (std::size_t i = 0; i < feet.size(); ++i)
        std::cout << feet[i] << " ft = " << metres[i] << " " << plan.units() << "\n";
}
