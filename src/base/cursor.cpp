#include "base/cursor.h"

#include "base/number_text.h"

#include <algorithm>

namespace metrify {

namespace {

// To the next newline, or to the end of the text.
void move_to_newline(cursor& p) {
    while (!at_line_end(p))
        ++p.at;
}

// Skips blanks and continuations, and optionally comments.
template <bool comments>
void skip(cursor& p) {
    while (!at_stop_pointer(p)) {
        if (is_blank(*p)) {
            ++p.at;
        } else if (comments && *p == '#') {
            move_to_newline(p); // the comment's newline is not skipped
            return;
        } else if (*p == '\\') {
            move_to_newline(p);
            if (at_text_end(p))
                return; // no newline after the backslash
            ++p.at;
        } else {
            return;
        }
    }
}

// The cursor after the blanks. Continuations are not skipped: a backslash comes before any newline.
cursor after_plain_blanks(cursor p) {
    while (is_blank(*p) && !at_stop_pointer(p))
        ++p.at;
    return p;
}

} // namespace

void detail::skip_from(cursor& expptr) {
    // Mostly there are blanks alone.
    expptr = after_plain_blanks(expptr);
    if (*expptr == '#' || *expptr == '\\')
        skip<true>(expptr);
}

void skip_blanks(cursor& expptr) {
    skip<false>(expptr);
}

void skip_to_line_end(cursor& expptr) {
    for (;;) {
        while (!detail::has_class(*expptr, detail::class_skipped | detail::class_line_end) &&
               !at_stop_pointer(expptr))
            ++expptr.at;
        if (at_line_end(expptr))
            return;
        detail::skip_from(expptr);
    }
}

void skip_to_statement_end(cursor& expptr) {
    skip_blanks_and_comments(expptr);
    while (!at_statement_end(expptr)) {
        ++expptr.at;
        skip_blanks(expptr);
    }
}

void move_to_comment_or_line_end(cursor& expptr) {
    cursor line_end = expptr;
    skip_to_line_end(line_end);
    const char* hash = std::find(expptr.at, line_end.at, '#');
    expptr.at = hash;
}

bool rest_of_line_is_blank(const cursor& expptr) {
    return at_line_end(after_plain_blanks(expptr));
}

bool rest_is_blank_before_comment(const cursor& expptr) {
    const cursor p = after_plain_blanks(expptr);
    return at_line_end(p) || *p == '#';
}

bool span_begins_with_comment(const cursor& a, const cursor& b) {
    const char* p = std::find_if(a.at, b.at, [](char c) { return c != '\n' && !is_blank(c); });
    return p != b.at && *p == '#';
}

bool absorb_next_comment_line(cursor& expptr) {
    if (at_text_end(expptr))
        return false;
    const cursor comment_end = expptr;
    ++expptr.at;
    skip_blanks_and_comments(expptr);
    if (span_begins_with_comment(comment_end, expptr))
        return true;
    expptr = comment_end;
    return false;
}

bool is_mnemonic(bool advance, cursor& expptr) {
    if (!is_letter(*expptr) || at_stop_pointer(expptr))
        return false;
    if (advance)
        take_name(expptr);
    return true;
}

std::string_view take_name(cursor& expptr) {
    const cursor start = expptr;
    while (is_name_char(*expptr) && !at_stop_pointer(expptr))
        ++expptr.at;
    return text_span(start, expptr);
}

bool scan_number(bool advance, cursor& expptr, double& out) {
    const cursor start = after_plain_blanks(expptr);
    out = 0.0;
    if (at_stop_pointer(start))
        return false;
    const char* end = read_double(start.at, out);
    if (end == start.at)
        return false;
    if (advance)
        expptr.at = end;
    return true;
}

bool scan_component_suffix(cursor& expptr, int& out) {
    cursor p = expptr;
    skip_blanks_and_comments(p);
    if (!accept_char(true, '[', p))
        return false;
    skip_blanks_and_comments(p);
    const char digit = *p;
    if (digit < '1' || digit > '3')
        return false;
    ++p.at;
    skip_blanks_and_comments(p);
    if (!accept_char(true, ']', p))
        return false;
    out = digit - '0';
    expptr = p;
    return true;
}

int match_keyword(bool advance, bool case_sensitive, cursor& expptr, std::string_view keyword) {
    const auto folded = [case_sensitive](char c) {
        return static_cast<signed char>(case_sensitive ? c : fold_case(c));
    };
    cursor p = expptr;
    for (const char k : keyword) {
        const char c = at_text_end(p) ? '\0' : *p;
        if (folded(c) != folded(k))
            return folded(c) - folded(k);
        ++p.at;
    }
    if (!at_text_end(p) && is_name_char(*p))
        return *p;
    if (advance)
        expptr = p;
    return 0;
}

int match_keyword_nocase(cursor& expptr, std::string_view keyword) {
    return match_keyword(true, false, expptr, keyword);
}

int text_compare_nocase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int difference = fold_case(a[i]) - fold_case(b[i]);
        if (difference != 0)
            return difference;
    }
    if (a.size() > common)
        return fold_case(a[common]);
    return b.size() > common ? -fold_case(b[common]) : 0;
}

std::size_t count_char_in_text(std::string_view text, char c) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

} // namespace metrify
