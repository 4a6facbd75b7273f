#pragma once

// A formula taken to pieces: numbers, texts, names, references and symbols.

#include "host/sheet/cell_reference.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace metrify::host {

enum class TokenKind { number, text, error, name, reference, symbol };

struct Token {
    TokenKind kind;
    std::u16string_view source;    ///< as it stands in the formula
    double number = 0.0;           ///< of a number
    std::u16string text;           ///< of a text, without its quotes; of a name or symbol
    int error = 0;                 ///< code of an error
    std::u16string_view qualifier; ///< of a reference: its sheet with the "!", as it stands
    CellReference reference;
};

/// How references are to be read.
struct FormulaSetting {
    ReferenceStyle style = ReferenceStyle::r1c1;
    CellPosition base;
    SheetSize size{};
};

/// The tokens of a formula, without its "=". Nothing if some of it is no token. They point into the formula.
std::optional<std::vector<Token>> ReadTokens(std::u16string_view formula, const FormulaSetting& setting);

} // namespace metrify::host
