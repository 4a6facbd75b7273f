#include "library/text.h"

#include <memory>

const char* metrify_text_data(const metrify_text* text) {
    return text != nullptr ? text->text.c_str() : "";
}

size_t metrify_text_size(const metrify_text* text) {
    return text != nullptr ? text->text.size() : 0;
}

void metrify_text_free(metrify_text* text) {
    const std::unique_ptr<metrify_text> owner(text);
}
