/* A process whose memory is exhausted, from one allocation of a call on, and for each allocation in turn. The
 * library's calls return METRIFY_OUT_OF_MEMORY, and succeed when there is memory again. */

#include "metrify/metrify.h"

#include <stdio.h>
#include <string.h>

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);

/* The allocations that succeed before all others fail; negative: none fails. */
static long left = -1;

static int is_exhausted(void) {
    if (left > 0)
        --left;
    return left == 0;
}
void* malloc(size_t size) {
    return is_exhausted() ? NULL : __libc_malloc(size);
}
void* calloc(size_t count, size_t size) {
    return is_exhausted() ? NULL : __libc_calloc(count, size);
}
void* realloc(void* block, size_t size) {
    return is_exhausted() ? NULL : __libc_realloc(block, size);
}

static const char program[] = "# a comment, long enough for a text of its own: ........................\n"
                              "DefUnit(ell, 18 in)\n"
                              "x = 2\n"
                              "begin\n"
                              "y = x^2 - 9\n"
                              "end\n"
                              "solve(y, x)\n"
                              "x * [1, 2, 3] ell; cm\n"
                              "fmin(y, x)\n"
                              "PrintFunc\n"
                              "1 foo\n";
static metrify_text* listing;
static metrify_cells* cells;
static metrify_plan* plan;
static metrify_calculator* calculator;

static metrify_status call_run(void) {
    return metrify_run(program, strlen(program), &listing);
}
static metrify_status call_convert(void) {
    return metrify_convert(3.5, "ft", 2, "m", 1, &cells);
}
static metrify_status call_plan(void) {
    return metrify_plan_new("ft", 2, "s", 1, &plan);
}
static metrify_status call_calculator(void) {
    return metrify_calculator_enter(calculator, program, strlen(program), &listing);
}

/* Repeats a call with one more allocation each time, until it no longer fails for lack of memory. */
static int survives(const char* name, metrify_status (*call)(void), metrify_status expected) {
    long failures = 0;
    metrify_status status = METRIFY_OUT_OF_MEMORY;
    while (status == METRIFY_OUT_OF_MEMORY) {
        left = ++failures;
        status = call();
        left = -1;
        if (status == METRIFY_OUT_OF_MEMORY && strcmp(metrify_message(), "out of memory") != 0)
            printf("%s: the message is '%s'\n", name, metrify_message());
    }
    printf("%s: status %d, %s\n", name, status, failures > 1 ? "after failures" : "without a failure");
    return status == expected && failures > 1;
}

int main(void) {
    int passed = survives("run", call_run, METRIFY_OK);
    metrify_text* first = listing;
    passed &= call_run() == METRIFY_OK && strcmp(metrify_text_data(first), metrify_text_data(listing)) == 0;
    metrify_text_free(first);
    metrify_text_free(listing);

    passed &= survives("convert", call_convert, METRIFY_OK) && metrify_cells_number(cells) == 1.0668;
    metrify_cells_free(cells);
    passed &= survives("plan", call_plan, METRIFY_REFUSED);

    passed &= metrify_calculator_new(&calculator) == METRIFY_OK;
    passed &= survives("calculator", call_calculator, METRIFY_OK);
    metrify_text_free(listing);
    metrify_calculator_free(calculator);
    puts(passed ? "passed" : "failed");
    return !passed;
}
