#pragma once

// The frame of every function that a caller in C reaches and that can fail: exceptions and exhausted memory
// become a status, with a message for the calling thread.

#include "base/numeric_utilities.h"
#include "metrify/metrify.h"

#include <new>
#include <stdexcept>
#include <string_view>

namespace metrify::library {

/// Keeps a copy of the text as the calling thread's message.
metrify_status fail(metrify_status status, std::string_view text);

/// Sets the message of a call that succeeded or failed for lack of memory; this takes no memory.
metrify_status succeed();
metrify_status run_out_of_memory();

/// Runs the body of a call, which returns a metrify_status.
template <class Body>
metrify_status guarded(Body&& body) noexcept {
    try {
        const memory_failure_scope scope;
        return body();
    } catch (const std::bad_alloc&) {
        return run_out_of_memory();
    } catch (const std::length_error&) {
        return run_out_of_memory(); // a text too long for any memory
    }
}

/// A text of the caller's, or a reason to reject it. A null address is an empty text if the size is 0.
struct argument {
    std::string_view text;
    std::string_view fault;
};
argument check_text(const char* text, std::size_t size);

constexpr std::string_view null_result = "the pointer to the result is null";

} // namespace metrify::library
