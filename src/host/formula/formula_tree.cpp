#include "host/formula/formula_tree.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace metrify::host {

namespace {

// Limits the recursion.
constexpr int kMaxDepth = 200;

class Parser {
  public:
    explicit Parser(std::span<const Token> tokens) : rest_(tokens) {}

    std::optional<FormulaNode> ParseAll() {
        std::optional<FormulaNode> node = ParseOperators(0);
        if (!rest_.empty())
            return std::nullopt;
        return node;
    }

  private:
    using Result = std::optional<FormulaNode>;

    bool IsSymbol(std::u16string_view symbol) const {
        return !rest_.empty() && rest_.front().kind == TokenKind::symbol && rest_.front().text == symbol;
    }

    bool TakeSymbol(std::u16string_view symbol) {
        const bool is_there = IsSymbol(symbol);
        if (is_there)
            rest_ = rest_.subspan(1);
        return is_there;
    }

    // Takes the next token if it is an operator of this level; otherwise the text is empty.
    std::u16string_view TakeOperator(std::size_t level) {
        for (const std::u16string_view symbol : levels[level])
            if (TakeSymbol(symbol))
                return symbol;
        return {};
    }

    // level := next level { operator of the level, next level }
    Result ParseOperators(std::size_t level) {
        if (level == levels.size())
            return ParsePercent();
        Result left = ParseOperators(level + 1);
        while (left) {
            const std::u16string_view symbol = TakeOperator(level);
            if (symbol.empty())
                return left;
            Result right = ParseOperators(level + 1);
            if (!right)
                return right;
            left = Node(NodeKind::infix, symbol, std::move(*left), std::move(*right));
        }
        return left;
    }

    // percent := sign { "%" }
    Result ParsePercent() {
        Result node = ParseSign();
        while (node && TakeSymbol(u"%"))
            node = Node(NodeKind::percent, u"%", std::move(*node));
        return node;
    }

    // sign := { "+" | "-" } range. A sign binds closer than a power.
    Result ParseSign() {
        std::u16string signs;
        while (IsSymbol(u"+") || IsSymbol(u"-")) {
            signs += rest_.front().text;
            rest_ = rest_.subspan(1);
        }
        Result node = ParseRange();
        if (node && !signs.empty()) {
            const bool is_negative = (std::count(signs.begin(), signs.end(), u'-') % 2) != 0;
            node = Node(NodeKind::prefix, is_negative ? u"-" : u"+", std::move(*node));
        }
        return node;
    }

    // range := primary [ ":" primary ]
    Result ParseRange() {
        if (++depth_ > kMaxDepth)
            return std::nullopt;
        Result node = ParsePrimary();
        if (node && node->kind == NodeKind::reference && TakeSymbol(u":")) {
            Result last = ParsePrimary();
            if (!last || last->kind != NodeKind::reference)
                return std::nullopt;
            FormulaNode range = Node(NodeKind::reference, u":", std::move(*node), std::move(*last));
            range.qualifier = range.children.front().qualifier;
            node = std::move(range);
        }
        --depth_;
        return node;
    }

    // primary := number | text | error | reference | name [ arguments ] | "(" formula ")" | array
    Result ParsePrimary() {
        if (TakeSymbol(u"(")) {
            Result node = ParseOperators(0);
            return TakeSymbol(u")") ? std::move(node) : std::nullopt;
        }
        if (TakeSymbol(u"{"))
            return ParseArray();
        if (rest_.empty() || rest_.front().kind == TokenKind::symbol)
            return std::nullopt;
        const Token& token = rest_.front();
        rest_ = rest_.subspan(1);
        if (token.kind == TokenKind::reference) {
            FormulaNode node = Node(NodeKind::reference, {});
            node.qualifier = token.qualifier;
            node.cell = token.reference.at;
            return node;
        }
        if (token.kind == TokenKind::name)
            return ParseName(token);
        return ValueNode(Literal(token));
    }

    // name := "TRUE" | "FALSE" | name [ "(" arguments ]
    Result ParseName(const Token& token) {
        if (TakeSymbol(u"("))
            return ParseArguments(token.text);
        if (const std::optional<bool> boolean = ReadBoolean(token.text))
            return ValueNode(*boolean);
        return Node(NodeKind::name, token.text);
    }

    // arguments := [ formula ] { "," [ formula ] } ")"
    Result ParseArguments(const std::u16string& function) {
        FormulaNode call = Node(NodeKind::call, function);
        if (TakeSymbol(u")"))
            return call;
        do {
            if (IsSymbol(u",") || IsSymbol(u")"))
                call.children.push_back(Node(NodeKind::missing, {}));
            else if (Result argument = ParseOperators(0))
                call.children.push_back(std::move(*argument));
            else
                return std::nullopt;
        } while (TakeSymbol(u","));
        return TakeSymbol(u")") ? Result(std::move(call)) : std::nullopt;
    }

    // array := literal { ( "," | ";" ) literal } "}", every row as long as the first
    Result ParseArray() {
        std::vector<std::vector<CellValue>> rows(1);
        do {
            const bool is_negative = TakeSymbol(u"-");
            if (rest_.empty())
                return std::nullopt;
            CellValue value = Literal(rest_.front());
            if (const auto* number = value.As<double>(); number && is_negative)
                value = -*number;
            if (value.Is<EmptyCell>())
                return std::nullopt;
            rest_ = rest_.subspan(1);
            rows.back().push_back(std::move(value));
            if (IsSymbol(u";"))
                rows.emplace_back();
        } while (TakeSymbol(u",") || TakeSymbol(u";"));
        for (const std::vector<CellValue>& row : rows)
            if (row.size() != rows.front().size())
                return std::nullopt;
        if (!TakeSymbol(u"}"))
            return std::nullopt;
        return ValueNode(ArrayOf(rows));
    }

    // The value of a literal; an empty one for any other token.
    static CellValue Literal(const Token& token) {
        switch (token.kind) {
        case TokenKind::number:
            return token.number;
        case TokenKind::text:
            return token.text;
        case TokenKind::error:
            return CellError{token.error};
        default:
            return {};
        }
    }

    template <class... Children>
    static FormulaNode Node(NodeKind kind, std::u16string_view text, Children&&... children) {
        FormulaNode node{kind, {}, std::u16string(text), {}, {}, {}};
        (node.children.push_back(std::forward<Children>(children)), ...);
        return node;
    }

    static FormulaNode ValueNode(CellValue value) {
        FormulaNode node = Node(NodeKind::value, {});
        node.value = std::move(value);
        return node;
    }

    // The infix operators, lowest precedence first.
    static constexpr std::array<std::array<std::u16string_view, 6>, 5> levels{{
        {u"=", u"<>", u"<=", u">=", u"<", u">"},
        {u"&"},
        {u"+", u"-"},
        {u"*", u"/"},
        {u"^"},
    }};

    std::span<const Token> rest_;
    int depth_ = 0;
};

} // namespace

std::optional<FormulaNode> ParseFormula(const std::vector<Token>& tokens) {
    return Parser(tokens).ParseAll();
}

std::optional<FormulaNode> ParseFormulaText(std::u16string_view formula, const FormulaSetting& setting) {
    const std::optional<std::vector<Token>> tokens = ReadTokens(formula, setting);
    return tokens ? ParseFormula(*tokens) : std::nullopt;
}

} // namespace metrify::host
