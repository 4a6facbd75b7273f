// Programs, and calculators that keep their state from call to call.

#include "base/interruption.h"
#include "language/driver.h"
#include "language/session.h"
#include "library/call.h"
#include "library/text.h"

#include <memory>

using namespace metrify;
using namespace metrify::library;

// Without a session the calculator is new; its first call makes one.
struct metrify_calculator {
    std::unique_ptr<session> lines;
    // Not the session's own, since another thread requests while the session is made or reset.
    const std::shared_ptr<interruption> stop = std::make_shared<interruption>();
};

metrify_status metrify_run(const char* program, size_t size, metrify_text** listing) {
    return guarded([&] {
        if (listing == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, null_result);
        *listing = nullptr;
        const argument text = check_text(program, size);
        if (!text.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, text.fault);
        const std::string terminated(text.text);
        // Its own calculator, so that no run depends on an earlier one.
        calculator used;
        const calculator_scope scope(used);
        const metrify::listing shown = interpret_dimensional_input_lines(terminated.c_str());
        *listing = std::make_unique<metrify_text>(metrify_text{std::string(shown.view())}).release();
        return succeed();
    });
}

metrify_status metrify_calculator_new(metrify_calculator** calculator) {
    return guarded([&] {
        if (calculator == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, null_result);
        *calculator = nullptr;
        *calculator = std::make_unique<metrify_calculator>().release();
        return succeed();
    });
}

metrify_status metrify_calculator_enter(metrify_calculator* calculator, const char* lines, size_t size,
                                        metrify_text** listing) {
    const metrify_status status = guarded([&] {
        if (listing == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, null_result);
        *listing = nullptr;
        if (calculator == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, "the calculator is null");
        const argument text = check_text(lines, size);
        if (!text.fault.empty())
            return fail(METRIFY_BAD_ARGUMENT, text.fault);
        if (calculator->lines == nullptr)
            calculator->lines = std::make_unique<session>(calculator->stop);
        auto shown = std::make_unique<metrify_text>();
        shown->text = calculator->lines->enter(text.text);
        if (calculator->lines->was_interrupted())
            return fail(METRIFY_INTERRUPTED, "the call was interrupted");
        *listing = shown.release();
        return succeed();
    });
    // What was being changed when memory ran out is incomplete.
    if (status == METRIFY_OUT_OF_MEMORY && calculator != nullptr)
        calculator->lines.reset();
    return status;
}

void metrify_interrupt(metrify_calculator* calculator) {
    if (calculator != nullptr)
        calculator->stop->request();
}

metrify_status metrify_calculator_reset(metrify_calculator* calculator) {
    return guarded([&] {
        if (calculator == nullptr)
            return fail(METRIFY_BAD_ARGUMENT, "the calculator is null");
        calculator->lines.reset();
        return succeed();
    });
}

void metrify_calculator_free(metrify_calculator* calculator) {
    const std::unique_ptr<metrify_calculator> owner(calculator);
}
