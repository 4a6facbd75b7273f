#pragma once

// A formula as a tree of operations.

#include "host/formula/formula_tokens.h"
#include "host/sheet/cell_value.h"

#include <optional>
#include <string>
#include <vector>

namespace metrify::host {

enum class NodeKind {
    value,     ///< a literal, or an array of them
    missing,   ///< an omitted argument
    reference, ///< one cell, or with two children the rectangle between them
    name,      ///< a name that is not called
    call,      ///< of the function `text`
    prefix,    ///< the sign `text`
    percent,
    infix, ///< the operator `text`
};

struct FormulaNode {
    NodeKind kind;
    CellValue value;
    std::u16string text;           ///< of an operator, function or name
    std::u16string_view qualifier; ///< of a reference
    CellPosition cell;             ///< of a reference
    std::vector<FormulaNode> children;
};

/// The tree of a formula's tokens. Nothing if they are not a formula, or one nested too deeply.
std::optional<FormulaNode> ParseFormula(const std::vector<Token>& tokens);

/// The tree of a formula without its "=", which must outlive it.
std::optional<FormulaNode> ParseFormulaText(std::u16string_view formula, const FormulaSetting& setting);

} // namespace metrify::host
