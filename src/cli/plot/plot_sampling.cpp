#include "cli/plot/plot_sampling.h"

#include "cli/plot/block_curve.h"
#include "conversion/conversion_plan.h"
#include "language/driver.h"
#include "language/unit_definitions.h"
#include "machine/calculator.h"
#include "machine/func_block.h"
#include "machine/variables.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace metrify {

namespace {

// Between units that may both be missing. Returns an empty text, or a message.
std::string plan_between(const std::string& from, const std::string& to, conversion_plan& plan) {
    std::string message;
    if (!from.empty() || !to.empty())
        make_conversion_plan(from, to, plan, message);
    return message;
}

std::string label_of(const std::string& variable, const std::string& units) {
    return units.empty() ? variable : variable + " [" + units + "]";
}

bool has_values(const plot_series& series) {
    return std::any_of(
        series.values.begin(), series.values.end(), [](double y) { return std::isfinite(y); });
}

// True if the variable exists after the program.
bool is_known(const std::string& variable) {
    return find_var(variable) != nullptr;
}

std::string unknown_variable(const std::string& variable) {
    return "the program has no variable '" + variable + "'\n";
}

// The reason why the range does not fit its variable, or an empty text.
std::string check_range(const plot_range& over) {
    if (!is_known(over.variable))
        return unknown_variable(over.variable);
    conversion_plan ignored;
    if (std::string message = plan_between(over.units, {}, ignored); !message.empty())
        return message;
    const std::string base = base_units_of(over.variable);
    const std::string of_a_number = over.units.empty() ? "" : "%";
    if (plan_between(over.units, base.empty() ? of_a_number : base, ignored).empty())
        return {};
    return (over.units.empty() ? "a range without units" : "'" + over.units + "'") + " does not fit '" +
           over.variable + "', which is " + (base.empty() ? "a plain number" : "in " + base) + '\n';
}

/// Fills the values of the data, whose labels are set.
std::string fill(const block_curve& curve, const plot_range& over, const conversion_plan& to_base,
                 const std::vector<conversion_plan>& from_base, std::size_t points, plot_data& data) {
    std::string first_message;
    std::vector<double> values;
    for (std::size_t i = 0; i < points; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(points - 1);
        const double x = over.from + share * (over.to - over.from);
        const std::string message = curve.evaluate(to_base(x), values);
        if (first_message.empty())
            first_message = message;
        data.x.values.push_back(x);
        for (std::size_t k = 0; k < data.y.size(); ++k)
            data.y[k].values.push_back(message.empty() ? from_base[k](values[k])
                                                       : std::numeric_limits<double>::quiet_NaN());
    }
    if (std::any_of(data.y.begin(), data.y.end(), has_values))
        return {};
    return first_message.empty() ? "The block has no finite values in this range.\n" : first_message;
}

} // namespace

std::string plot_data::y_label() const {
    std::string label;
    for (const plot_series& series : y)
        label += (label.empty() ? "" : ", ") + series.label;
    return label;
}

std::string sample_block(const std::string& program, const std::string& unit_definitions,
                         const plot_range& over, const std::vector<plot_request>& of, std::size_t points,
                         plot_data& data) {
    const auto own = std::make_unique<calculator>();
    const calculator_scope scope(*own);
    define_units(unit_definitions);
    run_further_lines(program.c_str());
    block_curve curve;
    std::vector<std::string> dependents;
    dependents.reserve(of.size());
    for (const plot_request& request : of)
        dependents.push_back(request.variable);
    if (!is_block_closed())
        return "the program has no function block, from begin to end\n";
    if (const std::string reason = check_range(over); !reason.empty())
        return "--over: " + reason;
    for (const std::string& variable : dependents)
        if (!is_known(variable))
            return "--of: " + unknown_variable(variable);
    if (std::string message = curve.bind(over.variable, dependents); !message.empty())
        return message;

    conversion_plan to_base;
    plan_between(over.units, base_units_of(over.variable), to_base);
    data.x.label = label_of(over.variable, over.units);
    std::vector<conversion_plan> from_base(of.size());
    for (std::size_t k = 0; k < of.size(); ++k) {
        std::string message = plan_between(base_units_of(of[k].variable), of[k].units, from_base[k]);
        if (!message.empty())
            return "--of: " + message;
        data.y.push_back({label_of(of[k].variable, from_base[k].units), {}});
    }
    return fill(curve, over, to_base, from_base, points, data);
}

} // namespace metrify
