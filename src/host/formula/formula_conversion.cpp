#include "host/formula/formula_conversion.h"

#include "host/formula/formula_tree.h"

namespace metrify::host {

std::optional<std::u16string> ConvertFormulaText(std::u16string_view formula, const FormulaSetting& from,
                                                 ReferenceStyle to, std::optional<bool> row_absolute,
                                                 std::optional<bool> column_absolute) {
    const std::size_t start = formula.starts_with(u'=') ? 1 : 0;
    const std::u16string_view body = formula.substr(start);
    if (body.empty() && start == 0)
        return std::u16string();
    const std::optional<std::vector<Token>> tokens = ReadTokens(body, from);
    if (!tokens || !ParseFormula(*tokens))
        return std::nullopt;
    std::u16string converted(formula.substr(0, start));
    std::size_t at = 0;
    for (const Token& token : *tokens) {
        if (token.kind != TokenKind::reference)
            continue;
        const auto position = static_cast<std::size_t>(token.source.data() - body.data());
        CellReference reference = token.reference;
        reference.row_is_absolute = row_absolute.value_or(reference.row_is_absolute);
        reference.column_is_absolute = column_absolute.value_or(reference.column_is_absolute);
        converted += body.substr(at, position - at);
        converted += token.qualifier;
        converted += CellReferenceText(reference, to, from.base);
        at = position + token.source.size();
    }
    converted += body.substr(at);
    return converted;
}

} // namespace metrify::host
