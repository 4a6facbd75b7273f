#include "base/text_str.h"

#include "base/number_text.h"
#include "base/numeric_utilities.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>

namespace metrify {

namespace {

constexpr const char* allocation_failure = "Allocation failure in allocate_and_init_str_kelb().";

struct release_record {
    void operator()(text_str* record) const { std::free(record); }
};
using record_owner = std::unique_ptr<text_str, release_record>;

// On failure the old block is unchanged.
char* grow_block(char* block, std::size_t size) {
    char* grown = static_cast<char*>(std::realloc(block, size));
    if (grown == nullptr)
        nrerror(allocation_failure);
    return grown;
}

record_owner new_record() {
    record_owner record(static_cast<text_str*>(std::malloc(sizeof(text_str))));
    if (record == nullptr)
        nrerror(allocation_failure);
    return record;
}

// Moves the text to a record of the new capacity. The characters are copied only if their block is too small
// as well.
text_str* moved_to_capacity(text_str* old, std::size_t capacity) {
    record_owner grown = new_record();
    *grown = *old;
    grown->in_place = false;
    grown->owns_block = true;
    grown->capacity = capacity;
    if (!old->owns_block) {
        grown->block = capacity;
        grown->text = grow_block(nullptr, capacity);
        std::memcpy(grown->text, old->text, old->length + 1);
    } else if (capacity > old->block) {
        grown->block = std::max(capacity, 2 * old->block);
        grown->text = grow_block(old->text, grown->block);
    }
    if (!old->in_place)
        std::free(old);
    return grown.release();
}

} // namespace

text_str* allocate_and_init_str_kelb(std::size_t size, std::size_t grow_by) {
    record_owner s = new_record();
    const std::size_t block = std::max<std::size_t>(size, 1);
    *s = {grow_block(nullptr, block), 0, size, std::max<std::size_t>(grow_by, 1), block, false, true};
    s->text[0] = '\0';
    return s.release();
}

void str_free(text_str* s) {
    if (s->owns_block)
        std::free(s->text);
    if (!s->in_place)
        std::free(s);
}

text_str* detail::str_moved(text_str* s, std::size_t needed) {
    const std::size_t steps = (needed - s->capacity + s->grow_by - 1) / s->grow_by;
    return moved_to_capacity(s, s->capacity + steps * s->grow_by);
}

text_str* detail::str_moved(text_str* s, std::size_t needed, std::string_view& appended) {
    const std::less_equal<const char*> up_to;
    const bool is_own = up_to(s->text, appended.data()) && up_to(appended.data(), s->text + s->length);
    const std::size_t begin = is_own ? static_cast<std::size_t>(appended.data() - s->text) : 0;
    text_str* moved = str_moved(s, needed);
    if (is_own)
        appended = {moved->text + begin, appended.size()};
    return moved;
}

text_str* str_append_str(text_str** s, text_str* const* t) {
    return str_append_text(s, str_view(*t));
}

text_str* str_append_until_any(text_str** s, std::string_view text, std::string_view set) {
    return str_append_text(s, text.substr(0, text.find_first_of(set)));
}

text_str* str_append_three(text_str** s, std::string_view a, std::string_view b, std::string_view c) {
    *s = str_append_text(s, a);
    *s = str_append_text(s, b);
    *s = str_append_text(s, c);
    return *s;
}

text_str* str_append_double(text_str** s, double x) {
    number_buffer buffer;
    return str_append_text(s, format_double(x, buffer));
}

text_str* str_append_int(text_str** s, int n) {
    number_buffer buffer;
    return str_append_text(s, format_int(n, buffer));
}

work_text::work_text(std::size_t capacity, std::size_t grow_by) : str(&record_) {
    record_ = {first_block_, 0, capacity, grow_by, first_capacity, true, false};
    first_block_[0] = '\0';
    if (capacity > first_capacity) {
        record_.text = grow_block(nullptr, capacity);
        record_.block = capacity;
        record_.owns_block = true;
        record_.text[0] = '\0';
    }
}

} // namespace metrify
