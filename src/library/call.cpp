#include "library/call.h"

#include "base/thread_object.h"

#include <string>

namespace metrify::library {

namespace {

// A literal, or the text of the thread's object, which outlives it.
thread_local const char* message = "";

} // namespace

metrify_status fail(metrify_status status, std::string_view text) {
    std::string& kept = thread_object<std::string>();
    kept = text;
    message = kept.c_str();
    return status;
}

metrify_status succeed() {
    message = "";
    return METRIFY_OK;
}

metrify_status run_out_of_memory() {
    message = "out of memory";
    return METRIFY_OUT_OF_MEMORY;
}

argument check_text(const char* text, std::size_t size) {
    if (size == 0)
        return {};
    if (text == nullptr)
        return {{}, "a text is null"};
    const std::string_view whole(text, size);
    if (whole.find('\0') != std::string_view::npos)
        return {{}, "a text contains a zero byte"};
    return {whole, {}};
}

} // namespace metrify::library

const char* metrify_message() {
    return metrify::library::message;
}
