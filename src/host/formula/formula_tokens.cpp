#include "host/formula/formula_tokens.h"

#include "host/sheet/cell_value.h"
#include "host/sheet/character_class.h"

#include <algorithm>
#include <iterator>

namespace metrify::host {

namespace {

bool IsNameStart(char16_t c) {
    return IsLetter(c) || c == u'_' || c == u'\\' || c >= 0x80;
}

class TokenReader {
  public:
    TokenReader(std::u16string_view formula, const FormulaSetting& setting)
        : rest_(formula), setting_(setting) {}

    std::optional<std::vector<Token>> Read() {
        std::vector<Token> tokens;
        SkipBlanks();
        while (!rest_.empty()) {
            std::optional<Token> token = ReadOne();
            if (!token)
                return std::nullopt;
            tokens.push_back(std::move(*token));
            SkipBlanks();
        }
        return tokens;
    }

  private:
    void SkipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(u" \r\n"), rest_.size())); }

    Token Take(TokenKind kind, std::size_t length) {
        Token token{kind, rest_.substr(0, length), 0.0, {}, 0, {}, {}};
        rest_.remove_prefix(length);
        return token;
    }

    std::optional<Token> ReadOne() {
        const char16_t c = rest_.front();
        if (c == u'"')
            return ReadText();
        if (c == u'#')
            return ReadErrorToken();
        if (IsDigit(c) || (c == u'.' && rest_.size() > 1 && IsDigit(rest_[1])))
            return ReadNumberToken();
        if (std::optional<Token> reference = ReadReference(0))
            return reference;
        if (const std::size_t qualifier = QualifierLength(); qualifier > 0)
            return ReadReference(qualifier);
        if (IsNameStart(c))
            return ReadName();
        return ReadSymbol();
    }

    // text := '"' { character | '""' } '"'
    std::optional<Token> ReadText() {
        std::u16string text;
        for (std::size_t at = 1; at < rest_.size(); ++at) {
            if (rest_[at] != u'"') {
                text += rest_[at];
            } else if (rest_.substr(at + 1).starts_with(u'"')) {
                text += rest_[at++];
            } else {
                Token token = Take(TokenKind::text, at + 1);
                token.text = std::move(text);
                return token;
            }
        }
        return std::nullopt;
    }

    std::optional<Token> ReadErrorToken() {
        const std::optional<CellError> error = ReadError(rest_);
        if (!error)
            return std::nullopt;
        Token token = Take(TokenKind::error, ErrorText(*error).size());
        token.error = error->code;
        return token;
    }

    // number := digits [ "." digits ] [ "E" [ sign ] digits ]
    std::optional<Token> ReadNumberToken() {
        std::size_t length = std::min(rest_.find_first_not_of(u"0123456789."), rest_.size());
        if (length < rest_.size() && (rest_[length] == u'E' || rest_[length] == u'e')) {
            std::size_t digits = length + 1;
            if (digits < rest_.size() && (rest_[digits] == u'+' || rest_[digits] == u'-'))
                ++digits;
            if (digits < rest_.size() && IsDigit(rest_[digits]))
                length = std::min(rest_.find_first_not_of(u"0123456789", digits), rest_.size());
        }
        Token token = Take(TokenKind::number, length);
        if (!ReadNumber(token.source, token.number))
            return std::nullopt;
        return token;
    }

    // qualifier := ( name | "'" { character } "'" ) "!"
    std::size_t QualifierLength() const {
        const std::size_t end = rest_.starts_with(u'\'') ? rest_.find(u'\'', 1) + 1 : NameLength();
        return end > 0 && end < rest_.size() && rest_[end] == u'!' ? end + 1 : 0;
    }

    std::optional<Token> ReadReference(std::size_t qualifier) {
        const std::optional<ReadReferenceResult> read =
            ReadCellReference(rest_.substr(qualifier), setting_.style, setting_.base, setting_.size);
        if (!read)
            return std::nullopt;
        Token token = Take(TokenKind::reference, qualifier + read->length);
        token.qualifier = token.source.substr(0, qualifier);
        token.reference = read->reference;
        return token;
    }

    std::size_t NameLength() const {
        const auto* end = std::find_if_not(
            rest_.begin(), rest_.end(), [](char16_t c) { return IsNameStart(c) || IsDigit(c) || c == u'.'; });
        return static_cast<std::size_t>(end - rest_.begin());
    }

    Token ReadName() {
        Token token = Take(TokenKind::name, NameLength());
        token.text = token.source;
        return token;
    }

    std::optional<Token> ReadSymbol() {
        constexpr std::u16string_view pairs[] = {u"<>", u"<=", u">="};
        constexpr std::u16string_view singles = u"+-*/^&=<>%(),;:{}";
        std::size_t length = singles.find(rest_.front()) != singles.npos ? 1 : 0;
        if (std::find(std::begin(pairs), std::end(pairs), rest_.substr(0, 2)) != std::end(pairs))
            length = 2;
        if (length == 0)
            return std::nullopt;
        Token token = Take(TokenKind::symbol, length);
        token.text = token.source;
        return token;
    }

    std::u16string_view rest_;
    const FormulaSetting& setting_;
};

} // namespace

std::optional<std::vector<Token>> ReadTokens(std::u16string_view formula, const FormulaSetting& setting) {
    return TokenReader(formula, setting).Read();
}

} // namespace metrify::host
