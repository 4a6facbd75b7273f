#include "host/formula/formula_evaluator.h"

#include "host/sheet/coercion.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

namespace metrify::host {

namespace {

using Arguments = std::vector<CellValue>;

constexpr double kLongestText = kMaxCellText;

CellValue Finite(double number) {
    return std::isfinite(number) ? CellValue(number) : CellValue(CellError{xlerrNum});
}

// ---- Built-in functions of the host

CellValue Sum(const Arguments& arguments) {
    double sum = 0.0;
    for (const CellValue& argument : arguments) {
        const auto* array = argument.As<CellArray>();
        for (const CellValue& cell : array ? array->cells : Arguments{argument}) {
            if (cell.Is<CellError>())
                return cell;
            // In an array, only numbers are added up.
            CellValue number = array && !cell.Is<double>() ? CellValue(0.0) : ToNumberValue(cell);
            if (number.Is<CellError>())
                return number;
            sum += *number.As<double>();
        }
    }
    return Finite(sum);
}

// The cell at a row and a column of an array, both counted from 1; a single index selects a cell of a vector.
CellValue Index(const Arguments& arguments) {
    const auto* given = arguments[0].As<CellArray>();
    const CellArray array = given ? *given : RowOf({arguments[0]});
    const CellValue first = ToIntegerValue(arguments[1], 1, kLongestText);
    const CellValue second =
        arguments.size() > 2 ? ToIntegerValue(arguments[2], 1, kLongestText) : CellValue(1);
    if (!first.Is<std::int32_t>() || !second.Is<std::int32_t>())
        return CellError{xlerrValue};
    std::int32_t row = *first.As<std::int32_t>() - 1;
    std::int32_t column = *second.As<std::int32_t>() - 1;
    if (arguments.size() == 2 && array.rows == 1)
        std::swap(row, column);
    return row < array.rows && column < array.columns ? array.At(row, column)
                                                      : CellValue(CellError{xlerrRef});
}

CellValue Repeat(const Arguments& arguments) {
    const CellValue text = ToTextValue(arguments[0]);
    const CellValue count = ToIntegerValue(arguments[1], 0, kLongestText);
    if (!text.Is<std::u16string>() || !count.Is<std::int32_t>())
        return CellError{xlerrValue};
    const auto& once = *text.As<std::u16string>();
    const std::int32_t times = *count.As<std::int32_t>();
    if (static_cast<double>(once.size()) * times > kLongestText)
        return CellError{xlerrValue};
    std::u16string repeated;
    for (std::int32_t i = 0; i < times; ++i)
        repeated += once;
    return repeated;
}

CellValue Character(const Arguments& arguments) {
    CellValue code = ToIntegerValue(arguments[0], 1, 255);
    if (const auto* unit = code.As<std::int32_t>())
        return std::u16string(1, static_cast<char16_t>(*unit));
    return code;
}

CellValue NotAvailable(const Arguments&) {
    return CellError{xlerrNA};
}

struct BuiltIn {
    std::u16string_view name;
    std::size_t min_arguments;
    std::size_t max_arguments;
    CellValue (*call)(const Arguments&);
};

constexpr BuiltIn built_ins[] = {
    {u"SUM", 1, 30, Sum},       {u"INDEX", 2, 3, Index},     {u"REPT", 2, 2, Repeat},
    {u"CHAR", 1, 1, Character}, {u"NA", 0, 0, NotAvailable},
};

// ---- Operators

// The value that an empty cell has when it is compared with a value of another kind.
CellValue EmptyAs(const CellValue& other) {
    if (other.Is<std::u16string>())
        return u"";
    return other.Is<bool>() ? CellValue(false) : CellValue(0.0);
}

CellValue Compare(const std::u16string& symbol, const CellValue& left, const CellValue& right) {
    if (left.Is<EmptyCell>() && !right.Is<EmptyCell>())
        return Compare(symbol, EmptyAs(right), right);
    if (right.Is<EmptyCell>() && !left.Is<EmptyCell>())
        return Compare(symbol, left, EmptyAs(left));
    // Numbers sort before texts, and texts before booleans.
    const auto rank = [](const CellValue& value) {
        return value.Is<bool>() ? 2 : value.Is<std::u16string>() ? 1 : 0;
    };
    int order = rank(left) - rank(right);
    if (order == 0 && left.Is<std::u16string>()) {
        if (!EqualIgnoringCase(*left.As<std::u16string>(), *right.As<std::u16string>()))
            order = *left.As<std::u16string>() < *right.As<std::u16string>() ? -1 : 1;
    } else if (order == 0) {
        const double l = *ToNumberValue(left).As<double>();
        const double r = *ToNumberValue(right).As<double>();
        order = (l > r) - (l < r);
    }
    if (symbol == u"=")
        return order == 0;
    if (symbol == u"<>")
        return order != 0;
    if (symbol == u"<")
        return order < 0;
    if (symbol == u">")
        return order > 0;
    return symbol == u"<=" ? order <= 0 : order >= 0;
}

CellValue Calculate(char16_t symbol, double left, double right) {
    switch (symbol) {
    case u'+':
        return Finite(left + right);
    case u'-':
        return Finite(left - right);
    case u'*':
        return Finite(left * right);
    case u'/':
        return right == 0.0 ? CellValue(CellError{xlerrDiv0}) : Finite(left / right);
    default:
        return left == 0.0 && right == 0.0 ? CellValue(CellError{xlerrNum}) : Finite(std::pow(left, right));
    }
}

CellValue Infix(const std::u16string& symbol, const CellValue& left_value, const CellValue& right_value) {
    const CellValue& left = FirstCell(left_value);
    const CellValue& right = FirstCell(right_value);
    for (const CellValue* operand : {&left, &right})
        if (operand->Is<CellError>())
            return *operand;
    if (symbol == u"&") {
        const CellValue head = ToTextValue(left);
        const CellValue tail = ToTextValue(right);
        return *head.As<std::u16string>() + *tail.As<std::u16string>();
    }
    if (symbol.find_first_of(u"=<>") != symbol.npos)
        return Compare(symbol, left, right);
    CellValue left_number = ToNumberValue(left);
    CellValue right_number = ToNumberValue(right);
    if (left_number.Is<CellError>())
        return left_number;
    if (right_number.Is<CellError>())
        return right_number;
    return Calculate(symbol.front(), *left_number.As<double>(), *right_number.As<double>());
}

class Evaluator {
  public:
    explicit Evaluator(EvaluationContext& context) : context_(context) {}

    // The value of a node; a reference gives the value of its cells.
    CellValue Value(const FormulaNode& node) {
        CellValue value = ValueOrReference(node);
        if (const auto* reference = value.As<Reference>())
            return context_.ValueOf(*reference);
        return value;
    }

  private:
    CellValue ValueOrReference(const FormulaNode& node) {
        switch (node.kind) {
        case NodeKind::value:
            return node.value;
        case NodeKind::missing:
            return MissingArgument{};
        case NodeKind::reference:
            return MakeReference(node);
        case NodeKind::name:
            return CellError{xlerrName};
        case NodeKind::call:
            return Call(node);
        case NodeKind::infix:
            return Infix(node.text, Value(node.children[0]), Value(node.children[1]));
        default:
            return Scaled(node);
        }
    }

    // A sign or a percent mark.
    CellValue Scaled(const FormulaNode& node) {
        CellValue operand = Value(node.children[0]);
        if (node.text == u"+")
            return operand;
        CellValue number = ToNumberValue(operand);
        if (const auto* digits = number.As<double>())
            return node.text == u"%" ? *digits / 100.0 : -*digits;
        return number;
    }

    CellValue MakeReference(const FormulaNode& node) {
        const IDSHEET sheet = context_.SheetOf(node.qualifier);
        if (sheet == 0)
            return CellError{xlerrRef};
        const CellPosition first = node.children.empty() ? node.cell : node.children[0].cell;
        const CellPosition last = node.children.empty() ? node.cell : node.children[1].cell;
        const auto [top, bottom] = std::minmax(first.row, last.row);
        const auto [left, right] = std::minmax(first.column, last.column);
        return Reference{sheet, {{top, bottom, left, right}}, node.qualifier.empty()};
    }

    CellValue Call(const FormulaNode& node) {
        const auto* built_in =
            std::find_if(std::begin(built_ins), std::end(built_ins), [&node](const BuiltIn& function) {
                return EqualIgnoringCase(function.name, node.text);
            });
        Arguments arguments;
        for (const FormulaNode& child : node.children)
            arguments.push_back(built_in != std::end(built_ins) ? Value(child) : ValueOrReference(child));
        if (built_in == std::end(built_ins))
            return context_.CallRegistered(node.text, arguments);
        if (arguments.size() < built_in->min_arguments || arguments.size() > built_in->max_arguments)
            return CellError{xlerrValue};
        return built_in->call(arguments);
    }

    EvaluationContext& context_;
};

} // namespace

CellValue EvaluateFormula(const FormulaNode& formula, EvaluationContext& context) {
    return Evaluator(context).Value(formula);
}

} // namespace metrify::host
