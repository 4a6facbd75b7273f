#pragma once

// The cursor and the scanning functions shared by all rules of the language: blanks, comments, line ends,
// statement ends, names and numbers. A rule backtracks by restoring a saved cursor; the text is never
// changed.

#include <array>
#include <cstddef>
#include <string_view>

namespace metrify {

/// A read position in a null-terminated text. `stop` is an optional earlier end, so that a part of the text
/// can be run as if the text ended there.
struct cursor {
    const char* at = "";
    const char* stop = nullptr;

    cursor() = default;
    explicit cursor(const char* text, const char* extra_end = nullptr) : at(text), stop(extra_end) {}

    char operator*() const { return *at; }
    friend bool operator==(const cursor& a, const cursor& b) { return a.at == b.at; }
};

/// The text from start up to the cursor.
inline std::string_view text_span(const cursor& start, const cursor& expptr) {
    return {start.at, static_cast<std::size_t>(expptr.at - start.at)};
}

namespace detail {

enum char_class : unsigned char {
    class_blank = 1,
    class_letter = 2,
    class_digit = 4,
    class_underscore = 8,
    class_line_end = 16,      // terminator and newline
    class_statement_end = 32, // the same, and ; and #
    class_skipped = 64,       // first characters of blanks, comments and continuations
};

constexpr std::array<unsigned char, 256> make_char_classes() {
    std::array<unsigned char, 256> classes = {};
    const auto mark = [&classes](std::string_view set, int bits) {
        for (const char c : set) {
            auto& entry = classes[static_cast<unsigned char>(c)];
            entry = static_cast<unsigned char>(entry | bits);
        }
    };
    mark(" \t", class_blank);
    mark(" \t#\\", class_skipped);
    mark("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz", class_letter);
    mark("0123456789", class_digit);
    mark("_", class_underscore);
    mark(std::string_view("\0\n", 2), class_line_end | class_statement_end);
    mark(";#", class_statement_end);
    return classes;
}

constexpr std::array<unsigned char, 256> char_classes = make_char_classes();

constexpr bool has_class(char c, int bits) {
    return (char_classes[static_cast<unsigned char>(c)] & bits) != 0;
}

} // namespace detail

// Characters. A carriage return is not a blank. A byte above 127 is an ordinary character that is not part of
// a name.

constexpr bool is_blank(char c) {
    return detail::has_class(c, detail::class_blank);
}
constexpr bool is_letter(char c) {
    return detail::has_class(c, detail::class_letter);
}
constexpr bool is_name_char(char c) {
    return detail::has_class(c, detail::class_letter | detail::class_digit | detail::class_underscore);
}
/// Converts A to Z to lower case; other characters are unchanged.
constexpr char fold_case(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Positions.

inline bool at_stop_pointer(const cursor& p) {
    return p.at == p.stop;
}
inline bool at_text_end(const cursor& p) {
    return *p == '\0' || at_stop_pointer(p);
}
inline bool at_line_end(const cursor& p) {
    return detail::has_class(*p, detail::class_line_end) || at_stop_pointer(p);
}
/// The semicolon opens the output requests and the hash a comment, so both end a statement.
inline bool at_statement_end(const cursor& p) {
    return detail::has_class(*p, detail::class_statement_end) || at_stop_pointer(p);
}

// Movers.

/// True if the character at the cursor is c; moves after it if advance is set.
inline bool accept_char(bool advance, char c, cursor& expptr) {
    if (*expptr != c || c == '\0')
        return false;
    if (advance)
        ++expptr.at;
    return true;
}
namespace detail {
void skip_from(cursor& expptr);
}
/// Skips blanks, comments up to their newline, and line continuations: a backslash, the rest of its line and
/// the newline.
inline void skip_blanks_and_comments(cursor& expptr) {
    if (detail::has_class(*expptr, detail::class_skipped))
        detail::skip_from(expptr);
}
void skip_blanks(cursor& expptr);
void skip_to_line_end(cursor& expptr);
/// To the end of the statement, continuations included; does not enter a comment.
void skip_to_statement_end(cursor& expptr);
/// To the first hash of the line, or to the line's end.
void move_to_comment_or_line_end(cursor& expptr);

// Tests of a line; the cursor does not move.

bool rest_of_line_is_blank(const cursor& expptr);
/// The same; a trailing comment is ignored.
bool rest_is_blank_before_comment(const cursor& expptr);
/// True if the first character from a on that is neither newline nor blank is before b and is a hash.
bool span_begins_with_comment(const cursor& a, const cursor& b);

/// With the cursor at the end of a comment: moves to the end of a comment that the next line begins with, or
/// returns false and does not move.
bool absorb_next_comment_line(cursor& expptr);

// Scanners. They report no errors: on false the cursor does not move, and the caller chooses a message.

/// True if a name starts here: a letter, then letters, digits and underscores. Does not skip blanks.
bool is_mnemonic(bool advance, cursor& expptr);
/// The name at the cursor, which must be at one; moves after it.
std::string_view take_name(cursor& expptr);
/// A number, preceded by any blanks and tabs. On false out is 0.0.
bool scan_number(bool advance, cursor& expptr, double& out);
/// An index [1], [2] or [3] with blanks and comments around its tokens.
bool scan_component_suffix(cursor& expptr, int& out);

// Keywords.

/// Compares the text at the cursor with a whole-word keyword: 0 on a match, and the cursor moves after it if
/// advance is set. Otherwise the sign is the order of the two: negative if the text comes first.
int match_keyword(bool advance, bool case_sensitive, cursor& expptr, std::string_view keyword);
/// The same, ignoring case and advancing.
int match_keyword_nocase(cursor& expptr, std::string_view keyword);
/// The difference of the lower-case characters at the first mismatch of two texts, or 0.
int text_compare_nocase(std::string_view a, std::string_view b);
std::size_t count_char_in_text(std::string_view text, char c);

} // namespace metrify
