#pragma once

// Function blocks of any length, in the language and in C++.

#include <string>

namespace metrify_bench {

/// The arithmetic of each statement: y from x and the previous y in a dozen operations.
inline constexpr const char* statement_text = "(x + y)*0.5 - y/3 + x*(y - 2)/7 + x*0.1";

/// The same of lengths.
inline constexpr const char* statement_with_units = "(x + y)*0.5 - y/3 + x*(y - 2 m)/(7 m) + x*0.1";

inline std::string block_program(std::size_t statements, bool has_units = false) {
    std::string text = has_units ? "x = 1.5 m\ny = 1 m\nbegin\n" : "x = 1.5\ny = 1\nbegin\n";
    for (std::size_t i = 0; i < statements; ++i)
        text.append("y = ").append(has_units ? statement_with_units : statement_text).append("\n");
    return text + "end\n";
}

inline void plain_block(double x, double& y, std::size_t statements) {
    for (std::size_t i = 0; i < statements; ++i)
        y = (x + y) * 0.5 - y / 3 + x * (y - 2) / 7 + x * 0.1;
}

/// Broyden's tridiagonal system; of one variable, a cubic.
inline std::string system_program(std::size_t n) {
    if (n == 1)
        return "begin\nx1 = 2\nf1 = x1^3 - 2*x1 - 5\nend\n";
    std::string text = "begin\n";
    for (std::size_t i = 1; i <= n; ++i)
        text.append("x").append(std::to_string(i)).append(" = -1\n");
    for (std::size_t i = 1; i <= n; ++i) {
        const std::string x = std::to_string(i);
        text.append("f").append(x).append(" = (3 - 2*x").append(x).append(")*x").append(x).append(" + 1");
        if (i > 1)
            text.append(" - x").append(std::to_string(i - 1));
        if (i < n)
            text.append(" - 2*x").append(std::to_string(i + 1));
        text.append("\n");
    }
    return text + "end\n";
}

/// A narrow valley; of one variable, a smooth minimum.
inline std::string valley_program(std::size_t n) {
    if (n == 1)
        return "begin\nx1 = 0\nf1 = exp(x1) - 3*x1\nend\n";
    std::string text = "begin\n";
    for (std::size_t i = 1; i <= n; ++i)
        text.append("x").append(std::to_string(i)).append(" = -1.2\n");
    text.append("f1 = 0");
    for (std::size_t i = 1; i < n; ++i) {
        const std::string a = std::to_string(i);
        text.append(" + 100*(x")
            .append(std::to_string(i + 1))
            .append(" - x")
            .append(a)
            .append("^2)^2 + (1 - x");
        text.append(a).append(")^2");
    }
    return text + "\nend\n";
}

} // namespace metrify_bench
