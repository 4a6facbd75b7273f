#pragma once

// The tokens of a formula: numbers, texts, errors, names, references and symbols.

#include "host/sheet/cell_reference.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify::host {

enum class TokenKind { number, text, error, name, reference, symbol };

struct Token {
    TokenKind kind;
    std::u16string_view source;    ///< its characters in the formula
    double number = 0.0;           ///< of a number
    std::u16string text;           ///< of a text, without its quotes; of a name or symbol
    int error = 0;                 ///< code of an error
    std::u16string_view qualifier; ///< of a reference: its sheet with the "!"
    CellReference reference;
};

/// The style of references, the cell of the formula and the size of the sheet.
struct FormulaSetting {
    ReferenceStyle style = ReferenceStyle::r1c1;
    CellPosition base;
    SheetSize size{};
};

/// The tokens of a formula without its "=", which must outlive them. Nothing if a part of it is not a token.
std::optional<std::vector<Token>> ReadTokens(std::u16string_view formula, const FormulaSetting& setting);

} // namespace metrify::host
