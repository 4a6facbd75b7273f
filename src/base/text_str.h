#pragma once

// The growable text that carries the listing and the error text through the calculator.
//
// A text is accessed through a pointer to its record. Growth replaces the record, so every append returns the
// new pointer and the caller stores it: s = str_append_text(&s, "..."), or append(s, "...").

#include "base/number_text.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace metrify {

struct text_str {
    char* text;           // terminated, never null
    std::size_t length;   // characters before the terminator
    std::size_t capacity; // decides when the text moves: it holds at most capacity - 2 characters
    std::size_t grow_by;  // step by which capacity grows
    std::size_t block;    // allocated bytes; grows geometrically, so that a text made of many small pieces
                          // is copied a logarithmic number of times only
    bool in_place;        // record and first block belong to a work_text
    bool owns_block;      // false while the text is in the first block of a work_text
};

/// A new empty text. Ends the process through nrerror if there is no memory for it.
text_str* allocate_and_init_str_kelb(std::size_t size, std::size_t grow_by);
void str_free(text_str* s);
inline void str_clear(text_str** s) {
    (*s)->length = 0;
    (*s)->text[0] = '\0';
}

inline bool str_is_empty(const text_str* s) {
    return s->text[0] == '\0';
}
inline std::string_view str_view(const text_str* s) {
    return {s->text, s->length};
}

namespace detail {
/// The text with a capacity of at least `needed` bytes, moved to a new record.
text_str* str_moved(text_str* s, std::size_t needed);
/// The same before an append; `appended` is updated if it is a part of the text itself.
text_str* str_moved(text_str* s, std::size_t needed, std::string_view& appended);
} // namespace detail

/// Appends text, which may be a part of the target itself.
inline text_str* str_append_text(text_str** s, std::string_view text) {
    text_str* target = *s;
    const std::size_t needed =
        (text.size() + 1) + (target->length + 1); // one byte more than the result takes
    if (needed > target->capacity)
        target = detail::str_moved(target, needed, text);
    text.copy(target->text + target->length, text.size());
    target->length += text.size();
    target->text[target->length] = '\0';
    return target;
}

/// Appends the characters from begin up to end; nothing if end is before begin.
inline text_str* str_append_range(text_str** s, const char* begin, const char* end) {
    if (std::less<>()(end, begin))
        return *s;
    return str_append_text(s, {begin, static_cast<std::size_t>(end - begin)});
}
text_str* str_append_str(text_str** s, text_str* const* t);

/// Appends text up to, not including, its first character that is in set, or all of it.
text_str* str_append_until_any(text_str** s, std::string_view text, std::string_view set);

/// Appends three texts and stores the pointer itself.
text_str* str_append_three(text_str** s, std::string_view a, std::string_view b, std::string_view c);

/// Appends x as "%g" would print it; a not-a-number is `nan`, without a sign.
text_str* str_append_double(text_str** s, double x);
text_str* str_append_int(text_str** s, int n);

namespace detail {

/// One part of an append: a text, or a number with its digits.
class text_part {
  public:
    explicit text_part(std::string_view text) : view(text) {}
    explicit text_part(const text_str* text) : view(str_view(text)) {}
    explicit text_part(double x) : view(format_double(x, digits_)) {}
    explicit text_part(int n) : view(format_int(n, digits_)) {}
    explicit text_part(char) = delete;
    text_part(const text_part&) = delete;
    text_part& operator=(const text_part&) = delete;

  private:
    number_buffer digits_; // NOLINT: not set for a text

  public:
    std::string_view view;
};

template <class... Views>
text_str* str_append_views(text_str* target, const Views&... views) {
    const std::size_t needed = ((views.size() + ...) + 1) + (target->length + 1);
    if (needed > target->capacity)
        target = str_moved(target, needed);
    char* end = target->text + target->length;
    ((end += views.copy(end, std::string_view::npos)), ...);
    *end = '\0';
    target->length = static_cast<std::size_t>(end - target->text);
    return target;
}

} // namespace detail

/// Appends a text or a number.
template <class Part>
void append(text_str*& s, const Part& part) {
    s = str_append_text(&s, detail::text_part(part).view);
}
/// Appends texts and numbers in their order. No text may be a part of the target.
template <class... Parts>
void append(text_str*& s, const Parts&... parts) {
    s = detail::str_append_views(s, detail::text_part(parts).view...);
}

/// Owner of a text that holds its record and its first block, so that a text of usual length needs no
/// allocation. The pointer to the record is `str`; every append updates it.
class work_text {
  public:
    static constexpr std::size_t first_capacity = 1024;

    explicit work_text(std::size_t capacity = first_capacity, std::size_t grow_by = first_capacity);
    ~work_text() { str_free(str); }
    work_text(const work_text&) = delete;
    work_text& operator=(const work_text&) = delete;

    void append(std::string_view text) { str = str_append_text(&str, text); }
    std::string_view view() const { return str_view(str); }

    text_str* str;

  private:
    text_str record_;
    char first_block_[first_capacity];
};

} // namespace metrify
